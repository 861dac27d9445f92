// SPDX-License-Identifier: MIT
#include "views/reading/PieceShape.h"

#include "views/reading/TextFields.h"

#include <algorithm>
#include <cstring>

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Notes where the digits of a number are, which has `size` characters. The last `behind` of them are the point and the
/// digits behind it.
void setDigits(qint8 *digits, int size, int behind)
{
    int place = size - 1;
    for (int i = SPieceShape::mostCharacters - 1; i >= 0; --i, --place) {
        if (behind > 0 && place == size - behind)
            --place;
        digits[i] = qint8(std::max(place, -1));
    }
}

/// Puts two numbers in a row, if that's possible with all of them.
void makeNarrow(SPieceShape &shape)
{
    constexpr int half = SPieceShape::mostCharacters / 2;
    qint8 rows[2][2 * half];
    for (int i = 0; i < SPieceShape::mostNumbers; ++i) {
        const qint8 *const digits = shape.digits[i];
        const int offset = i < shape.numbers ? shape.starts[i] - shape.starts[i / 2 * 2] : 0;
        if (std::any_of(digits, digits + half, [](qint8 place) { return place >= 0; })
            || digits[2 * half - 1] + offset >= 2 * half)
            return;
        std::transform(digits + half, digits + 2 * half, rows[i / 2] + i % 2 * half,
                       [=](qint8 place) { return qint8(place < 0 ? place : place + offset); });
    }
    std::memcpy(shape.digits, rows, sizeof rows);
    shape.isNarrow = true;
}

class ShapeFinder
{
public:
    ShapeFinder(const char *text, const char *end, char separator, char point)
        : m_text(text),
          m_at(text),
          m_end(end),
          m_separator(separator),
          m_point(point)
    {
    }

    bool find(SPieceShape &shape)
    {
        shape = {};
        std::memset(shape.digits, -1, sizeof shape.digits);
        std::fill_n(shape.scales, SPieceShape::mostNumbers, 1.0);
        std::replace_copy_if(m_text, m_end, shape.others, isDigit, '\0');
        while (m_at != m_end) {
            if (shape.numbers == SPieceShape::mostNumbers || !takeNumber(shape) || !takeDivider())
                return false;
        }
        makeNarrow(shape);
        return shape.numbers > 0;
    }

private:
    void skipBlanks();
    bool takeNumber(SPieceShape &shape);
    bool takeDivider();

    const char *const m_text;
    const char *m_at;
    const char *const m_end;
    const char m_separator;
    const char m_point;
};

void ShapeFinder::skipBlanks()
{
    const auto isInside = [this](char c) {
        return isBlank(c) && c != '\r' && (c != m_separator || c == blankSeparator);
    };
    m_at = std::find_if_not(m_at, m_end, isInside);
}

bool ShapeFinder::takeNumber(SPieceShape &shape)
{
    skipBlanks();
    const bool isNegative = m_at != m_end && *m_at == '-';
    if (m_at != m_end && (*m_at == '-' || *m_at == '+'))
        ++m_at;
    const char *const start = m_at;
    const char *const wholeEnd = std::find_if_not(start, m_end, isDigit);
    const bool hasPoint = wholeEnd != m_end && *wholeEnd == m_point;
    m_at = hasPoint ? std::find_if_not(wholeEnd + 1, m_end, isDigit) : wholeEnd;
    const int size = int(m_at - start);
    const int fraction = hasPoint ? int(m_at - wholeEnd) - 1 : 0;
    // "5," may be a number and a separator.
    if (size == 0 || (hasPoint && fraction == 0) || size - int(hasPoint) > SPieceShape::mostDigits)
        return false;
    setDigits(shape.digits[shape.numbers], size, hasPoint ? fraction + 1 : 0);
    for (int i = 0; i < fraction; ++i)
        shape.scales[shape.numbers] *= 10.0; // exact: there are few
    if (isNegative)
        shape.scales[shape.numbers] *= -1.0;
    shape.starts[shape.numbers++] = quint8(start - m_text);
    return true;
}

/// The separator, or a line end, which a number may only follow where it's a column's own.
bool ShapeFinder::takeDivider()
{
    const char *const before = m_at;
    skipBlanks();
    if (m_at == m_end)
        return m_separator == blankSeparator && m_at != before;
    if (*m_at == m_separator) {
        ++m_at;
        return true;
    }
    if (*m_at == '\r')
        ++m_at;
    if (m_at != m_end && *m_at == '\n') {
        ++m_at;
        return true;
    }
    return m_separator == blankSeparator && m_at != before && m_at[-1] != '\r';
}

} // namespace

bool findShape(const char *text, const char *end, char separator, char point, SPieceShape &shape)
{
    return ShapeFinder(text, end, separator, point).find(shape);
}
