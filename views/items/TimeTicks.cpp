// SPDX-License-Identifier: MIT
#include "views/items/TimeTicks.h"

#include "views/items/Ticks.h"

#include <QDateTime>

#include <algorithm>
#include <limits>

namespace {

constexpr double minute = 60.0;
constexpr double hour = 3600.0;
constexpr double day = 86400.0;
constexpr double month = day * 365.2425 / 12.0;
constexpr double year = day * 365.2425;
constexpr double endOfTime = 1e12; // seconds: some 31,000 years either way, well within what QDateTime knows
constexpr double tolerance = 1e-6; // as with decimal steps: keeps the choice off the rounding of a pan

constexpr STimeStep calendarSteps[] = {
    {TimeUnit::Second, 1.0},
    {TimeUnit::Second, 2.0},
    {TimeUnit::Second, 5.0},
    {TimeUnit::Second, 10.0},
    {TimeUnit::Second, 15.0},
    {TimeUnit::Second, 30.0},
    {TimeUnit::Second, minute},
    {TimeUnit::Second, 2 * minute},
    {TimeUnit::Second, 5 * minute},
    {TimeUnit::Second, 10 * minute},
    {TimeUnit::Second, 15 * minute},
    {TimeUnit::Second, 30 * minute},
    {TimeUnit::Second, hour},
    {TimeUnit::Second, 2 * hour},
    {TimeUnit::Second, 3 * hour},
    {TimeUnit::Second, 6 * hour},
    {TimeUnit::Second, 12 * hour},
    {TimeUnit::Day, 1.0},
    {TimeUnit::Day, 2.0},
    {TimeUnit::Day, 7.0},
    {TimeUnit::Month, 1.0},
    {TimeUnit::Month, 3.0},
    {TimeUnit::Month, 6.0},
    {TimeUnit::Year, 1.0},
};

/// A moment whose whole seconds and fraction are apart: together in one double only a quarter of a microsecond would be
/// left.
struct SMoment
{
    qint64 seconds = 0;
    double fraction = 0.0; ///< 0 to 1
};

SMoment momentOf(double value, double startTime)
{
    const double startWhole = std::floor(startTime);
    const double valueWhole = std::floor(value);
    const double fraction = (startTime - startWhole) + (value - valueWhole);
    const double carry = std::floor(fraction);
    return {qint64(startWhole) + qint64(valueWhole) + qint64(carry), fraction - carry};
}

double valueOf(qint64 seconds, double startTime)
{
    const double startWhole = std::floor(startTime);
    return double(seconds - qint64(startWhole)) - (startTime - startWhole);
}

bool isInTime(double value, double startTime)
{
    return std::abs(startTime) <= endOfTime && std::abs(value) <= endOfTime;
}

bool isInTime(const AxisMapping &mapping, double startTime)
{
    return mapping.isValid() && !mapping.log && areInTime(mapping.from, mapping.to, startTime);
}

QDate dateOf(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).date();
}

qint64 midnight(const QDate &date)
{
    return (date.toJulianDay() - QDate(1970, 1, 1).toJulianDay()) * qint64(day);
}

qint64 floorDivide(qint64 a, qint64 b)
{
    return a / b - (a % b < 0 ? 1 : 0);
}

/// Years are written without a year 0 between -1 and 1.
QDate dateOfYear(qint64 number)
{
    return QDate(int(number > 0 ? number : number - 1), 1, 1);
}

int fractionDigits(double step)
{
    return step >= 1.0 || !(step > 0.0) ? 0 : std::min(12, int(std::ceil(-std::log10(step) - tolerance)));
}

int labelLength(const STimeStep &step)
{
    switch (step.unit) {
    case TimeUnit::Year:
        return 5;
    case TimeUnit::Month:
        return 7;
    case TimeUnit::Day:
        return 10;
    case TimeUnit::Second:
        break;
    }
    if (step.count >= minute)
        return 10; // at midnight the day stands here
    const int digits = fractionDigits(step.count);
    return std::max(10, 8 + (digits ? digits + 1 : 0));
}

