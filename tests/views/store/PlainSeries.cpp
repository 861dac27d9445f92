// SPDX-License-Identifier: MIT
#include "tests/views/store/PlainSeries.h"

#include <algorithm>

namespace {

/// What a scan finds in a range.
struct SFound
{
    qint64 count = 0;
    qint64 positives = 0;
    double lowest = 0.0;
    double highest = 0.0;
    qint64 lowestAt = -1;
    qint64 highestAt = -1;
    double positive = std::nan("");
    qint64 firstGap = -1;
    qint64 firstValue = -1;
    long double sum = 0.0L;
    long double m2 = 0.0L;

    void take(qint64 index, double value);
};

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
    to = std::min(to, snapshot.end());
    from = std::min(std::max(from, snapshot.begin()), to);
    SFound found;
    long double size = 0.0L;
    for (qint64 i = from; i < to; ++i) {
        found.take(i, at(i));
        size = std::isfinite(at(i)) ? std::max(size, std::abs(static_cast<long double>(at(i)))) : size;
    }
    const long double mean = found.count > 0 ? found.sum / found.count : 0.0L;
    for (qint64 i = from; i < to; ++i) {
        if (std::isfinite(at(i)))
            found.m2 += (at(i) - mean) * (at(i) - mean);
    }
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
    CHECK(near(statistics.sum, found.sum, size * (found.count + 1)));
    CHECK(near(statistics.mean, mean, size));
    // The mean can't be known better than the last bit of a value; that limits the rest.
    CHECK(near(statistics.m2, found.m2, found.m2 + found.count * size * size * 1e-14L));
    return {};
}
