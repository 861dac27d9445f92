// SPDX-License-Identifier: MIT
#include "sources/NumberBlock.h"

#include "sources/DecimalNumber.h"
#include "sources/TextBlocks.h"

#include <cstring>

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

/// What Qt makes of a line, line end included. It ends at a NUL.
double plainValue(const char *line, int length)
{
    return QString::fromUtf8(line, int(qstrnlen(line, uint(length)))).toDouble();
}

/// Whether there is a carriage return that is not at the end of the line, where it is white space. What becomes of one
/// in text mode depends on how the device's buffer happens to be filled.
bool needsTextMode(const char *line, const char *end)
{
    while (end != line && (isBlank(end[-1]) || end[-1] == '\n'))
        --end;
    return std::memchr(line, '\r', size_t(end - line)) != nullptr;
}

/// The value of a line of a number and blanks. Returns what is behind the line; null when it is of another kind.
const char *takeSimpleLine(const char *text, const char *lastEnd, double &value)
{
    while (*text == ' ' || *text == '\t')
        ++text;
    text = takeDecimal(text, lastEnd, value);
    if (!text)
        return nullptr;
    while (isBlank(*text))
        ++text;
    return *text == '\n' ? text + 1 : nullptr;
}

} // namespace

bool convertLines(const STextBlock &block, double *values)
{
    const char *const end = block.end();
    const char *const lastEnd = end[-1] == '\n' ? end - 1 : end;
    const char *line = block.begin();
    while (line < end) {
        const char *next = takeSimpleLine(line, lastEnd, *values);
        if (!next) {
            next = static_cast<const char *>(std::memchr(line, '\n', size_t(end - line)));
            next = next ? next + 1 : end;
            if (needsTextMode(line, next))
                return false;
            *values = plainValue(line, int(next - line));
        }
        ++values;
        line = next;
    }
    return true;
}