bool hasRoom(const STimeStep &step, double secondsPerPixel, const SLabelSpace &space)
{
    const double needed = labelLength(step) * space.digit + space.gap;
    return step.seconds() >= needed * secondsPerPixel * (1.0 - tolerance);
}

/// Steps below a second, in tenths, hundredths… : the smallest that has room, if any has.
STimeStep fractionalStep(double least, double secondsPerPixel, const SLabelSpace &space)
{
    for (double count = roundStep(std::max(least, 1e-12)); count > 0.0 && count < 1.0; count = roundStep(count * 1.1)) {
        const STimeStep step{TimeUnit::Second, count};
        if (hasRoom(step, secondsPerPixel, space))
            return step;
    }
    return {};
}

STimeStep yearsStep(double least, double secondsPerPixel, const SLabelSpace &space)
{
    const double needed = (labelLength({TimeUnit::Year, 1.0}) * space.digit + space.gap) * secondsPerPixel;
    return {TimeUnit::Year, std::max(2.0, roundStep(std::max(needed, least) / year))};
}

STimeStep stepFrom(double least, double secondsPerPixel, const SLabelSpace &space)
{
    const STimeStep fractional = fractionalStep(std::max(least, secondsPerPixel), secondsPerPixel, space);
    if (fractional.count > 0.0)
        return fractional;
    for (const STimeStep &step : calendarSteps) {
        if (step.seconds() >= least * (1.0 - tolerance) && hasRoom(step, secondsPerPixel, space))
            return step;
    }
    return yearsStep(least, secondsPerPixel, space);
}

/// The moments at which steps of whole seconds, days, months and years begin.
class WholeSteps
{
public:
    WholeSteps(const STimeStep &step, qint64 first) : m_step(step), m_count(std::max(qint64(1), qint64(step.count)))
    {
        const QDate date = dateOf(first);
        switch (step.unit) {
        case TimeUnit::Second:
            m_number = floorDivide(first, m_count);
            break;
        case TimeUnit::Day: // weeks begin on Mondays, as 5 January 1970 was one; day 0 of 1970 is a Thursday
            m_number = floorDivide(floorDivide(first, qint64(day)) - dayShift(), m_count);
            break;
        case TimeUnit::Month:
            m_number = floorDivide(astronomicalYear(date) * 12 + date.month() - 1, m_count);
            break;
        case TimeUnit::Year:
            m_number = floorDivide(astronomicalYear(date), m_count);
            break;
        }
    }

    qint64 next()
    {
        const qint64 number = m_number++ * m_count;
        switch (m_step.unit) {
        case TimeUnit::Second:
            break;
        case TimeUnit::Day:
            return (number + dayShift()) * qint64(day);
        case TimeUnit::Month:
            return midnight(dateOfYear(floorDivide(number, 12)).addMonths(int(number - floorDivide(number, 12) * 12)));
        case TimeUnit::Year:
            return midnight(dateOfYear(number));
        }
        return number;
    }

private:
    static qint64 astronomicalYear(const QDate &date) { return date.year() > 0 ? date.year() : date.year() + 1; }
    qint64 dayShift() const { return m_count == 7 ? 4 : 0; }

    const STimeStep m_step;
    const qint64 m_count;
    qint64 m_number = 0;
};

/// Fractions are counted from the second before the first tick: each of them divides a second.
QVector<double> fractionalTicks(double low, double high, double startTime, double step)
{
    QVector<double> ticks;
    const SMoment first = momentOf(low, startTime);
    const double second = valueOf(first.seconds, startTime);
    const double perSecond = std::round(1.0 / step);
    for (double k = std::ceil(first.fraction * perSecond - 1e-6); ticks.size() < maximalTickCount; ++k) {
        const double tick = second + k / perSecond;
        if (!(tick <= high + step * 1e-6))
            break;
        ticks.append(tick);
    }
    return ticks;
}

/// Hours and minutes, then seconds and their digits as a step needs them.
QString clockText(const SMoment &moment, double step)
{
    const QTime time = QDateTime::fromSecsSinceEpoch(moment.seconds, Qt::UTC).time();
    if (step >= minute)
        return time.toString(QStringLiteral("hh:mm"));
    const QString seconds = time.toString(QStringLiteral("hh:mm:ss"));
    const int digits = fractionDigits(step);
    if (digits == 0)
        return seconds;
    const double scale = std::pow(10.0, digits);
    const qint64 fraction = std::min(qint64(moment.fraction * scale), qint64(scale) - 1);
    return seconds + QStringLiteral(".%1").arg(fraction, digits, 10, QLatin1Char('0'));
}

} // namespace

