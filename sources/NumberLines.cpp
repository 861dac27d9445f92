// SPDX-License-Identifier: MIT
#include "sources/NumberLines.h"

#include <QByteArray>
#include <QIODevice>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <utility>

namespace {

constexpr int blockSize = 1 << 20;   // bytes
constexpr int longestLine = 1 << 29; // bytes; twice that as QString

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

/// Takes the number at `*text` if it is a whole one of so few digits that nothing is rounded.
bool takeWholeNumber(const char **text, const char *end, double &value)
{
    constexpr int exactDigits = 15;
    const bool negative = *text != end && **text == '-';
    const char *digits = *text + int(negative);
    const char *digit = digits;
    qint64 whole = 0;
    for (; digit != end && isDigit(*digit) && digit - digits < exactDigits; ++digit)
        whole = 10 * whole + (*digit - '0');
    if (digit == digits || (digit != end && (isDigit(*digit) || *digit == '.' || *digit == 'e' || *digit == 'E')))
        return false;
    value = negative ? -double(whole) : double(whole);
    *text = digit;
    return true;
}

/// Takes the decimal number at `*text`, if all readers of numbers agree on what it is, and moves `*text` behind it.
bool takeNumber(const char **text, const char *end, double &value)
{
    constexpr int longestNumber = 64; // characters; printed doubles have at most 24
    if (takeWholeNumber(text, end, value))
        return true;
    const char *begin = *text;
    const char *digits = begin != end && *begin == '-' ? begin + 1 : begin;
    if (digits == end
        || !(isDigit(*digits) || *digits == '.')) // not infinities and the like, which have many spellings
        return false;
    const auto [behind, error] = std::from_chars(begin, end, value);
    *text = behind;
    return error == std::errc() && behind - begin <= longestNumber;
}

/// What Qt makes of a line, line end included.
double plainValue(const char *line, int length)
{
    return QString::fromUtf8(QByteArray(line, length)).toDouble();
}

/// Whether there is a carriage return that is not at the end of the line, where it is white space. What becomes of one
/// in text mode depends on how the device's buffer happens to be filled.
bool needsTextMode(const char *line, const char *end)
{
    while (end != line && (isBlank(end[-1]) || end[-1] == '\n'))
        --end;
    return std::memchr(line, '\r', size_t(end - line)) != nullptr;
}

/// Collects values up to a limit.
class Values
{
public:
    explicit Values(int limit) : m_limit(limit) {}

    bool append(double value)
    {
        if (m_next == m_end && !grow())
            return false;
        *m_next++ = value;
        return true;
    }

    /// Makes room for as many as there will be if the rest of the text is like the part that was read. Growing copies;
    /// room that is not used costs address space only.
    void expect(qint64 textSize, qint64 partSize)
    {
        constexpr double slack = 1.125;
        const int count = size();
        reserve(qint64(slack * count / partSize * textSize));
        m_next = m_values.data() + count;
        m_end = m_values.data() + m_values.size();
    }

    QVector<double> take()
    {
        m_values.resize(size());
        return std::move(m_values);
    }

private:
    int size() const { return m_values.size() - int(m_end - m_next); }

    bool grow()
    {
        const int count = m_values.size();
        const int portion = std::min(seriesPortion, m_limit - count);
        if (portion == 0)
            return false;
        if (m_values.capacity() < count + portion)
            reserve(2 * (qint64(count) + portion));
        m_next = extend(m_values, portion);
        m_end = m_next + portion;
        return true;
    }

    void reserve(qint64 count) { m_values.reserve(int(std::min(count, qint64(m_limit)))); }

    int m_limit;
    QVector<double> m_values;
    double *m_next = nullptr; ///< where the next value goes, in
    double *m_end = nullptr;  ///< the part of m_values that was made for values to come
};

enum class Outcome { Done, NeedsTextMode, TooManyLines, LineTooLong, ReadError };

/// Reads a device in blocks of whole lines.
class BlockReader
{
public:
    BlockReader(QIODevice &device, Values &values) : m_device(device), m_values(values) {}

