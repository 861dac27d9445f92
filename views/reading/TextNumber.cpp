// SPDX-License-Identifier: MIT
#include "views/reading/TextNumber.h"

#include <QVarLengthArray>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

const char *skipDigits(const char *text, const char *end)
{
    return std::find_if_not(text, end, isDigit);
}

const char *skipSign(const char *text, const char *end)
{
    return text != end && (*text == '+' || *text == '-') ? text + 1 : text;
}

bool isDecimalSign(char c, DecimalSign sign)
{
    return (c == '.' && sign != DecimalSign::Comma) || (c == ',' && sign != DecimalSign::Point);
}

/// Whether an exponent ends the text; nothing at all is one, too.
bool isExponent(const char *text, const char *end)
{
    if (text == end)
        return true;
    if (*text != 'e' && *text != 'E')
        return false;
    text = skipSign(text + 1, end);
    return text != end && skipDigits(text, end) == end;
}

/// Whether the text is a decimal number. It may not end in a comma, which is a separator gone astray.
bool isDecimal(const char *text, const char *end, DecimalSign sign)
{
    text = skipSign(text, end);
    const char *const wholeEnd = skipDigits(text, end);
    if (wholeEnd == end || !isDecimalSign(*wholeEnd, sign))
        return wholeEnd != text && isExponent(wholeEnd, end);
    const char *const fractionEnd = skipDigits(wholeEnd + 1, end);
    const bool hasDigits = wholeEnd != text || fractionEnd != wholeEnd + 1;
    return hasDigits && (*wholeEnd == '.' || wholeEnd + 1 != end) && isExponent(fractionEnd, end);
}

/// strtod() where the decimal sign is a point, whatever the process's locale is.
double plainStrtod(const char *text)
{
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text, nullptr, plain);
}

/// The value of a decimal number of any length.
double decimalValue(const char *text, const char *end)
{
    QVarLengthArray<char, 80> plain(int(end - text) + 1);
    std::replace_copy(text, end, plain.data(), ',', '.');
    plain[plain.size() - 1] = '\0';
    const char *const first = plain.constData() + int(*text == '+');
    double value = 0.0;
    const auto result = std::from_chars(first, plain.constData() + (end - text), value);
    return result.ec == std::errc() ? value : plainStrtod(plain.constData()); // beyond double: infinity or zero
}

bool isWord(const char *text, const char *end, const char *word)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c; };
    return size_t(end - text) == std::strlen(word)
        && std::equal(text, end, word, [&](char a, char b) { return lower(a) == b; });
}

template <size_t count>
bool isOneOf(const char *text, const char *end, const char *const (&words)[count])
{
    return std::any_of(words, words + count, [&](const char *word) { return isWord(text, end, word); });
}

FieldKind wordIn(const char *text, const char *end, double &value)
{
    static constexpr const char *gaps[] = {"nan", "na", "n/a", "null", "none", "-", "--"};
    static constexpr const char *infinities[] = {"inf", "infinity"};
    const char *const word = skipSign(text, end);
    if (isOneOf(word, end, infinities)) {
        const double infinity = std::numeric_limits<double>::infinity();
        value = *text == '-' ? -infinity : infinity;
        return FieldKind::Gap;
    }
    return isWord(word, end, "nan") || isOneOf(text, end, gaps) ? FieldKind::Gap : FieldKind::Other;
}

} // namespace

FieldKind numberIn(const char *text, const char *end, DecimalSign sign, double &value)
{
    value = std::numeric_limits<double>::quiet_NaN();
    if (text == end)
        return FieldKind::Empty;
    if (!isDecimal(text, end, sign))
        return wordIn(text, end, value);
    value = decimalValue(text, end);
    return FieldKind::Number;
}

FieldKind fieldKind(const char *text, const char *end, DecimalSign sign)
{
    if (text == end)
        return FieldKind::Empty;
    double value;
    return isDecimal(text, end, sign) ? FieldKind::Number : wordIn(text, end, value);
}

char decimalSignOf(const char *text, const char *end)
{
    const char *const sign = std::find_if(text, end, [](char c) { return c == '.' || c == ','; });
    return sign == end ? '\0' : *sign;
}

const char *takeLongNumber(const char *text, const char *end, char point, double &value)
{
    if (point == '.')
        return takeLongDecimal(text, end, value);
    constexpr int longest = 64; // characters; longer ones take the long way
    char plain[longest + decimalMargin];
    int size = 0;
    for (; size < longest && text + size != end && text[size] != '.' && text[size] != '\n'; ++size)
        plain[size] = text[size] == point ? '.' : text[size];
    plain[size] = '\n';
    const char *const behind = takeLongDecimal(plain, plain + size, value);
    return behind && behind != plain + longest ? text + (behind - plain) : nullptr;
}
