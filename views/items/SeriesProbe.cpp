// SPDX-License-Identifier: MIT
#include "views/items/SeriesProbe.h"

#include "views/items/AreaSeries.h"
#include "views/items/BarSeries.h"
#include "views/store/SeriesStore.h"

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double smallestPositive = std::numeric_limits<double>::denorm_min();

double baselineOf(const PlotSeries &series)
{
    if (const auto *bars = qobject_cast<const BarSeries *>(&series))
        return bars->baseline();
    if (const auto *area = qobject_cast<const AreaSeries *>(&series))
        return area->baseline();
    return none;
}

} // namespace

SeriesProbe::SeriesProbe(const PlotSeries &series)
    : m_isBars(series.isBars()),
      m_start(series.start() + series.xOffset()),
      m_step(series.step()),
      m_offset(series.xOffset()),
      m_baseline(baselineOf(series)),
      m_startTime(none)
{
    if (const SeriesStore *store = series.valueStore()) {
        m_values = series.scaledValues();
        m_startTime = store->startTime();
    }
    if (const SeriesStore *places = series.placeStore()) {
        m_places = places->frameSnapshot();
        m_hasOwnPlaces = true;
        if (std::isnan(m_startTime))
            m_startTime = places->startTime();
    }
    m_hasPlaces =
        m_hasOwnPlaces ? !m_places.isEmpty() : m_step > 0.0 && std::isfinite(m_step) && std::isfinite(m_start);
}

double SeriesProbe::xOf(qint64 index) const
{
    return isEven() ? m_start + double(index) * m_step : m_places.valueAt(index) + m_offset;
}

void SeriesProbe::copyXs(qint64 from, qint64 to, double *target) const
{
    if (!isEven())
        m_places.copyValues(from, to, target);
    for (qint64 i = from; i < to; ++i, ++target)
        *target = isEven() ? m_start + double(i) * m_step : *target + m_offset;
}

SampleType SeriesProbe::xType() const
{
    return isEven() || m_offset != 0.0 ? SampleType::Float64 : m_places.type();
}

bool SeriesProbe::hasPlacesOf(const SeriesProbe &other) const
{
    if (isEven() != other.isEven())
        return false;
    return isEven() ? m_start == other.m_start && m_step == other.m_step
                    : m_places == other.m_places && m_offset == other.m_offset;
}

bool SeriesProbe::isOfSameSeries(const SeriesProbe &other) const
{
    if (!m_values.isOfSameSeries(other.m_values) || isEven() != other.isEven())
        return false;
    return isEven() ? m_start == other.m_start && m_step == other.m_step
                    : m_places.isOfSameSeries(other.m_places) && m_offset == other.m_offset;
}

qint64 SeriesProbe::firstFrom(double x) const
{
    const qint64 begin = m_values.begin();
    const qint64 end = m_values.end();
    if (!isEven())
        return qBound(begin, m_places.lowerBound(x - m_offset), end);
    const double index = std::ceil((x - m_start) / m_step - 1e-9);
    if (!(index > double(begin)))
        return begin;
    return index >= double(end) ? end : qint64(index);
}

qint64 SeriesProbe::firstAbove(double x) const
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (!isEven())
        return qBound(m_values.begin(), m_places.lowerBound(std::nextafter(x - m_offset, infinity)), m_values.end());
    const qint64 index = firstFrom(x);
    return index < m_values.end() && xOf(index) <= x ? index + 1 : index;
}

bool SeriesProbe::reach(bool log, SAxisRange &reach) const
{
    const qint64 first = isEmpty() ? 0 : log ? firstFrom(smallestPositive) : m_values.begin();
    qint64 last = m_values.end() - 1;
    if (!isEven())
        last = std::min(last, m_places.end() - 1);
    if (isEmpty() || first > last)
        return false;
    double end = xOf(last);
    if (m_isBars && isEven())
        end += m_step;
    else if (m_isBars && m_places.end() > last + 1)
        end = xOf(last + 1);
    reach = {xOf(first), end};
    return std::isfinite(reach.min) && std::isfinite(reach.max) && reach.min <= reach.max;
}

SExtremes SeriesProbe::extremesIn(const SAxisRange &part, bool log) const
{
    SExtremes extremes;
    if (isEmpty())
        return extremes;
    qint64 from = firstFrom(part.min);
    const bool isWithinBar = from == m_values.end() || xOf(from) > part.min;
    if (m_isBars && from > m_values.begin() && isWithinBar)
        --from; // the bar that began before
    qint64 to = std::max(from, firstFrom(part.max));
    if (to < m_values.end() && xOf(to) == part.max && !m_isBars)
        ++to;
    extremes = m_values.extremesIn(from, to);
    if (extremes.isEmpty())
        return extremes;
    if (log) {
        const double positive = m_values.smallestPositiveIn(from, to);
        extremes.lowest = positive;
        return std::isnan(positive) ? SExtremes() : extremes;
    }
    if (std::isfinite(m_baseline))
        extremes.include(m_baseline, m_baseline);
    return extremes;
}

qint64 SeriesProbe::nearest(double x) const
{
    if (isEmpty() || std::isnan(x))
        return -1;
    const qint64 right = firstFrom(x);
    const qint64 left = right - 1;
    const bool hasRight = right < m_values.end();
    const bool hasLeft = left >= m_values.begin();
    if (m_isBars) {
        SAxisRange all;
        const bool isInside = reach(false, all) && x >= all.min && x < all.max;
        return !isInside ? -1 : hasRight && xOf(right) == x ? right : hasLeft ? left : -1;
    }
    if (!hasLeft || !hasRight)
        return hasRight ? right : hasLeft ? left : -1;
    return x - xOf(left) < xOf(right) - x ? left : right;
}