    Outcome read()
    {
        while (makeRoom()) {
            const qint64 count = m_device.read(m_buffer.data() + m_held, m_buffer.size() - m_held);
            if (count < 0)
                return Outcome::ReadError;
            if (count == 0)
                return m_held == 0 ? Outcome::Done : takeLine(m_buffer.constData(), m_buffer.constData() + m_held);
            const bool isFirst = m_device.pos() == count;
            const Outcome outcome = takeLines(m_held + int(count));
            if (outcome != Outcome::Done)
                return outcome;
            if (isFirst)
                m_values.expect(m_device.size(), count);
        }
        return Outcome::LineTooLong;
    }

private:
    bool makeRoom()
    {
        if (m_held < m_buffer.size())
            return true;
        if (m_buffer.size() >= longestLine)
            return false;
        m_buffer.resize(2 * m_buffer.size());
        return true;
    }

    /// Takes the lines that end within the first `filled` bytes of the buffer and keeps the rest at its front.
    Outcome takeLines(int filled)
    {
        const char *line = m_buffer.constData();
        const char *end = line + filled;
        const char *behindLast = end; // behind the last line end
        while (behindLast != line + m_held && behindLast[-1] != '\n')
            --behindLast;
        if (behindLast == line + m_held)
            behindLast = line; // nothing of what is new ends a line
        Outcome outcome = Outcome::Done;
        while (line != behindLast && outcome == Outcome::Done) {
            const char *next = takeSimpleLine(line, behindLast - 1, outcome);
            if (!next) {
                next = static_cast<const char *>(std::memchr(line, '\n', size_t(behindLast - line))) + 1;
                outcome = takeLine(line, next);
            }
            line = next;
        }
        m_held = int(end - line);
        std::memmove(m_buffer.data(), line, size_t(m_held));
        return outcome;
    }

    /// Takes a line of a number and blanks and returns the next line; null when it is none. `*lastEnd` is a line end.
    const char *takeSimpleLine(const char *text, const char *lastEnd, Outcome &outcome)
    {
        double value;
        while (*text == ' ' || *text == '\t')
            ++text;
        if (!takeNumber(&text, lastEnd, value))
            return nullptr;
        while (isBlank(*text))
            ++text;
        if (*text != '\n')
            return nullptr;
        outcome = append(value);
        return text + 1;
    }

    Outcome takeLine(const char *line, const char *end)
    {
        return needsTextMode(line, end) ? Outcome::NeedsTextMode : append(plainValue(line, int(end - line)));
    }

    Outcome append(double value) { return m_values.append(value) ? Outcome::Done : Outcome::TooManyLines; }

    QIODevice &m_device;
    Values &m_values;
    QByteArray m_buffer{blockSize, Qt::Uninitialized};
    int m_held = 0; ///< bytes of an unfinished line at the front of the buffer
};

/// The plain way, from the beginning.
Outcome readInTextMode(QIODevice &device, Values &values)
{
    if (!device.seek(0))
        return Outcome::ReadError;
    device.setTextModeEnabled(true);
    while (!device.atEnd()) {
        const qint64 position = device.pos();
        const QByteArray line = device.readLine();
        char byte;
        if (line.isEmpty() && device.pos() == position) // the size promised more than there is
            return device.read(&byte, 1) < 0 ? Outcome::ReadError : Outcome::Done;
        if (line.size() > longestLine)
            return Outcome::LineTooLong;
        if (!values.append(QString::fromUtf8(line).toDouble()))
            return Outcome::TooManyLines;
    }
    return Outcome::Done;
}

QString errorText(Outcome outcome, const QIODevice &device, int limit)
{
    switch (outcome) {
    case Outcome::TooManyLines:
        return QStringLiteral("it has more than %1 lines").arg(limit);
    case Outcome::LineTooLong:
        return QStringLiteral("it has a line of more than %1 bytes").arg(longestLine);
    case Outcome::ReadError:
        return device.errorString();
    case Outcome::Done:
    case Outcome::NeedsTextMode:
        break;
    }
    return {};
}

} // namespace

SNumberLines readNumberLines(QIODevice &device, int limit)
{
    if (device.size() <= 0)
        return {};
    Values values(limit);
    Outcome outcome = BlockReader(device, values).read();
    if (outcome == Outcome::NeedsTextMode) {
        values = Values(limit);
        outcome = readInTextMode(device, values);
    }
    if (outcome != Outcome::Done)
        return {{}, errorText(outcome, device, limit)};
    return {values.take(), {}};
}
