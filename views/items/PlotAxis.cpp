// SPDX-License-Identifier: MIT
#include "views/items/PlotAxis.h"

#include "common/Change.h"
#include "views/items/AxisLabels.h"
#include "views/items/TimeTicks.h"

#include <qqmlinfo.h>

#include <algorithm>

namespace {

constexpr int mostSubTicks = 100;

/// The end of a range that has the other one at `end`, `length` long on its scale.
double endAfter(double end, double length, bool log)
{
    return log ? end * std::pow(10.0, length) : end + length;
}

} // namespace

PlotAxis::PlotAxis(bool log, QObject *parent) : QObject(parent), m_range(firstRange(log)), m_home(m_range), m_log(log)
{
    connect(this, &PlotAxis::rangeChanged, this, &PlotAxis::tellIfBeyondDates);
    connect(this, &PlotAxis::lookChanged, this, &PlotAxis::tellIfBeyondDates);
}

PlotAxis::~PlotAxis()
{
    emit aboutToGo(this);
}

bool PlotAxis::accepts(double end, const char *name)
{
    if (canBeAnEnd(end, m_log))
        return true;
    if (!m_hasWarned)
        qmlWarning(this) << name << " can't be " << end << (m_log ? " on a log scale" : "") << ": it stays as it is";
    m_hasWarned = true;
    return false;
}

void PlotAxis::setMin(double min)
{
    if (!accepts(min, "min"))
        return;
    const double length = m_range.length(m_log);
    SAxisRange range{min, m_range.max};
    if (range.min >= range.max)
        range.max = endAfter(min, length, m_log);
    const bool other = !m_minIsSet;
    m_minIsSet = true;
    range = showable(range, m_log, m_range);
    m_home = {range.min, m_home.max > range.min ? m_home.max : range.max};
    takeRange(range);
    if (other)
        emit rulesChanged();
}

void PlotAxis::setMax(double max)
{
    if (!accepts(max, "max"))
        return;
    const double length = m_range.length(m_log);
    SAxisRange range{m_range.min, max};
    if (range.min >= range.max)
        range.min = endAfter(max, -length, m_log);
    const bool other = !m_maxIsSet;
    m_maxIsSet = true;
    range = showable(range, m_log, m_range);
    m_home = {m_home.min < range.max ? m_home.min : range.min, range.max};
    takeRange(range);
    if (other)
        emit rulesChanged();
}

void PlotAxis::resetMin()
{
    if (change(m_minIsSet, false))
        emit rulesChanged();
}

void PlotAxis::resetMax()
{
    if (change(m_maxIsSet, false))
        emit rulesChanged();
}

SAxisRange PlotAxis::allowed(const SAxisRange &range) const
{
    const SAxisRange shown = showable(range, m_log, m_range);
    return showable(withinLimits(shown, m_lowerLimit, m_upperLimit, m_log), m_log, m_range);
}

void PlotAxis::setRange(double min, double max)
{
    takeRange(allowed({min, max}));
}

void PlotAxis::takeRange(const SAxisRange &range)
{
    const bool minIsOther = changeExactly(m_range.min, range.min);
    const bool maxIsOther = changeExactly(m_range.max, range.max);
    if (minIsOther)
        emit minChanged();
    if (maxIsOther)
        emit maxChanged();
    if (minIsOther || maxIsOther)
        emit rangeChanged();
}

SAxisRange PlotAxis::home(const SAxisRange &data) const
{
    SAxisRange wanted{m_minIsSet ? m_home.min : data.min, m_maxIsSet ? m_home.max : data.max};
    const double length = m_range.length(m_log);
    if (wanted.min >= wanted.max && m_minIsSet && !m_maxIsSet) // all values lie before what was set
        wanted.max = endAfter(wanted.min, length, m_log);
    else if (wanted.min >= wanted.max && m_maxIsSet && !m_minIsSet)
        wanted.min = endAfter(wanted.max, -length, m_log);
    return allowed(wanted);
}

void PlotAxis::setAutoRange(bool autoRange)
{
    if (!change(m_autoRange, autoRange))
        return;
    emit autoRangeChanged();
    emit rulesChanged();
}

void PlotAxis::setTitleText(const QString &titleText)
{
    if (!change(m_titleText, titleText))
        return;
    emit titleTextChanged();
    emit lookChanged();
}

void PlotAxis::setUnit(const QString &unit)
{
    if (!change(m_unit, unit))
        return;
    emit unitChanged();
    emit lookChanged();
}

void PlotAxis::setTickInterval(double tickInterval)
{
    const double usable = tickInterval > 0.0 && std::isfinite(tickInterval) ? tickInterval : 0.0;
    if (!changeExactly(m_tickInterval, usable))
        return;
    emit tickIntervalChanged();
    emit lookChanged();
}

