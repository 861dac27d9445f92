// SPDX-License-Identifier: MIT
#include "views/reading/TextHead.h"

#include <algorithm>
#include <cmath>

namespace {

/// Takes the unit off the end of a name: "energy [keV]", "energy (keV)", "energy / keV".
void takeUnit(QString &name, QString &unit)
{
    const int slash = name.indexOf(QLatin1String(" / "));
    if (slash > 0) {
        unit = name.mid(slash + 3).trimmed();
        name = name.left(slash).trimmed();
        return;
    }
    const bool square = name.endsWith(QLatin1Char(']'));
    if (!square && !name.endsWith(QLatin1Char(')')))
        return;
    const int open = name.lastIndexOf(QLatin1Char(square ? '[' : '('));
    if (open < 0)
        return;
    unit = name.mid(open + 1, name.size() - open - 2).trimmed();
    name = name.left(open).trimmed();
}

bool isBracketed(const QString &text)
{
    return (text.startsWith(QLatin1Char('[')) && text.endsWith(QLatin1Char(']')))
        || (text.startsWith(QLatin1Char('(')) && text.endsWith(QLatin1Char(')')));
}

/// The texts between separators. Between blanks, a unit in brackets belongs to what is in front of it.
QStringList textsIn(const char *begin, const char *end, char separator)
{
    Fields fields;
    splitFields(begin, end, separator, fields);
    QStringList texts;
    for (const SField &field : fields) {
        const QString text = QString::fromUtf8(textOf(field)).trimmed();
        const bool isUnit = text.startsWith(QLatin1Char('[')) || text.startsWith(QLatin1Char('('));
        if (separator == blankSeparator && isUnit && !texts.isEmpty() && !isBracketed(texts.last()))
            texts.last() += QLatin1Char(' ') + text;
        else
            texts << text;
    }
    if (texts.size() > 1 && texts.last().isEmpty())
        texts.removeLast();
    return texts;
}

QString wholeText(const SField &line)
{
    return QString::fromUtf8(line.quoted ? textOf(line) : QByteArray(line.begin, int(line.end - line.begin))).trimmed();
}

/// Whether a text ends as sentences and settings do: "Taken by Ann.", "Detector:".
bool endsLikeProse(const QString &text)
{
    return !text.isEmpty() && QStringLiteral(".:,;!?=").contains(text.back());
}

/// Whether the line over the only column is prose and no name. Under another line, names have one word.
bool isProse(QString text, bool isUnderAnother)
{
    constexpr int mostWords = 3; // "live counts per" of "live counts per channel [1/s]"
    QString unit;
    takeUnit(text, unit);
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return words.size() > (isUnderAnother ? 1 : mostWords) || std::any_of(words.begin(), words.end(), endsLikeProse);
}

/// The texts of a line of the head, one for each column; none if it can't be a line of names.
QStringList namesIn(const SSampleLine &line, const STextLayout &layout, bool isUnderAnother)
{
    SField text = line.text;
    if (line.kind == SSampleLine::Kind::Comment) {
        for (const QByteArray &prefix : layout.commentPrefixes) {
            if (isComment(text, {prefix}))
                text = trimmed(text.begin + prefix.size(), text.end);
        }
    }
    const bool hasOneColumn = layout.columns.size() == 1;
    const bool areWords = layout.separator == blankSeparator && !text.quoted;
    QStringList texts = textsIn(text.begin, text.end, layout.separator);
    if (hasOneColumn && areWords && texts.size() > 1)
        texts = QStringList{wholeText(text)};
    if (texts.size() != layout.columns.size())
        return {};
    const bool areProse = hasOneColumn ? isProse(texts.first(), isUnderAnother)
                                       : areWords && std::any_of(texts.begin(), texts.end(), endsLikeProse);
    return areProse ? QStringList() : texts;
}

bool areUnits(const QStringList &texts)
{
    const auto isUnit = [](const QString &text) { return text.isEmpty() || isBracketed(text); };
    return std::all_of(texts.begin(), texts.end(), isUnit) && !texts.join(QString()).isEmpty();
}

/// Whether the line holds numbers itself, unless they are quoted.
bool hasNumbers(const SSampleLine &line, const STextLayout &layout)
{
    const SLineShape shape = shapeOf(line, layout.separator, layout.decimalSign);
    return shape.values > 0 && !shape.allQuoted;
}

/// The last line in front of `end` that is neither blank nor, unless it's the only kind, a comment; -1 if there is
/// none.
int lastHeadLine(const SampleLines &lines, int end)
{
    int comment = -1;
    for (int i = end - 1; i >= 0; --i) {
        const auto kind = lines[size_t(i)].kind;
        if (kind == SSampleLine::Kind::Content)
            return i;
        if (kind == SSampleLine::Kind::Section)
            return comment;
        if (kind == SSampleLine::Kind::Comment && comment < 0)
            comment = i;
    }
    return comment;
}

/// The seconds since 1970 that the field stands for; false if it stands for no moment.
bool momentIn(const SField &field, const STextColumn &column, DecimalSign sign, SMoment &moment)
{
    if (column.kind == STextColumn::Kind::IsoTime)
        return isoMomentIn(field.begin, field.end, moment);
    const int perSecond = column.kind == STextColumn::Kind::Milliseconds ? 1000 : 1;
    return epochMomentIn(field.begin, field.end, sign, perSecond, moment);
}

/// Calls visit(field) for each field of a column that isn't empty, until it returns false.
template <class Visit>
void forFields(const SampleLines &lines, int first, int behind, int column, char separator, Visit visit)
{
    Fields fields;
    for (int i = first; i < behind; ++i) {
        const SSampleLine &line = lines[size_t(i)];
        if (line.kind != SSampleLine::Kind::Content)
            continue;
        splitFields(line.begin, line.end, separator, fields);
        if (column < int(fields.size()) && fields[column].begin != fields[column].end && !visit(fields[column]))
            return;
    }
}

/// Whether numbers are seconds or milliseconds since 1970, between 2001 and 2286, and ascend; then it says which.
STextColumn::Kind kindOfNumbers(const STextLayout &layout, const SampleLines &lines, int first, int behind)
{
    using Kind = STextColumn::Kind;
    Kind kind = Kind::Text; // not known yet
    double last = 0.0;
    forFields(lines, first, behind, 0, layout.separator, [&](const SField &field) {
        double value;
        numberIn(field.begin, field.end, layout.decimalSign, value);
        const bool areSeconds = value >= 1e9 && value < 1e10;
        const bool areMilliseconds = value >= 1e12 && value < 1e13;
        const Kind next = areSeconds ? Kind::Seconds : areMilliseconds ? Kind::Milliseconds : Kind::Number;
        const bool fits = next != Kind::Number && value >= last && (kind == Kind::Text || kind == next);
        kind = fits ? next : Kind::Number;
        last = value;
        return fits;
    });
    return kind == Kind::Text ? Kind::Number : kind;
}

/// Sets where the times of a column count from. Returns whether they ascend.
bool findOrigin(STextColumn &column, int index, const STextLayout &layout, const SampleLines &lines, int first,
                int behind)
{
    bool isFirst = true;
    bool ascends = true;
    double last = 0.0;
    forFields(lines, first, behind, index, layout.separator, [&](const SField &field) {
        SMoment moment;
        if (!momentIn(field, column, layout.decimalSign, moment))
            return true;
        if (isFirst)
            column.origin = moment.seconds;
        isFirst = false;
        const double seconds = secondsSince(column.origin, moment);
        ascends = ascends && seconds >= last;
        last = std::max(last, seconds);
        return true;
    });
    return ascends;
}

/// Whether each number of a column is above the one before, and there are enough of them to mean something.
bool ascends(const STextLayout &layout, const SampleLines &lines, int first, int behind, int column)
{
    constexpr int convincing = 10;
    int count = 0;
    double last = 0.0;
    bool isAbove = true;
    forFields(lines, first, behind, column, layout.separator, [&](const SField &field) {
        double value = std::nan("");
        numberIn(field.begin, field.end, layout.decimalSign, value);
        isAbove = std::isfinite(value) && (count == 0 || value > last);
        last = value;
        ++count;
        return isAbove;
    });
    return isAbove && count >= convincing;
}

} // namespace

