// SPDX-License-Identifier: MIT
#include "views/reading/TextHead.h"
#include "views/reading/TextLayout.h"
#include "views/reading/TextLines.h"

#include <QMap>

#include <algorithm>
#include <cstring>
#include <tuple>
#include <utility>

namespace {

/// What is left when the lines are cut at one separator.
struct SCandidate
{
    char separator = blankSeparator;
    std::vector<SLineShape> shapes; ///< of each line; no fields if it isn't content
    int columns = 0;                ///< that most lines with numbers have
    int matched = 0;                ///< lines with numbers and as many columns
    qint64 textLength = 0;          ///< what isn't a number in those, in characters
};

/// Whether the line may be one of the block of numbers. Prose between blanks has a number now and then, too.
bool holdsNumbers(const SLineShape &shape, char separator)
{
    return shape.values > 0 && (separator != blankSeparator || shape.texts <= 2 * shape.values);
}

bool isMatched(const SCandidate &candidate, const SLineShape &shape)
{
    return shape.fields == candidate.columns && holdsNumbers(shape, candidate.separator);
}

/// The number of columns that most lines with numbers have.
int usualColumns(const SCandidate &candidate)
{
    std::vector<int> lines; // with so many fields
    for (const SLineShape &shape : candidate.shapes) {
        if (size_t(shape.fields) >= lines.size())
            lines.resize(size_t(shape.fields) + 1);
        lines[size_t(shape.fields)] += int(holdsNumbers(shape, candidate.separator));
    }
    return int(std::max_element(lines.begin(), lines.end()) - lines.begin()); // of equals the smallest
}

/// The characters that may separate, in the order in which they are tried. Of those that are nowhere only the last one:
/// they make the same of every line.
std::vector<char> possibleSeparators(const SampleLines &lines, bool mayBeCommas)
{
    std::vector<char> separators;
    bool hasAbsent = false;
    for (const char separator : {',', '|', '\t', ';'}) { // from the last one on
        const bool isAbsent = std::none_of(lines.begin(), lines.end(), [=](const SSampleLine &line) {
            return std::memchr(line.begin, separator, size_t(line.end - line.begin));
        });
        if ((separator == ',' && !mayBeCommas) || (isAbsent && std::exchange(hasAbsent, true)))
            continue;
        separators.insert(separators.begin(), separator);
    }
    separators.push_back(blankSeparator);
    return separators;
}

SCandidate candidateFor(const SampleLines &lines, char separator, DecimalSign sign)
{
    SCandidate candidate;
    candidate.separator = separator;
    candidate.shapes.reserve(lines.size());
    for (const SSampleLine &line : lines) {
        const bool isContent = line.kind == SSampleLine::Kind::Content;
        candidate.shapes.push_back(isContent ? shapeOf(line, separator, sign) : SLineShape());
    }
    candidate.columns = usualColumns(candidate);
    for (const SLineShape &shape : candidate.shapes) {
        candidate.matched += int(isMatched(candidate, shape));
        candidate.textLength += isMatched(candidate, shape) ? shape.textLength : 0;
    }
    return candidate;
}

/// Whether semicolons or tabs stand in most lines; then commas don't separate.
bool haveOtherSeparators(const SampleLines &lines)
{
    int content = 0;
    int separated = 0;
    for (const SSampleLine &line : lines) {
        const SField &text = line.text;
        content += int(line.kind == SSampleLine::Kind::Content);
        separated += int(std::any_of(text.begin, text.end, [](char c) { return c == ';' || c == '\t'; }));
    }
    return 2 * separated > content;
}

/// The one that makes numbers of most lines; of equals the one that leaves least text, then that of most columns.
SCandidate bestCandidate(const SampleLines &lines, const STextHints &hints)
{
    const DecimalSign sign = hints.decimalSign.value_or(DecimalSign::Either);
    if (hints.separator)
        return candidateFor(lines, hints.separator, sign);
    const bool mayBeCommas = sign != DecimalSign::Comma && !haveOtherSeparators(lines);
    SCandidate best;
    for (const char separator : possibleSeparators(lines, mayBeCommas)) {
        SCandidate candidate = candidateFor(lines, separator, sign);
        const auto rank = [](const SCandidate &c) { return std::tuple(c.matched, -c.textLength, c.columns); };
        if (rank(candidate) > rank(best) || (candidate.columns == 1 && rank(candidate) == rank(best)))
            best = std::move(candidate); // of a single column that of blanks, the last one
    }
    return best;
}

/// Where the first run of lines begins that are as they should be: three of them, or as many as there are at most.
int blockBegin(const SCandidate &candidate, const SampleLines &lines)
{
    constexpr int convincing = 3;
    const auto lacksColumns = [&](const SLineShape &shape) {
        return shape.values > 0 && shape.texts == 0 && shape.fields < candidate.columns;
    };
    int longest = 0;
    int length = 0;
    int begin = 0;
    int found = 0;
    for (int i = 0; i < int(lines.size()); ++i) {
        const auto kind = lines[size_t(i)].kind;
        const SLineShape &shape = candidate.shapes[size_t(i)];
        if (kind == SSampleLine::Kind::Comment
            || (length > 0 && (kind == SSampleLine::Kind::Blank || lacksColumns(shape))))
            continue; // neither begins nor ends a run
        if (!isMatched(candidate, shape)) {
            length = 0;
            continue;
        }
        if (length++ == 0)
            begin = i;
        if (length > longest) {
            longest = length;
            found = begin;
        }
        if (longest == convincing)
            break;
    }
    return found;
}

/// Passes over a first line of nothing but quoted numbers, such as years, if the next one isn't quoted: those are
/// names.
int behindQuotedNames(const SCandidate &candidate, int begin)
{
    const auto next = size_t(begin) + 1;
    const bool areNames = candidate.shapes[size_t(begin)].allQuoted && next < candidate.shapes.size()
        && isMatched(candidate, candidate.shapes[next]) && !candidate.shapes[next].allQuoted;
    return begin + int(areNames);
}

/// Where the block ends as far as the sample shows: at the next section, or at the end.
int blockEnd(const SampleLines &lines, int begin)
{
    const auto isHeading = [](const SSampleLine &line) { return line.kind == SSampleLine::Kind::Section; };
    return int(std::find_if(lines.begin() + begin, lines.end(), isHeading) - lines.begin());
}

/// The largest number of columns that a fair share of the block's lines has: others may lack some.
int fullColumns(const SCandidate &candidate, int begin, int end)
{
    constexpr int fairShare = 20; // one line in so many
    QMap<int, int> lines;
    int all = 0;
    for (int i = begin; i < end; ++i) {
        const SLineShape &shape = candidate.shapes[size_t(i)];
        const bool counts = holdsNumbers(shape, candidate.separator);
        lines[shape.fields] += int(counts);
        all += int(counts);
    }
    int columns = candidate.columns;
    for (auto it = lines.constBegin(); it != lines.constEnd(); ++it) {
        if (it.value() >= 2 && it.value() * fairShare >= all)
            columns = std::max(columns, it.key());
    }
    return columns;
}

/// What the fields of a column are, counted.
struct SColumnCount
{
    int numbers = 0;
    int times = 0;
    int texts = 0;
};

STextColumn::Kind kindOf(const SColumnCount &count)
{
    if (count.times > 0 && count.times >= count.numbers + count.texts)
        return STextColumn::Kind::IsoTime;
    const bool isText = count.texts > count.numbers || (count.times > 0 && count.numbers == 0);
    return isText ? STextColumn::Kind::Text : STextColumn::Kind::Number;
}

/// Finds out about the columns and their decimal sign from the lines of the block.
void lookAtColumns(STextLayout &layout, const SampleLines &lines, int begin, int end)
{
    std::vector<SColumnCount> counts(size_t(layout.columns.size()));
    int points = 0;
    int commas = 0;
    Fields fields;
    for (int i = begin; i < end; ++i) {
        const SSampleLine &line = lines[size_t(i)];
        if (line.kind != SSampleLine::Kind::Content)
            continue;
        splitFields(line.begin, line.end, layout.separator, fields);
        for (int column = 0; column < std::min(int(fields.size()), int(layout.columns.size())); ++column) {
            const SField &field = fields[column];
            const SampleKind kind = sampleKind(field, layout.decimalSign);
            const char sign = kind == SampleKind::Number ? decimalSignOf(field.begin, field.end) : '\0';
            points += int(sign == '.');
            commas += int(sign == ',');
            counts[size_t(column)].numbers += int(kind == SampleKind::Number);
            counts[size_t(column)].times += int(kind == SampleKind::Time);
            counts[size_t(column)].texts += int(kind == SampleKind::Text);
        }
    }
    for (int column = 0; column < int(layout.columns.size()); ++column)
        layout.columns[column].kind = kindOf(counts[size_t(column)]);
    if (layout.decimalSign == DecimalSign::Either && points + commas > 0)
        layout.decimalSign = commas > points ? DecimalSign::Comma : DecimalSign::Point;
    if (points > 0 && commas > 0)
        layout.remarks << QStringLiteral("points and commas inside numbers: %1 of them are not read")
                              .arg(commas > points ? QStringLiteral("those with a point")
                                                   : QStringLiteral("those with a comma"));
}

/// Whether there is a blank line between any two others; then they are none of the data.
bool isSpacedOut(const SampleLines &lines, int begin, int end)
{
    constexpr int convincing = 3;
    int content = 0;
    int spaced = 0;
    bool wasBlank = false;
    for (int i = begin; i < end; ++i) {
        const auto kind = lines[size_t(i)].kind;
        if (kind == SSampleLine::Kind::Content) {
            spaced += int(wasBlank && content > 0);
            ++content;
        }
        wasBlank = kind == SSampleLine::Kind::Blank;
    }
    return content >= convincing && spaced == content - 1;
}

QString noNumbers(const SampleLines &lines)
{
    constexpr int shown = 40; // characters
    const auto content = std::find_if(lines.begin(), lines.end(),
                                      [](const auto &line) { return line.kind == SSampleLine::Kind::Content; });
    if (content == lines.end())
        return QStringLiteral("has no line with a number");
    const SField &text = content->text;
    const QString line = QString::fromUtf8(text.begin, int(std::min<qptrdiff>(text.end - text.begin, 4 * shown)));
    return QStringLiteral("has no line that holds just numbers; the first one reads “%1%2”")
        .arg(line.left(shown), line.size() > shown ? QStringLiteral("…") : QString());
}

QString tooManyColumns(int count)
{
    return QStringLiteral("has lines of %1 numbers; at most %2 columns can be read, each from top to bottom")
        .arg(count)
        .arg(mostColumns);
}

QString commasBetweenThousands()
{
    return QStringLiteral(
        "seems to have commas between thousands, as in 1,234,567: write its numbers without them, or "
        "set the separator to a comma if they are columns");
}

QVector<QByteArray> commentPrefixesOf(const STextHints &hints)
{
    return hints.commentPrefix.isEmpty() ? QVector<QByteArray>{"#", "%", "//"}
                                         : QVector<QByteArray>{hints.commentPrefix};
}

STextLayout layoutFrom(const char *text, const SCandidate &candidate, const SampleLines &lines, const STextHints &hints)
{
    const int first = behindQuotedNames(candidate, blockBegin(candidate, lines));
    const int behind = blockEnd(lines, first);
    STextLayout layout;
    layout.separator = candidate.separator;
    layout.decimalSign = hints.decimalSign.value_or(DecimalSign::Either);
    layout.commentPrefixes = commentPrefixesOf(hints);
    layout.columns.resize(fullColumns(candidate, first, behind));
    layout.headLines = hints.skipLines + first;
    layout.headSize = lines[size_t(first)].begin - text;
    layout.skipsBlankLines = isSpacedOut(lines, first, behind);
    lookAtColumns(layout, lines, first, behind);
    lookAtHead(layout, lines, first);
    lookAtTimes(layout, lines, first, behind);
    lookForX(layout, lines, first, behind);
    return layout;
}

} // namespace

SDetection detectLayout(const char *begin, const char *end, const STextHints &hints)
{
    const SampleLines lines = sampleLines(begin, end, hints.skipLines, commentPrefixesOf(hints));
    const bool mayGuess = !hints.separator && !hints.decimalSign;
    if (mayGuess && haveThousands(lines))
        return {{}, commasBetweenThousands(), true};
    SCandidate candidate = bestCandidate(lines, hints);
    if (candidate.matched == 0)
        return {{}, noNumbers(lines)};
    SCommas commas;
    if (mayGuess && candidate.separator == ',')
        commas = meaningOfCommas(lines, candidate.shapes);
    if (candidate.columns > mostColumns)
        return {{}, tooManyColumns(candidate.columns), true};
    if (commas.areDecimal)
        candidate = candidateFor(lines, blankSeparator, DecimalSign::Comma);
    SDetection detection{layoutFrom(begin, candidate, lines, hints), {}, true};
    if (!commas.remark.isEmpty())
        detection.layout->remarks << commas.remark;
    return detection;
}
