// SPDX-License-Identifier: MIT
#include "stress/StreamedStores.h"

#include "views/store/Levels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int waveLength = 101;
constexpr int wideOffset = -50;
constexpr qint64 fillStep = 2 * chunkSize; ///< even in pages of 2 MiB that hold two chunks

/// All whole numbers from 1 to `waveLength`, mixed.
int wave(qint64 index)
{
    return 1 + int(index * 37 % waveLength);
}

bool isGap(qint64 index)
{
    return index % StreamedStores::gapDistance < 2;
}

double gapKind(qint64 index)
{
    return index % 2 ? notANumber : infinity;
}

/// What is to be found in a range of a store whose values are those of the wave plus an offset.
struct SExpected
{
    qint64 count = 0;
    qint64 sum = 0;
    qint64 squares = 0;
    int lowest = std::numeric_limits<int>::max();
    int highest = std::numeric_limits<int>::lowest();
    qint64 lowestAt = -1;
    qint64 highestAt = -1;
    qint64 gapAt = -1;

    void include(qint64 index, int offset)
    {
        if (isGap(index)) {
            gapAt = gapAt < 0 ? index : gapAt;
            return;
        }
        const int value = wave(index) + offset;
        if (value < lowest)
            lowestAt = index;
        if (value > highest)
            highestAt = index;
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
        ++count;
        sum += value;
        squares += value * value;
    }
};

SExpected expectedIn(qint64 from, qint64 to, int offset)
{
    SExpected expected;
    for (qint64 i = from; i < to; ++i)
        expected.include(i, offset);
    return expected;
}

/// The sum of (value - mean)².
double spreadOf(const SExpected &range)
{
    const qint64 spread = range.count * range.squares - range.sum * range.sum;
    return range.count > 0 ? double(spread) / double(range.count) : 0.0;
}

/// Notes what isn't as expected.
class Comparison
{
public:
    Comparison(const char *store, qint64 from, qint64 to)
        : m_where(QStringLiteral("%1 [%2, %3)").arg(QLatin1String(store)).arg(from).arg(to))
    {
    }
    void same(const char *what, double found, double expected, double tolerance = 0.0)
    {
        const bool isSame = std::isnan(expected) ? std::isnan(found) : std::abs(found - expected) <= tolerance;
        if (!isSame)
            m_faults << QStringLiteral("%1: %2 is %3 instead of %4")
                            .arg(m_where, QLatin1String(what))
                            .arg(found, 0, 'g', 17)
                            .arg(expected, 0, 'g', 17);
    }
    QStringList faults() const { return m_faults; }

private:
    QString m_where;
    QStringList m_faults;
};

struct SRange
{
    qint64 from;
    qint64 to;
};

/// From a few values to all of them.
SRange anyRange(Chance &chance, const SeriesSnapshot &values)
{
    const double most = std::log(double(values.count()));
    const qint64 length = std::min(qint64(std::exp(chance.between(1.0, most))), values.count());
    const qint64 from = values.begin() + qint64(chance.between(0.0, double(values.count() - length)));
    return {from, from + length};
}

QStringList kept(const char *store, const SeriesSnapshot &values)
{
    Comparison kept(store, values.begin(), values.end());
    kept.same("values beyond a chunk", double(values.begin() % chunkSize), 0.0);
    const qint64 most = StreamedStores::maximumCount + chunkSize;
    if (values.count() < StreamedStores::maximumCount || values.count() > most)
        kept.same("the count", double(values.count()), double(StreamedStores::maximumCount));
    return kept.faults();
}

QStringList waveFaults(const char *store, const SeriesSnapshot &values, int offset, Chance &chance)
{
    const SRange range = anyRange(chance, values);
    const SExpected expected = expectedIn(range.from, range.to, offset);
    Comparison found(store, range.from, range.to);
    if (expected.count > 0) {
        const SExtremes extremes = values.extremesIn(range.from, range.to);
        found.same("the lowest", extremes.lowest, expected.lowest);
        found.same("the highest", extremes.highest, expected.highest);
        found.same("a gap", extremes.hasGap, expected.gapAt >= 0);
    }
    const SExtremePlaces places = values.extremePlacesIn(range.from, range.to);
    found.same("the lowest's place", double(places.lowestAt), double(expected.lowestAt));
    found.same("the highest's place", double(places.highestAt), double(expected.highestAt));
    const SStatistics statistics = values.statisticsIn(range.from, range.to);
    found.same("the number", double(statistics.count), double(expected.count));
    found.same("the sum", statistics.sum, double(expected.sum), 1e-10 * double(expected.count));
    const double spread = spreadOf(expected);
    found.same("the spread", statistics.m2, spread, 1e-9 * spread);
    const qint64 gapAt = expected.gapAt < 0 ? range.to : expected.gapAt;
    found.same("the gap", double(values.nextGap(range.from, range.to)), double(gapAt));
    double portion[1500];
    values.copyValues(range.from, range.from + qint64(std::size(portion)), portion);
    for (qint64 i = range.from; i < std::min(values.end(), range.from + qint64(std::size(portion))); ++i)
        found.same("a value", portion[i - range.from], isGap(i) ? notANumber : wave(i) + offset);
    return kept(store, values) + found.faults();
}

