// SPDX-License-Identifier: MIT
#include "views/reading/PlainLines.h"

#include "views/reading/TextRows.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int fewDigits = 8;

constexpr quint64 powersOfTen[fewDigits + 1] = {1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};

constexpr bool areFew(qint64 digits)
{
    return quint64(digits - 1) < fewDigits;
}

/// The first `count` bytes, at most eight, as if zeros were in front of them. Digits are 0 to 9.
Q_ALWAYS_INLINE quint64 rightmost(const char *text, qint64 count)
{
    return (qFromLittleEndian<quint64>(text) ^ 0x3030303030303030u) << 8 * (fewDigits - count);
}

Q_ALWAYS_INLINE quint64 valueOfDigits(const char *text, qint64 count)
{
    return valueOfEightDigits(rightmost(text, count));
}

/// The digits of a number with a point in front of the last `fraction` of at most eight bytes, as if it were none.
Q_ALWAYS_INLINE quint64 valueWithoutPoint(const char *text, qint64 count, qint64 fraction)
{
    static constexpr quint64 inFront[fewDigits] = {0, // there is a fraction
                                                   0x00FFFFFFFFFFFFFFu,
                                                   0x0000FFFFFFFFFFFFu,
                                                   0x000000FFFFFFFFFFu,
                                                   0x00000000FFFFFFFFu,
                                                   0x0000000000FFFFFFu,
                                                   0x000000000000FFFFu,
                                                   0x00000000000000FFu};
    const quint64 bytes = rightmost(text, count);
    return valueOfEightDigits(bytes ^ ((bytes ^ bytes << 8) & inFront[fraction]));
}

/// digits / 10^fraction. Both must be doubles, so that the division rounds as it should.
Q_ALWAYS_INLINE double scaled(quint64 digits, qint64 fraction, bool negative)
{
    static constexpr double scales[fewDigits + 1][2] = {{1e0, -1e0}, {1e1, -1e1}, {1e2, -1e2}, {1e3, -1e3}, {1e4, -1e4},
                                                        {1e5, -1e5}, {1e6, -1e6}, {1e7, -1e7}, {1e8, -1e8}};
    return double(qint64(digits)) / scales[fraction][int(negative)];
}

bool isPartOfNumbers(char separator, DecimalSign sign)
{
    const bool isDigit = separator >= '0' && separator <= '9';
    return isDigit || separator == '-' || separator == '+' || separator == (sign == DecimalSign::Comma ? ',' : '.');
}

/// Whether a line of numbers may be a comment.
bool isLikeNumbers(const QByteArray &commentPrefix)
{
    const char first = commentPrefix.isEmpty() ? 'x' : commentPrefix.at(0);
    return (first >= '0' && first <= '9') || std::strchr("+-.,", first);
}

} // namespace

PlainLines::PlainLines(const STextLayout &layout, TextRows &rows, const char *begin, const char *end)
    : m_layout(layout),
      m_begin(begin),
      m_end(end),
      m_separator(layout.separator),
      m_otherBlank(layout.separator == '\t' ? ' ' : '\t'),
      m_isPossible(FLT_EVAL_METHOD == 0 && !isPartOfNumbers(layout.separator, layout.decimalSign)
                   && std::none_of(layout.commentPrefixes.begin(), layout.commentPrefixes.end(), isLikeNumbers)),
      m_marksEnd(begin)
{
    for (int i = 0; i < int(layout.columns.size()); ++i) {
        m_places.push_back(rows.place(i));
        m_isPossible = m_isPossible && !layout.columns[i].isTime();
        m_isAllRead = m_isAllRead && layout.columns[i].isRead();
    }
    const auto isRead = [](const double *place) { return place != nullptr; };
    m_isPossible = m_isPossible && std::any_of(m_places.begin(), m_places.end(), isRead);
    if (m_isPossible && m_isAllRead)
        m_bareLines = rows.bareLines(layout.separator);
}

const char *PlainLines::take(const char *text, char point, qint64 &row)
{
    qint64 next = row;
    while (m_isPossible && text != m_end) {
        if (m_bareLines && (text = m_bareLines->take(text, m_end, point, next)) == m_end)
            break;
        const quint32 *at = lookThrough(text);
        const quint32 *const last = m_marks.end() - 1;
        while (at != last) {
            const quint32 *lineEnd = takeBareLine(at, point, next);
            if (!lineEnd)
                lineEnd = takeLine(at, point, next);
            if (!lineEnd)
                break;
            at = lineEnd;
            ++next;
        }
        text = behind(at);
        if (at != last)
            break;
    }
    row = next;
    return text;
}

/// Finds the marks of some of the lines from there on. Returns the mark in front.
const quint32 *PlainLines::lookThrough(const char *text)
{
    const qint64 usual = m_bareLines ? 1 << 9 : 1 << 13; // bytes: their marks stay in the first-level cache
    if (text < m_marksEnd)
        return std::lower_bound(m_marks.begin() + 1, m_marks.end(), quint32(text - m_begin)) - 1;
    const auto most = size_t(std::min(usual, qint64(m_end - text)));
    const char *lineEnd =
        std::find(std::make_reverse_iterator(text + most), std::make_reverse_iterator(text), '\n').base();
    if (lineEnd == text)
        lineEnd = static_cast<const char *>(std::memchr(text, '\n', size_t(m_end - text))) + 1;
    m_marksEnd = lineEnd;
    m_marks.find(m_begin, text - m_begin, m_marksEnd - m_begin);
    return m_marks.begin();
}