double STimeStep::seconds() const
{
    switch (unit) {
    case TimeUnit::Year:
        return count * year;
    case TimeUnit::Month:
        return count * month;
    case TimeUnit::Day:
        return count * day;
    case TimeUnit::Second:
        break;
    }
    return count;
}

bool areInTime(double from, double to, double startTime)
{
    return isInTime(from, startTime) && isInTime(to, startTime);
}

STimeStep timeStep(const AxisMapping &mapping, double startTime, const SLabelSpace &space)
{
    return timeStepFor(0.0, mapping, startTime, space);
}

STimeStep timeStepFor(double interval, const AxisMapping &mapping, double startTime, const SLabelSpace &space)
{
    if (!isInTime(mapping, startTime))
        return {};
    const double least = interval > 0.0 && interval <= endOfTime ? interval : 0.0;
    // Two neighbours must differ in double, however far out they lie.
    const double farthest = std::max(std::abs(mapping.from), std::abs(mapping.to));
    const double distinct = farthest * 4.0 * std::numeric_limits<double>::epsilon();
    return stepFrom(std::max(least, distinct), std::abs(1.0 / mapping.pixelsPerUnit()), space);
}

QVector<double> timeTicks(const AxisMapping &mapping, double startTime, const STimeStep &step)
{
    QVector<double> ticks;
    if (!isInTime(mapping, startTime) || !(step.count > 0.0))
        return ticks;
    const double low = std::min(mapping.from, mapping.to);
    const double high = std::max(mapping.from, mapping.to);
    if (step.unit == TimeUnit::Second && step.count < 1.0)
        return fractionalTicks(low, high, startTime, step.count);
    WholeSteps steps(step, momentOf(low, startTime).seconds);
    const double slack = step.seconds() * 1e-9;
    while (ticks.size() < maximalTickCount) {
        const double tick = valueOf(steps.next(), startTime);
        if (tick > high + slack)
            break;
        if (tick >= low - slack)
            ticks.append(tick);
    }
    return ticks;
}

QString timeLabel(double value, double startTime, const STimeStep &step)
{
    if (!isInTime(value, startTime))
        return {};
    // A hair is added, so that a rounding error doesn't show the second before.
    const SMoment moment = momentOf(value + std::min(step.seconds(), 1.0) * 1e-3, startTime);
    const QDateTime time = QDateTime::fromSecsSinceEpoch(moment.seconds, Qt::UTC);
    if (step.unit == TimeUnit::Year)
        return QString::number(time.date().year());
    if (step.unit == TimeUnit::Month)
        return time.toString(QStringLiteral("yyyy-MM"));
    if (step.unit == TimeUnit::Day || (time.time() == QTime(0, 0) && step.count >= 1.0))
        return time.toString(QStringLiteral("yyyy-MM-dd"));
    return clockText(moment, step.count);
}

QString fullTime(double value, double startTime, double resolution)
{
    if (!isInTime(value, startTime))
        return {};
    const double step = resolution >= minute ? minute : resolution >= 1.0 ? 1.0 : roundStep(std::max(resolution, 1e-9));
    const SMoment moment = momentOf(value + std::min(step, 1.0) * 1e-3, startTime);
    const QDateTime time = QDateTime::fromSecsSinceEpoch(moment.seconds, Qt::UTC);
    const QString date = time.toString(QStringLiteral("yyyy-MM-dd"));
    return resolution >= day ? date : date + QLatin1Char(' ') + clockText(moment, step);
}

QString formattedTime(double value, double startTime, const QString &format)
{
    if (!isInTime(value, startTime))
        return {};
    const SMoment moment = momentOf(value, startTime);
    const qint64 milliseconds = moment.seconds * 1000 + qint64(std::floor(moment.fraction * 1000.0 + 1e-6));
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(format);
}