void lookAtHead(STextLayout &layout, const SampleLines &lines, int first)
{
    const auto isSectionLine = [](const SSampleLine &line) { return line.kind == SSampleLine::Kind::Section; };
    layout.hasSections = std::any_of(lines.begin(), lines.begin() + first, isSectionLine);
    int last = lastHeadLine(lines, first);
    if (last < 0 || hasNumbers(lines[size_t(last)], layout))
        return;
    const auto namesOf = [&](int index) {
        const int before = lastHeadLine(lines, index);
        const bool isUnderAnother = before >= 0 && lines[size_t(before)].kind == lines[size_t(index)].kind;
        return namesIn(lines[size_t(index)], layout, isUnderAnother);
    };
    QStringList names = namesOf(last);
    QStringList units;
    if (areUnits(names)) {
        units = names;
        last = lastHeadLine(lines, last);
        names = last < 0 ? QStringList() : namesOf(last);
    }
    for (int i = 0; i < int(layout.columns.size()); ++i) {
        STextColumn &column = layout.columns[i];
        column.name = names.value(i);
        takeUnit(column.name, column.unit);
        if (!units.value(i).isEmpty())
            column.unit = units.at(i).mid(1, units.at(i).size() - 2).trimmed();
    }
}

void lookAtTimes(STextLayout &layout, const SampleLines &lines, int first, int behind)
{
    const int read = int(std::count_if(layout.columns.begin(), layout.columns.end(),
                                       [](const STextColumn &column) { return column.isRead(); }));
    if (read >= 2 && layout.columns.first().kind == STextColumn::Kind::Number)
        layout.columns.first().kind = kindOfNumbers(layout, lines, first, behind);
    for (int i = 0; i < int(layout.columns.size()); ++i) {
        STextColumn &column = layout.columns[i];
        if (!column.isTime())
            continue;
        const bool ascends = findOrigin(column, i, layout, lines, first, behind);
        if (i == 0 && ascends && read >= 2)
            layout.timeColumn = 0;
        else if (i == 0 && !ascends)
            layout.remarks << QStringLiteral("the times in column 1 don't ascend, so they aren't taken as x");
    }
}

void lookForX(STextLayout &layout, const SampleLines &lines, int first, int behind)
{
    int others = 0;
    for (int i = 0; i < int(layout.columns.size()); ++i) {
        const bool isNumber = layout.columns.at(i).kind == STextColumn::Kind::Number;
        const bool shouldAscend = i == 0;
        if ((i == 0 && !isNumber) || (isNumber && ascends(layout, lines, first, behind, i) != shouldAscend))
            return;
        others += int(isNumber && i > 0);
    }
    layout.firstMayBeX = others > 0;
}