void PlotAxis::setSubTickCount(int subTickCount)
{
    if (!change(m_subTickCount, std::clamp(subTickCount, 0, mostSubTicks)))
        return;
    emit subTickCountChanged();
    emit lookChanged();
}

void PlotAxis::setLabelFormat(const QString &labelFormat)
{
    if (!change(m_labelFormat, labelFormat))
        return;
    if (!labelFormat.isEmpty() && !isNumberFormat(labelFormat))
        qmlWarning(this) << "labelFormat \"" << labelFormat << "\" isn't a format for one number, such as \"%.2f\"";
    emit labelFormatChanged();
    emit lookChanged();
}

void PlotAxis::setTimeFormat(const QString &timeFormat)
{
    if (!change(m_timeFormat, timeFormat))
        return;
    emit timeFormatChanged();
    emit lookChanged();
}

void PlotAxis::setStartTime(double startTime)
{
    const double usable = std::isfinite(startTime) ? startTime : std::numeric_limits<double>::quiet_NaN();
    if (!changeExactly(m_startTime, usable))
        return;
    emit startTimeChanged();
    emit lookChanged();
}

void PlotAxis::setStoreStartTime(double startTime)
{
    if (changeExactly(m_storeStartTime, startTime))
        emit lookChanged();
}

void PlotAxis::setGridVisible(bool gridVisible)
{
    if (!change(m_gridVisible, gridVisible))
        return;
    emit gridVisibleChanged();
    emit lookChanged();
}

void PlotAxis::setLabelsVisible(bool labelsVisible)
{
    if (!change(m_labelsVisible, labelsVisible))
        return;
    emit labelsVisibleChanged();
    emit lookChanged();
}

void PlotAxis::setLowerLimit(double lowerLimit)
{
    if (!changeExactly(m_lowerLimit, lowerLimit))
        return;
    emit lowerLimitChanged();
    takeRange(allowed(m_range));
    emit rulesChanged();
}

void PlotAxis::setUpperLimit(double upperLimit)
{
    if (!changeExactly(m_upperLimit, upperLimit))
        return;
    emit upperLimitChanged();
    takeRange(allowed(m_range));
    emit rulesChanged();
}

void PlotAxis::setLog(bool log)
{
    if (!change(m_log, log))
        return;
    const SAxisRange before = m_range;
    const double highest = m_range.max > 0.0 ? m_range.max : 10.0;
    const SAxisRange fallback{highest * 1e-3, highest};
    m_range = showable(m_range, m_log, fallback);
    m_home = showable(m_home, m_log, m_range);
    emit logScaleChanged();
    if (before.min != m_range.min)
        emit minChanged();
    if (before.max != m_range.max)
        emit maxChanged();
    emit rulesChanged();
    emit rangeChanged();
}

AxisMapping PlotAxis::mapping(double pixelsFrom, double pixelsTo) const
{
    return {m_range.min, m_range.max, m_log, pixelsFrom, pixelsTo};
}

bool PlotAxis::isTime() const
{
    return !m_log && (!m_timeFormat.isEmpty() || !std::isnan(m_startTime) || !std::isnan(m_storeStartTime));
}

bool PlotAxis::isBeyondDates() const
{
    return isTime() && !areInTime(m_range.min, m_range.max, effectiveStartTime());
}

void PlotAxis::tellIfBeyondDates()
{
    if (m_hasToldOfDates || !isBeyondDates())
        return;
    qmlWarning(this) << m_range.min << " to " << m_range.max << " with startTime " << effectiveStartTime()
                     << " is outside the range of dates, so the axis shows seconds. Are some of these milliseconds?";
    m_hasToldOfDates = true;
}

double PlotAxis::effectiveStartTime() const
{
    if (!std::isnan(m_startTime))
        return m_startTime;
    return std::isnan(m_storeStartTime) ? 0.0 : m_storeStartTime;
}

QString PlotAxis::heading() const
{
    if (m_unit.isEmpty() || isTime())
        return m_titleText;
    return m_titleText.isEmpty() ? m_unit : QStringLiteral("%1 (%2)").arg(m_titleText, m_unit);
}

QString PlotAxis::valueText(double value, double resolution) const
{
    if (isTime()) {
        const QString moment = fullTime(value, effectiveStartTime(), resolution);
        if (!moment.isEmpty())
            return moment;
    }
    const double size = std::max(std::abs(value), std::abs(resolution));
    const double digits = resolution > 0.0 && size > 0.0 ? std::ceil(std::log10(size / resolution)) + 1.0 : 7.0;
    const QString number = formattedNumber(value, m_labelFormat);
    const QString text =
        number.isEmpty() ? shortNumber(value, int(std::fmin(std::fmax(digits, 3.0), 15.0))) : number; // 3 for NaN
    return m_unit.isEmpty() || std::isnan(value) ? text : text + QChar(0xa0) + m_unit;
}