QStringList placeFaults(const SeriesSnapshot &places, Chance &chance)
{
    const SRange range = anyRange(chance, places);
    Comparison found("places", range.from, range.to);
    const SExtremes extremes = places.extremesIn(range.from, range.to);
    found.same("the lowest", extremes.lowest, StreamedStores::placeAt(range.from));
    found.same("the highest", extremes.highest, StreamedStores::placeAt(range.to - 1));
    found.same("a gap", extremes.hasGap, false);
    found.same("the place", double(places.lowerBound(StreamedStores::placeAt(range.from))), double(range.from));
    return kept("places", places) + found.faults();
}

} // namespace

StreamedStores::StreamedStores()
{
    narrow.setValueType(SeriesStore::Float32);
    scattered.setValueType(SeriesStore::Float32);
    for (SeriesStore *store : {&narrow, &wide, &scattered, &places})
        store->setMaximumCount(qreal(maximumCount));
    fillTo(roundUp(maximumCount, chunkBits) + 20 * chunkSize); // the first chunks of a series are allocated another way
    fillUp();
}

double StreamedStores::narrowAt(qint64 index)
{
    return isGap(index) ? notANumber : double(wave(index));
}

double StreamedStores::placeAt(qint64 index)
{
    return (double(index) + wave(index) / double(2 * waveLength)) / 1000.0;
}

void StreamedStores::fillUp()
{
    const qint64 end = narrow.snapshot().end();
    fillTo((end + fillStep - 1) / fillStep * fillStep);
}

QStringList StreamedStores::fillFaults() const
{
    const qint64 full = roundUp(maximumCount, chunkBits);
    Comparison found("at rest", 0, full);
    for (const SeriesStore *store : {&narrow, &wide, &scattered, &places}) {
        found.same("what is kept", double(store->snapshot().count()), double(full));
        found.same("the phase", double(store->snapshot().end() % fillStep), 0.0);
    }
    return found.faults();
}

void StreamedStores::fillTo(qint64 end)
{
    constexpr qint64 portion = 1 << 16;
    std::vector<float> floats;
    std::vector<double> doubles;
    std::vector<double> placed;
    for (qint64 first = narrow.snapshot().end(); first < end; first += portion) {
        const qint64 count = std::min(portion, end - first);
        floats.clear();
        doubles.clear();
        placed.clear();
        for (qint64 i = first; i < first + count; ++i) {
            floats.push_back(float(isGap(i) ? gapKind(i) : wave(i)));
            doubles.push_back(isGap(i) ? gapKind(i) : wave(i) + wideOffset);
            placed.push_back(placeAt(i));
        }
        narrow.append(floats.data(), count);
        wide.append(doubles.data(), count);
        scattered.append(floats.data(), count);
        places.append(placed.data(), count);
    }
}

QStringList StreamedStores::faults(Chance &chance) const
{
    return waveFaults("narrow", narrow.snapshot(), 0, chance) + waveFaults("wide", wide.snapshot(), wideOffset, chance)
        + waveFaults("scattered", scattered.snapshot(), 0, chance) + placeFaults(places.snapshot(), chance);
}

Recorder::Recorder(StreamedStores &stores)
    : m_writers{stores.narrow.writer(), stores.wide.writer(), stores.scattered.writer(), stores.places.writer()},
      m_first(stores.narrow.snapshot().end()),
      m_thread([this] { record(); })
{
}

Recorder::~Recorder()
{
    stop();
}

Recorder::SRecord Recorder::stop()
{
    m_isDone = true;
    if (m_thread.joinable())
        m_thread.join();
    return m_record;
}

void Recorder::record()
{
    constexpr std::chrono::milliseconds burst(150); // so that windows draw seven frames a second and not a thousand
    const Clock::time_point begun = Clock::now();
    const auto since = [](Clock::time_point before) { return std::chrono::duration<double>(Clock::now() - before); };
    for (Clock::time_point next = begun + burst; !m_isDone; next += burst) {
        std::this_thread::sleep_until(next);
        m_record.longestDelay = std::max(m_record.longestDelay, since(next).count());
        m_record.seconds = since(begun).count();
        const qint64 due =
            std::chrono::duration_cast<std::chrono::milliseconds>(next - begun).count() * perSecond / 1000;
        for (; m_record.appends < due; ++m_record.appends)
            append(m_first + m_record.appends);
    }
}

void Recorder::append(qint64 index)
{
    const bool gap = isGap(index);
    const double values[] = {gap ? gapKind(index) : wave(index), gap ? gapKind(index) : wave(index) + wideOffset,
                             gap ? gapKind(index) : wave(index), StreamedStores::placeAt(index)};
    for (size_t i = 0; i < m_writers.size(); ++i)
        m_record.refused += m_writers[i].append(values[i]) ? 0 : 1;
}
