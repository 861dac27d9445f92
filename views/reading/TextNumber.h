// SPDX-License-Identifier: MIT
#pragma once

#include "sources/DecimalNumber.h"

// Numbers in a text, rounded as strtod() does in the C locale, bit by bit. The process's locale has no say.

/// What stands between the whole part and the fraction.
enum class DecimalSign { Point, Comma, Either };

/// What a field of a line holds.
enum class FieldKind {
    Empty,
    Gap,    ///< a word for no value (nan, NA, null), or an infinity
    Number, ///< its value is infinite if it's beyond double
    Other   ///< something that isn't a number
};

/// What the field from `text` to `end` holds; the blanks around it are cut off before. Takes any bytes and reads none
/// outside. `value` becomes the number, NaN or an infinity; it's NaN if the field isn't a number.
FieldKind numberIn(const char *text, const char *end, DecimalSign sign, double &value);

/// The same without the value, which costs most.
FieldKind fieldKind(const char *text, const char *end, DecimalSign sign);

/// The decimal sign of a field that holds a number; 0 if it has none.
char decimalSignOf(const char *text, const char *end);

/// Takes the number of many digits at `text`; for takeNumber().
const char *takeLongNumber(const char *text, const char *end, char point, double &value);

/// Takes the number at `text` and returns what is behind it; null if it needs numberIn(), whatever it is. The byte at
/// `end` belongs to no number, and decimalMargin bytes may be read from there on.
inline const char *takeNumber(const char *text, const char *end, char point, double &value)
{
    constexpr bool roundsOnce = FLT_EVAL_METHOD == 0;
    const bool plus = *text == '+' && text[1] != '-';
    const char *behind = roundsOnce ? takeShortDecimal(text + int(plus), value, point) : nullptr;
    if (!behind)
        behind = takeLongNumber(text + int(plus), end, point, value);
    return behind && behind[-1] != ',' ? behind : nullptr; // "5," may be a number and a separator
}
