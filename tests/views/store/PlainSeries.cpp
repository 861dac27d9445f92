// SPDX-License-Identifier: MIT
#include "tests/views/store/PlainSeries.h"

#include <algorithm>

void SFound::take(qint64 index, double value)
{
    if (!std::isfinite(value)) {
        firstGap = firstGap < 0 ? index : firstGap;
        return;
    }
    firstValue = firstValue < 0 ? index : firstValue;
    if (count == 0 || value < lowest) {
        lowest = value;
        lowestAt = index;
    }
    if (count == 0 || value > highest) {
        highest = value;
        highestAt = index;
    }
    if (value > 0.0 && !(positive <= value))
        positive = value;
    ++count;
    positives += value > 0.0;
    sum += static_cast<long double>(value);
}

namespace {

bool near(long double actual, long double expected, long double scale)
{
    return std::abs(actual - expected) <= 1e-12L * scale;
}

bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

#define CHECK(condition) \
  if (!(condition)) \
  return QByteArray("[") + QByteArray::number(from) + ", " + QByteArray::number(to) + "): " + #condition

QByteArray PlainSeries::complaint(const SeriesSnapshot &snapshot, qint64 from, qint64 to) const
{
    const QByteArray extremes = extremesComplaint(snapshot, from, to);
    if (!extremes.isEmpty())
        return extremes;
    to = std::min(to, snapshot.end());
    from = std::min(std::max(from, snapshot.begin()), to);
    const SFound found = scan(from, to);
    const long double mean = found.count > 0 ? found.sum / found.count : 0.0L;
    long double m2 = 0.0L;
    for (qint64 i = from; i < to; ++i) {
        if (std::isfinite(at(i)))
            m2 += (at(i) - mean) * (at(i) - mean);
    }
    const long double size = std::max(std::abs(found.lowest), std::abs(found.highest));
    const SStatistics statistics = snapshot.statisticsIn(from, to);
    CHECK(near(statistics.sum, found.sum, size * (found.count + 1)));
    CHECK(near(statistics.mean, mean, size));
    // The mean can't be known better than the last bit of a value; that limits the rest.
    CHECK(near(statistics.m2, m2, m2 + found.count * size * size * 1e-14L));
    return {};
}

QByteArray PlainSeries::extremesComplaint(const SeriesSnapshot &snapshot, qint64 from, qint64 to) const
{
    to = std::min(to, snapshot.end());
    from = std::min(std::max(from, snapshot.begin()), to);
    const SFound found = scan(from, to);
    const SExtremes extremes = snapshot.extremesIn(from, to);
    CHECK(!extremes.isSampled);
    CHECK(extremes.isEmpty() == (found.count == 0));
    CHECK(extremes.isEmpty() || extremes.lowest == found.lowest);
    CHECK(extremes.isEmpty() || extremes.highest == found.highest);
    CHECK(extremes.hasGap == (found.firstGap >= 0));
    const SExtremePlaces places = snapshot.extremePlacesIn(from, to);
    CHECK(places.lowestAt == found.lowestAt);
    CHECK(places.highestAt == found.highestAt);
    CHECK(same(snapshot.smallestPositiveIn(from, to), found.positive));
    CHECK(snapshot.nextGap(from, to) == (found.firstGap < 0 ? to : found.firstGap));
    CHECK(snapshot.nextValue(from, to) == (found.firstValue < 0 ? to : found.firstValue));
    const SStatistics statistics = snapshot.statisticsIn(from, to);
    CHECK(!statistics.isPartial);
    CHECK(statistics.count == found.count);
    CHECK(statistics.positiveCount == found.positives);
    return {};
}

SFound PlainSeries::scan(qint64 from, qint64 to) const
{
    SFound found;
    for (qint64 i = from; i < to; ++i)
        found.take(i, at(i));
    return found;
}

PlainSeries singles(const PlainSeries &series)
{
    PlainSeries rounded;
    for (qint64 i = 0; i < series.size(); ++i)
        rounded.append(double(float(series.at(i))));
    return rounded;
}
