// SPDX-License-Identifier: MIT
#include "views/reading/TextHead.h"

#include <algorithm>

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// The numbers that commas divide a line into, if they hold nothing but digits and, at most, a sign in front.
struct SWholePair
{
    bool isPair = false;
    qint64 first = 0;
    bool canBeDecimal = false;   ///< both may be the parts of one number
    bool hasLeadingZero = false; ///< the second one, as in 1,05
};

SWholePair wholePairIn(const SField &line)
{
    SWholePair pair;
    const char *text = line.begin + int(line.begin != line.end && (*line.begin == '-' || *line.begin == '+'));
    const char *const comma = std::find_if_not(text, line.end, isDigit);
    if (comma == text || comma == line.end || *comma != ',' || comma - text > 15)
        return pair;
    const char *second = comma + 1;
    while (second != line.end && *second == ' ')
        ++second;
    const bool hasSign = second != line.end && (*second == '-' || *second == '+');
    const char *const digits = second + int(hasSign);
    pair.isPair = digits != line.end && std::all_of(digits, line.end, isDigit);
    pair.first = QByteArray(text, int(comma - text)).toLongLong() * (*line.begin == '-' ? -1 : 1);
    pair.canBeDecimal = pair.isPair && second == comma + 1 && !hasSign;
    pair.hasLeadingZero = pair.isPair && line.end - digits > 1 && *digits == '0';
    return pair;
}

/// A number whose digits commas divide by threes, alone in its line: 1,234 or 12,345,678.9.
struct SGrouped
{
    bool isNumber = false;
    int groups = 0; ///< behind commas
    bool hasPoint = false;
};

SGrouped groupedIn(const SField &line)
{
    SGrouped grouped;
    const char *text = line.begin + int(line.begin != line.end && *line.begin == '-');
    const char *const first = std::find_if_not(text, line.end, isDigit);
    if (first == text || first - text > 3)
        return grouped;
    for (text = first; text != line.end && *text == ','; text += 4, ++grouped.groups) {
        if (line.end - text < 4 || !std::all_of(text + 1, text + 4, isDigit))
            return grouped;
    }
    grouped.hasPoint = text != line.end && *text == '.';
    grouped.isNumber = std::all_of(text + int(grouped.hasPoint), line.end, isDigit);
    return grouped;
}

/// Whether the pairs are a number that goes up in equal steps, and another one.
bool areNumbered(const std::vector<SWholePair> &pairs)
{
    if (pairs.size() < 3)
        return false;
    const qint64 step = pairs[1].first - pairs[0].first;
    bool equal = step > 0;
    for (size_t i = 1; i < pairs.size() && equal; ++i)
        equal = pairs[i].first - pairs[i - 1].first == step;
    return equal;
}

} // namespace

bool haveThousands(const SampleLines &lines)
{
    int fewest = 100;
    int most = 0;
    bool certain = false;
    for (const SSampleLine &line : lines) {
        if (line.kind != SSampleLine::Kind::Content)
            continue;
        const SGrouped grouped = groupedIn(line.text);
        const bool isHead = most == 0 && fewest == 100;
        if (!grouped.isNumber && !isHead)
            return false;
        if (!grouped.isNumber)
            continue;
        fewest = std::min(fewest, grouped.groups);
        most = std::max(most, grouped.groups);
        certain = certain || grouped.groups > 1 || (grouped.groups == 1 && grouped.hasPoint);
    }
    return certain && most > fewest; // equal ones may be columns
}

SCommas meaningOfCommas(const SampleLines &lines, const std::vector<SLineShape> &shapes)
{
    std::vector<SWholePair> pairs;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (shapes[i].values == 0)
            continue;
        pairs.push_back(wholePairIn(lines[i].text));
        if (!pairs.back().canBeDecimal)
            return {};
    }
    const bool leadingZeros =
        std::any_of(pairs.begin(), pairs.end(), [](const SWholePair &pair) { return pair.hasLeadingZero; });
    if (!leadingZeros && areNumbered(pairs))
        return {false,
                QStringLiteral("a comma in each line taken as separator, as the numbers in front of it count up; "
                               "set decimalPoint to a comma if it's decimal")};
    return {true,
            QStringLiteral("a comma in each line taken as decimal; set the separator to a comma if these are pairs")};
}
