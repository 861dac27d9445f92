// SPDX-License-Identifier: MIT
#include "views/items/NumberText.h"

#include <charconv>
#include <cmath>

namespace {

constexpr double mostWhole = 1e15; // above, all digits are no longer the fewest

} // namespace

char *writeNumber(char *text, double value, SampleType type)
{
    if (!std::isfinite(value))
        return text;
    char *const end = text + longestNumberText;
    const bool isWhole =
        std::abs(value) < mostWhole && value == std::trunc(value) && !(value == 0.0 && std::signbit(value));
    if (isWhole) // 100000, not 1e+05
        return std::to_chars(text, end, qint64(value)).ptr;
    if (type == SampleType::Float32)
        return std::to_chars(text, end, float(value)).ptr;
    return std::to_chars(text, end, value).ptr;
}
