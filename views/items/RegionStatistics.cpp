// SPDX-License-Identifier: MIT
#include "views/items/RegionStatistics.h"

namespace {

constexpr qint64 mostOneByOne = 65536;
constexpr qint64 groups = 16384;

/// The mean of x less `from`, weighted by the values: the left end is taken off before anything is multiplied.
double centroidFrom(const SeriesProbe &probe, qint64 first, qint64 end, double from)
{
    const SeriesSnapshot &values = probe.values();
    const qint64 group = end - first <= mostOneByOne ? 1 : (end - first + groups - 1) / groups;
    double weight = 0.0;
    double moment = 0.0;
    for (qint64 i = first; i < end; i += group) {
        const qint64 next = std::min(i + group, end);
        const double sum = group == 1 ? values.valueAt(i) : values.statisticsIn(i, next).sum;
        if (!std::isfinite(sum))
            continue;
        weight += sum;
        moment += sum * ((probe.xOf(i) - from + (probe.xOf(next - 1) - from)) * 0.5);
    }
    return weight > 0.0 ? from + moment / weight : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

SRegionStatistics regionStatistics(const SeriesProbe &probe, double from, double to)
{
    SRegionStatistics told;
    if (probe.isEmpty() || !(from < to))
        return told;
    const qint64 first = probe.firstFrom(from);
    const qint64 end = probe.firstFrom(to);
    const SStatistics statistics = probe.values().statisticsIn(first, end);
    if (statistics.count == 0)
        return told;
    const SExtremes extremes = probe.values().extremesIn(first, end);
    const SExtremePlaces places = probe.values().extremePlacesIn(first, end);
    told.count = double(statistics.count);
    told.sum = statistics.sum;
    told.mean = statistics.mean;
    told.deviation = statistics.deviation();
    told.minimum = extremes.lowest;
    told.maximum = extremes.highest;
    told.minimumAt = probe.xOf(places.lowestAt);
    told.maximumAt = probe.xOf(places.highestAt);
    told.centroid = centroidFrom(probe, first, end, from);
    return told;
}
