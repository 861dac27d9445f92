// SPDX-License-Identifier: MIT
#include "views/items/RegionStatistics.h"

namespace {

constexpr qint64 mostOneByOne = 65536;
constexpr qint64 groups = 16384;

} // namespace

RegionPart::RegionPart(const SeriesProbe &probe, double from, double to) : m_probe(probe), m_from(from)
{
    if (probe.isEmpty() || !(from < to))
        return;
    m_first = probe.firstFrom(from);
    m_end = probe.firstFrom(to);
}

bool RegionPart::isSame(const RegionPart &other) const
{
    return m_first == other.m_first && m_end == other.m_end && m_from == other.m_from
        && m_probe.isOfSameSeries(other.m_probe) && m_probe.values().isExact() && other.m_probe.values().isExact();
}

SRegionStatistics RegionPart::statistics() const
{
    SRegionStatistics told;
    const SeriesSnapshot &values = m_probe.values();
    const SStatistics statistics = values.statisticsIn(m_first, m_end);
    if (statistics.count == 0)
        return told;
    const SExtremes extremes = values.extremesIn(m_first, m_end);
    const SExtremePlaces places = values.extremePlacesIn(m_first, m_end);
    told.count = double(statistics.count);
    told.sum = statistics.sum;
    told.mean = statistics.mean;
    told.deviation = statistics.deviation();
    told.minimum = extremes.lowest;
    told.maximum = extremes.highest;
    told.minimumAt = m_probe.xOf(places.lowestAt);
    told.maximumAt = m_probe.xOf(places.highestAt);
    told.centroid = centroid();
    told.peakWidth = peakWidth();
    return told;
}

/// The mean of x, weighted by the values: the left end is taken off before anything is multiplied.
double RegionPart::centroid() const
{
    const SeriesSnapshot &values = m_probe.values();
    const qint64 count = m_end - m_first;
    const qint64 group = count <= mostOneByOne ? 1 : (count + groups - 1) / groups;
    double weight = 0.0;
    double moment = 0.0;
    for (qint64 i = m_first; i < m_end; i += group) {
        const qint64 next = std::min(i + group, m_end);
        const double sum = group == 1 ? values.valueAt(i) : values.statisticsIn(i, next).sum;
        if (!std::isfinite(sum))
            continue;
        weight += sum;
        moment += sum * ((m_probe.xOf(i) - m_from + (m_probe.xOf(next - 1) - m_from)) * 0.5);
    }
    return weight > 0.0 ? m_from + moment / weight : std::numeric_limits<double>::quiet_NaN();
}

/// How far a value lies above the line from the first value to the last.
double RegionPart::aboveLine(qint64 index) const
{
    const SeriesSnapshot &values = m_probe.values();
    const double begin = m_probe.xOf(m_first);
    const double share = (m_probe.xOf(index) - begin) / (m_probe.xOf(m_end - 1) - begin);
    const double first = values.valueAt(m_first);
    return values.valueAt(index) - (first + share * (values.valueAt(m_end - 1) - first));
}

/// Where the way down from the top passes half its height, between two values; NaN if a gap is in the way.
double RegionPart::halfHeightAt(qint64 top, double half, int direction) const
{
    double before = aboveLine(top);
    for (qint64 i = top + direction; i >= m_first && i < m_end; i += direction) {
        const double here = aboveLine(i);
        if (std::isnan(here))
            break;
        if (here <= half) {
            const double from = m_probe.xOf(i - direction);
            return from + (m_probe.xOf(i) - from) * ((before - half) / (before - here));
        }
        before = here;
    }
    return std::numeric_limits<double>::quiet_NaN();
}

double RegionPart::peakWidth() const
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    if (m_end - m_first < 3 || m_end - m_first > mostOneByOne)
        return none;
    qint64 top = m_first;
    double height = 0.0;
    for (qint64 i = m_first; i < m_end; ++i) {
        const double here = aboveLine(i);
        if (here > height) {
            height = here;
            top = i;
        }
    }
    const double half = height / 2.0;
    return height > 0.0 ? halfHeightAt(top, half, 1) - halfHeightAt(top, half, -1) : none;
}
