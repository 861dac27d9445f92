// SPDX-License-Identifier: MIT
#pragma once

#include <QtAlgorithms>
#include <QtEndian>

#include <cfloat>
#include <charconv>

// Reads the numbers on whose value all readers agree.

/// Bytes that takeDecimal() may look at from the end of its text on.
constexpr int decimalMargin = 8;

/// A row of digits. The value is that of the digits as long as there are at most 19 of them.
struct SDigits
{
    quint64 value = 0;
    int count = 0;
};

/// Doubles hold all whole numbers up to this one.
constexpr quint64 largestExactWhole = quint64(1) << DBL_MANT_DIG;

/// The value of eight digits: bytes from 0 to 9, the first digit lowest.
inline quint64 valueOfEightDigits(quint64 bytes)
{
    constexpr quint64 everyFourth = 0x000000FF000000FFu;
    const quint64 pairs = 10 * bytes + (bytes >> 8); // in every second byte
    const quint64 sum = (pairs & everyFourth) * (100 + (quint64(1'000'000) << 32))
        + ((pairs >> 16) & everyFourth) * (1 + (quint64(10'000) << 32));
    return sum >> 32;
}

/// The digits among the first eight bytes, up to the first that is none.
inline SDigits upToEightDigits(const char *text)
{
    const quint64 bytes = qFromLittleEndian<quint64>(text) ^ 0x3030303030303030u; // digits become 0 to 9
    const quint64 others = ((bytes + 0x7676767676767676u) | bytes) & 0x8080808080808080u;
    const int count = int(qCountTrailingZeroBits(others) / 8); // a carry reaches only bytes behind the first other
    if (count == 0)
        return {};
    return {valueOfEightDigits(bytes << (64 - 8 * count)), count}; // as if zeros were in front
}

/// Appends the digits at `text` and returns what is behind them.
inline const char *takeDigits(const char *text, SDigits &digits)
{
    static constexpr quint64 powers[] = {1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};
    int taken;
    do {
        const SDigits next = upToEightDigits(text);
        taken = next.count;
        digits.value = digits.value * powers[taken] + next.value;
        digits.count += taken;
        text += taken;
    } while (taken == 8);
    return text;
}

/// Adds the exponent at `text`, an "e" and what follows, and returns what is behind it; null when it is none or long.
inline const char *takeExponent(const char *text, int &exponent)
{
    const bool negative = text[1] == '-';
    text += negative || text[1] == '+' ? 2 : 1;
    const SDigits digits = upToEightDigits(text);
    if (digits.count == 0 || digits.count == 8)
        return nullptr;
    exponent += negative ? -int(digits.value) : int(digits.value);
    return text + digits.count;
}

/// A number whose digits and power of ten are both doubles: then one multiplication or division rounds it as it should
/// be. Null when it is not of that kind. `point` is its decimal sign.
inline const char *takeShortDecimal(const char *text, double &value, char point = '.')
{
    static constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr int largestPower = 22;
    constexpr int mostDigits = 19; // more may not fit

    const bool negative = *text == '-';
    SDigits digits;
    text = takeDigits(text + int(negative), digits);
    int exponent = 0;
    if (*text == point) {
        exponent = digits.count;
        text = takeDigits(text + 1, digits);
        exponent -= digits.count;
    }
    if (digits.count == 0 || digits.count > mostDigits || digits.value > largestExactWhole)
        return nullptr;
    if ((*text == 'e' || *text == 'E') && !(text = takeExponent(text, exponent)))
        return nullptr;
    if (exponent < -largestPower || exponent > largestPower)
        return nullptr;
    const double whole = double(qint64(digits.value));
    const double size = exponent < 0 ? whole / powers[-exponent] : whole * powers[exponent];
    value = negative ? -size : size;
    return text;
}

inline const char *takeLongDecimal(const char *text, const char *end, double &value)
{
    constexpr int longest = 64; // characters; printed doubles have at most 24
    const char first = *text == '-' ? text[1] : *text;
    if (!((first >= '0' && first <= '9') || first == '.')) // not infinities and the like, which have many spellings
        return nullptr;
    const auto [behind, error] = std::from_chars(text, end, value);
    return error == std::errc() && behind - text <= longest ? behind : nullptr;
}

/// Takes the decimal number at `text`, if all readers of numbers agree on what it is, and returns what is behind it;
/// null otherwise. At `end` is a byte that no number has in it, and decimalMargin bytes may be read from there on.
inline const char *takeDecimal(const char *text, const char *end, double &value)
{
    constexpr bool roundsOnce = FLT_EVAL_METHOD == 0;
    const char *behind = roundsOnce ? takeShortDecimal(text, value) : nullptr;
    return behind ? behind : takeLongDecimal(text, end, value);
}