/// A line with nothing but short numbers and separators, which most are.
Q_ALWAYS_INLINE const quint32 *PlainLines::takeBareLine(const quint32 *at, char point, qint64 row) const
{
    double *const *const last = m_places.data() + m_places.size() - 1;
    for (double *const *place = m_places.data(); m_isAllRead; ++place) {
        at = takeShortNumber(at, point, (*place)[row]);
        if (!at)
            return nullptr;
        if (place == last)
            return m_begin[*at] == '\n' ? at : nullptr;
        if (m_begin[*at] != m_separator)
            return nullptr;
    }
    return nullptr;
}

/// A number of at most eight characters behind the sign.
Q_ALWAYS_INLINE const quint32 *PlainLines::takeShortNumber(const quint32 *at, char point, double &value) const
{
    const quint32 first = *at + 1;
    const bool negative = m_begin[first] == '-';
    const quint32 whole = first + quint32(negative);
    const quint32 wholeEnd = at[1];
    // A branch, so that the processor guesses where the next field is.
    if (m_begin[wholeEnd] != point) {
        const quint32 size = wholeEnd - whole;
        if (!areFew(size))
            return nullptr;
        value = scaled(valueOfDigits(m_begin + whole, size), 0, negative);
        return at + 1;
    }
    const quint32 size = at[2] - whole;
    const quint32 fraction = at[2] - wholeEnd - 1;
    // There must be digits on both sides: "5," may be a number and a separator.
    if (size > fewDigits || wholeEnd == whole || fraction == 0 || m_begin[wholeEnd + 1] == '-')
        return nullptr;
    value = scaled(valueWithoutPoint(m_begin + whole, size, fraction), fraction, negative);
    return at + 2;
}

/// A number of any kind.
const quint32 *PlainLines::takeNumber(const quint32 *at, char point, double &value) const
{
    const bool negative = *behind(at) == '-';
    const char *const whole = behind(at) + int(negative);
    const char *const wholeEnd = m_begin + at[1];
    if (*wholeEnd == point && areFew(wholeEnd - whole) && wholeEnd[1] != '-') {
        const qint64 fraction = at[2] - at[1] - 1;
        const quint64 digits = areFew(fraction)
            ? valueOfDigits(whole, wholeEnd - whole) * powersOfTen[fraction] + valueOfDigits(wholeEnd + 1, fraction)
            : largestExactWhole;
        if (digits < largestExactWhole) {
            value = scaled(digits, fraction, negative);
            return at + 2;
        }
    }
    const char *const end = ::takeNumber(behind(at), m_end - 1, point, value);
    if (!end)
        return nullptr;
    do
        ++at;
    while (m_begin + *at < end);
    return m_begin + *at == end ? at : nullptr;
}

/// A line with any numbers, blanks around fields, or fields that aren't read.
const quint32 *PlainLines::takeLine(const quint32 *at, char point, qint64 row) const
{
    if (!m_places.front() && isSpecial(at))
        return nullptr;
    double *const *const last = m_places.data() + m_places.size() - 1;
    for (double *const *place = m_places.data();; ++place) {
        at = skipBlanks(at);
        const quint32 *const end = *place ? takeShortNumber(at, point, (*place)[row]) : skipText(at);
        at = end || !*place ? end : takeNumber(at, point, (*place)[row]);
        if (!at || place == last)
            return at ? takeLineEnd(at) : nullptr;
        if (m_separator == blankSeparator ? isInnerBlank(m_begin[*at]) : m_begin[*at] == m_separator)
            continue;
        at = isInnerBlank(m_begin[*at]) ? skipBlanks(at) : nullptr;
        if (!at || *behind(at) != m_separator)
            return nullptr;
        ++at;
    }
}

const quint32 *PlainLines::takeLineEnd(const quint32 *at) const
{
    if (isInnerBlank(m_begin[*at])) {
        at = skipBlanks(at);
        if (*behind(at) != '\r' && *behind(at) != '\n')
            return nullptr;
        ++at;
    }
    if (m_begin[*at] == '\r' && *behind(at) == '\n')
        ++at;
    return m_begin[*at] == '\n' ? at : nullptr;
}

/// The mark in front of what comes behind blanks.
const quint32 *PlainLines::skipBlanks(const quint32 *at) const
{
    while (isInnerBlank(*behind(at)))
        ++at;
    return at;
}

/// Whether a line that begins with text is a comment or the name of a section.
bool PlainLines::isSpecial(const quint32 *at) const
{
    const char *text = behind(at);
    while (isBlank(*text)) // a carriage return is one, too
        ++text;
    return isComment({text, m_end, false}, m_layout.commentPrefixes) || (m_layout.hasSections && *text == '$');
}

/// A field of a column that isn't read. It may be neither empty nor quoted.
const quint32 *PlainLines::skipText(const quint32 *at) const
{
    const auto isEnd = [this](char c) {
        return c == '\n' || c == m_separator || (m_separator == blankSeparator && isBlank(c));
    };
    if (*behind(at) == '"' || isEnd(*behind(at)))
        return nullptr;
    do
        ++at;
    while (!isEnd(m_begin[*at]));
    return at;
}
