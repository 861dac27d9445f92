// SPDX-License-Identifier: MIT
#include "views/items/AxisLook.h"

#include "views/items/AxisLabels.h"
#include "views/items/PlotAxis.h"
#include "views/items/Ticks.h"

namespace {

QVector<double> places(const QVector<double> &ticks, const AxisMapping &mapping)
{
    QVector<double> pixels;
    pixels.reserve(ticks.size());
    for (const double tick : ticks)
        pixels.append(mapping.toPixels(tick));
    return pixels;
}

SAxisLook timeLook(const PlotAxis &axis, const AxisMapping &mapping, const STimeStep &step)
{
    SAxisLook look;
    const double start = axis.effectiveStartTime();
    const QString format = axis.timeFormat();
    for (const double tick : timeTicks(mapping, start, step)) {
        const QString text = format.isEmpty() ? timeLabel(tick, start, step) : formattedTime(tick, start, format);
        look.labels.append({mapping.toPixels(tick), text});
    }
    if (format.isEmpty() && step.unit == TimeUnit::Second)
        look.base = fullTime(mapping.from, start, 86400.0);
    return look;
}

SAxisLook numberLook(const PlotAxis &axis, const AxisMapping &mapping, double pixels)
{
    const STickWish wish{pixels, axis.tickInterval(), axis.subTickCount()};
    const STicks ticks = mapping.log ? logTicks(mapping, wish) : linearTicks(mapping, wish);
    const AxisLabels texts(mapping, ticks.step);
    const QString format = axis.labelFormat();
    const bool hasFormat = isNumberFormat(format);
    SAxisLook look;
    for (const double tick : ticks.major)
        look.labels.append({mapping.toPixels(tick), hasFormat ? formattedNumber(tick, format) : texts.text(tick)});
    look.minor = places(ticks.minor, mapping);
    if (!hasFormat)
        look.base = texts.baseText();
    if (axis.isBeyondDates())
        look.base +=
            (look.base.isEmpty() ? QString() : QStringLiteral(" ")) + PlotAxis::tr("s, outside the range of dates");
    return look;
}

} // namespace

SAxisLook axisLook(const PlotAxis &axis, const AxisMapping &mapping, double pixels, const SLabelSpace &space)
{
    if (axis.isTime()) {
        const STimeStep step = timeStepFor(axis.tickInterval(), mapping, axis.effectiveStartTime(), space);
        if (step.count > 0.0)
            return timeLook(axis, mapping, step);
    }
    return numberLook(axis, mapping, pixels);
}
