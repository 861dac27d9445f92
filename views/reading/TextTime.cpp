// SPDX-License-Identifier: MIT
#include "views/reading/TextTime.h"

#include <cmath>

namespace {

constexpr qint32 billion = 1'000'000'000;

/// Takes pieces from the front of a text.
class Scanner
{
public:
    Scanner(const char *text, const char *end) : m_text(text), m_end(end) {}

    bool atEnd() const { return m_text == m_end; }
    bool take(char c) { return m_text != m_end && *m_text == c ? (++m_text, true) : false; }
    bool hasDigit() const { return m_text != m_end && *m_text >= '0' && *m_text <= '9'; }
    int digit() { return *m_text++ - '0'; }

    /// A number of exactly so many digits, at least `least` and at most `most`.
    bool number(int digits, int least, int most, int &value)
    {
        value = 0;
        for (; digits > 0; --digits) {
            if (!hasDigit())
                return false;
            value = 10 * value + digit();
        }
        return value >= least && value <= most;
    }

    /// The digits behind a decimal sign, as billionths; what is finer is cut off.
    bool billionths(qint32 &value)
    {
        if (!hasDigit())
            return false;
        value = 0;
        for (qint32 unit = billion / 10; hasDigit(); unit /= 10)
            value += unit * digit();
        return true;
    }

private:
    const char *m_text;
    const char *m_end;
};

int daysOf(int month, int year)
{
    static constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return days[month - 1] + int(leap && month == 2);
}

/// Days from 1970-01-01 to that day, in the calendar of today for all times.
qint64 daysSince1970(int year, int month, int day)
{
    const qint64 shifted = year - int(month <= 2); // years begin in March
    const qint64 era = (shifted >= 0 ? shifted : shifted - 399) / 400;
    const qint64 yearOfEra = shifted - era * 400;
    const qint64 dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146'097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719'468;
}

bool takeDate(Scanner &scanner, qint64 &days)
{
    int year;
    int month;
    int day;
    if (!scanner.number(4, 0, 9999, year) || !scanner.take('-') || !scanner.number(2, 1, 12, month)
        || !scanner.take('-') || !scanner.number(2, 1, daysOf(month, year), day))
        return false;
    days = daysSince1970(year, month, day);
    return true;
}

bool takeTimeOfDay(Scanner &scanner, SMoment &moment)
{
    int hours;
    int minutes;
    int seconds = 0;
    if (!scanner.number(2, 0, 24, hours) || !scanner.take(':') || !scanner.number(2, 0, 59, minutes))
        return false;
    if (scanner.take(':')) {
        if (!scanner.number(2, 0, 60, seconds)) // 60: a leap second
            return false;
        if ((scanner.take('.') || scanner.take(',')) && !scanner.billionths(moment.nanoseconds))
            return false;
    }
    moment.seconds += hours * 3600 + minutes * 60 + seconds;
    return true;
}

/// Takes "Z" or an offset like +01:00, +0100 or +01, if there is one. False if it's something else.
bool takeZone(Scanner &scanner, SMoment &moment)
{
    scanner.take(' ');
    if (scanner.atEnd())
        return true;
    moment.zoned = true;
    if (scanner.take('Z') || scanner.take('z'))
        return scanner.atEnd();
    const bool west = scanner.take('-');
    int hours;
    int minutes = 0;
    if ((!west && !scanner.take('+')) || !scanner.number(2, 0, 23, hours))
        return false;
    const bool colon = scanner.take(':');
    if ((colon || !scanner.atEnd()) && !scanner.number(2, 0, 59, minutes))
        return false;
    const int offset = hours * 3600 + minutes * 60;
    moment.seconds += west ? offset : -offset;
    return scanner.atEnd();
}

} // namespace

bool isoMomentIn(const char *text, const char *end, SMoment &moment)
{
    Scanner scanner(text, end);
    moment = {};
    qint64 days;
    if (!takeDate(scanner, days))
        return false;
    moment.seconds = days * 86'400;
    if (scanner.atEnd())
        return true;
    if (!scanner.take('T') && !scanner.take('t') && !scanner.take(' '))
        return false;
    return takeTimeOfDay(scanner, moment) && takeZone(scanner, moment);
}

bool epochMomentIn(const char *text, const char *end, DecimalSign sign, int perSecond, SMoment &moment)
{
    constexpr qint64 largest = 100'000'000'000'000; // some 3000 years of milliseconds
    Scanner scanner(text, end);
    moment = {0, 0, true};
    if (!scanner.hasDigit())
        return false;
    qint64 whole = 0;
    while (scanner.hasDigit()) {
        whole = 10 * whole + scanner.digit();
        if (whole > largest)
            return false;
    }
    const bool point =
        (sign != DecimalSign::Comma && scanner.take('.')) || (sign != DecimalSign::Point && scanner.take(','));
    qint32 fraction = 0;
    if ((point && !scanner.atEnd() && !scanner.billionths(fraction)) || !scanner.atEnd())
        return false;
    moment.seconds = whole / perSecond;
    moment.nanoseconds = qint32(whole % perSecond) * (billion / perSecond) + fraction / perSecond;
    return true;
}

double secondsSince(qint64 origin, const SMoment &moment)
{
    constexpr qint64 fits = 9'000'000'000; // seconds whose nanoseconds 64 bits hold
    const qint64 seconds = moment.seconds - origin;
    if (seconds < -fits || seconds > fits)
        return double(seconds) + double(moment.nanoseconds) / billion;
    return double(seconds * billion + moment.nanoseconds) / billion;
}
