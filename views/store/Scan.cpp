// SPDX-License-Identifier: MIT
#include "views/store/Scan.h"

#include "views/store/EveryType.h"

#include <algorithm>

#ifdef __SSE2__
#  include <emmintrin.h>
#endif

// The compiler makes no vector code of running extremes and sums of floating-point numbers, because their order matters
// for NaN and for rounding. Here each lane is a running value of its own, and two of each hide the latency of one.

namespace {

/// `count` values side by side. (GCC knows such a type of a template's argument only inside of a class.)
template <class T, int count>
struct SVector
{
    typedef T Type __attribute__((vector_size(count * sizeof(T))));
};

/// What fits into a register that every 64-bit processor has.
template <class T>
constexpr int laneCount = int(16 / sizeof(T));
template <class T>
using Lanes = typename SVector<T, laneCount<T>>::Type;

template <class T>
Lanes<T> loadLanes(const char *values, qint64 index)
{
    Lanes<T> loaded;
    std::memcpy(&loaded, values + index * qint64(sizeof(T)), sizeof loaded);
    return loaded;
}

template <class T>
Lanes<T> allLanes(T value)
{
    return Lanes<T>{} + value;
}

template <class T>
Lanes<T> lower(Lanes<T> a, Lanes<T> b)
{
    return a < b ? a : b;
}

template <class T>
Lanes<T> higher(Lanes<T> a, Lanes<T> b)
{
    return a > b ? a : b;
}

/// Extremes, lane by lane. `withGaps` leaves gaps out, otherwise it only notices that there are some.
template <class T, bool withGaps>
struct SLaneExtremes
{
    Lanes<T> lowest = allLanes(std::numeric_limits<T>::max());
    Lanes<T> highest = allLanes(std::numeric_limits<T>::lowest());
    Lanes<T> strange{}; ///< 0 as long as there was no gap, else NaN

    void take(Lanes<T> values)
    {
        Lanes<T> low = values;
        Lanes<T> high = values;
        if constexpr (std::is_floating_point_v<T>) {
            const Lanes<T> difference = values - values;
            strange += difference;
            if constexpr (withGaps) {
                low = difference == Lanes<T>{} ? values : lowest;
                high = difference == Lanes<T>{} ? values : highest;
            }
        }
        lowest = lower<T>(low, lowest); // a NaN in `low` stays out
        highest = higher<T>(high, highest);
    }
    void take(const SLaneExtremes &other)
    {
        lowest = lower<T>(other.lowest, lowest);
        highest = higher<T>(other.highest, highest);
        strange += other.strange;
    }
    SCell<T> joined() const
    {
        SCell<T> cell;
        for (int lane = 0; lane < laneCount<T>; ++lane)
            cell.include(SCell<T>{lowest[lane], highest[lane]});
        return cell;
    }
    bool isStrange() const
    {
        bool found = false;
        for (int lane = 0; std::is_floating_point_v<T> && lane < laneCount<T>; ++lane)
            found |= strange[lane] != T(0);
        return found;
    }
};

template <class T, bool withGaps>
SCell<T> laneCell(const char *values, qint64 count, bool &hasGap)
{
    SLaneExtremes<T, withGaps> even;
    SLaneExtremes<T, withGaps> odd;
    qint64 i = 0;
    for (; i + 2 * laneCount<T> <= count; i += 2 * laneCount<T>) {
        even.take(loadLanes<T>(values, i));
        odd.take(loadLanes<T>(values, i + laneCount<T>));
    }
    even.take(odd);
    if constexpr (std::is_floating_point_v<T> && !withGaps) {
        if (even.isStrange())
            return laneCell<T, true>(values, count, hasGap);
    }
    hasGap |= even.isStrange();
    SCell<T> cell = even.joined();
    for (; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        if (isGap(value))
            hasGap = true;
        else
            cell.include(value);
    }
    return cell;
}

/// The sums of distances from a value, and of their squares.
struct SSums
{
    qint64 count = 0;
    double sum = 0.0;
    double squares = 0.0;
};

/// Two values as doubles.
template <class T>
Lanes<double> loadDoubles(const char *values, qint64 index)
{
    const char *const first = values + index * qint64(sizeof(T));
#ifdef __SSE2__ // GCC converts halves of a register one by one
    if constexpr (std::is_same_v<T, float>)
        return _mm_cvtps_pd(_mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i *>(first))));
    if constexpr (std::is_same_v<T, qint32>)
        return _mm_cvtepi32_pd(_mm_loadl_epi64(reinterpret_cast<const __m128i *>(first)));
#endif
    typename SVector<T, 2>::Type loaded;
    std::memcpy(&loaded, first, sizeof loaded);
    return __builtin_convertvector(loaded, Lanes<double>);
}

/// Sums of distances, lane by lane.
template <bool withGaps>
struct SLaneSums
{
    Lanes<double> sum{};
    Lanes<double> squares{};
    Lanes<qint64> gaps{}; ///< minus their number

    void take(Lanes<double> values, Lanes<double> base)
    {
        if constexpr (withGaps) {
            const Lanes<qint64> isGap = values - values != Lanes<double>{};
            gaps += isGap;
            values = isGap ? base : values;
        }
        const Lanes<double> distance = values - base;
        sum += distance;
        squares += distance * distance;
    }
    void join(SSums &sums) const
    {
        sums.sum += sum[0] + sum[1];
        sums.squares += squares[0] + squares[1];
        sums.count += gaps[0] + gaps[1];
    }
};

template <class T, bool withGaps>
SSums sumsFrom(double base, const char *values, qint64 count)
{
    SLaneSums<withGaps> sums[4];
    qint64 i = 0;
    for (; i + 8 <= count; i += 8) {
        for (qint64 k = 0; k < 4; ++k)
            sums[k].take(loadDoubles<T>(values, i + 2 * k), allLanes(base));
    }
    SSums joined;
    joined.count = count;
    for (const SLaneSums<withGaps> &lanes : sums)
        lanes.join(joined);
    for (; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        const double distance = isGap(value) ? 0.0 : double(value) - base;
        joined.sum += distance;
        joined.squares += distance * distance;
        joined.count -= isGap(value);
    }
    return joined;
}

/// Of values whose distances from each other, or their squares, lie beyond double.
template <class T>
void measureHuge(SStatistics &statistics, const char *values, qint64 count)
{
    long double sum = 0.0L;
    for (qint64 i = 0; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        sum += isGap(value) ? 0.0L : static_cast<long double>(value);
    }
    const long double mean = sum / static_cast<long double>(statistics.count);
    long double m2 = 0.0L;
    for (qint64 i = 0; i < count; ++i) {
        const long double distance = static_cast<long double>(loadValue<T>(values, i)) - mean;
        m2 += std::isfinite(distance) ? distance * distance : 0.0L;
    }
    statistics.sum = double(sum);
    statistics.mean = double(mean);
    statistics.m2 = double(m2);
}

/// A value that is likely to lie among the others: the middle one of a few.
template <class T>
T typicalValue(const char *values, qint64 count, T otherwise)
{
    constexpr int most = 15;
    T samples[most];
    int size = 0;
    for (int k = 0; k < most; ++k) {
        const T value = loadValue<T>(values, count * (2 * k + 1) / (2 * most));
        if (!isGap(value))
            samples[size++] = value;
    }
    if (size == 0)
        return otherwise;
    std::nth_element(samples, samples + size / 2, samples + size);
    return samples[size / 2];
}

/// Distances are measured from one of the values: however far that may be from the others, it is one of them, so that
/// the difference of the two sums is never very much smaller than they are. And sums of whole numbers are exact.
template <class T>
void measure(SStatistics &statistics, const char *values, qint64 count, T lowest, bool hasGap)
{
    const double base = double(typicalValue(values, count, lowest));
    const SSums sums = hasGap ? sumsFrom<T, true>(base, values, count) : sumsFrom<T, false>(base, values, count);
    statistics.count = sums.count;
    const double number = double(sums.count);
    statistics.sum = base * number + sums.sum;
    statistics.mean = statistics.sum / number;
    statistics.m2 = std::max(0.0, sums.squares - sums.sum * (sums.sum / number));
    if (!std::isfinite(sums.squares) || !std::isfinite(statistics.sum))
        measureHuge<T>(statistics, values, count);
}

/// Of 8 or 16 bits: everything is exact.
template <class T>
void measureSmall(SStatistics &statistics, const char *values, qint64 count)
{
    using Whole = std::conditional_t<std::is_signed_v<T>, qint32, quint32>;
    Whole sum = 0; // of 2^12 values of 2^16 at most
    quint64 squares = 0;
    for (qint64 i = 0; i < count; ++i) {
        const auto value = Whole(loadValue<T>(values, i));
        sum += value;
        squares += quint32(value * value);
    }
    statistics.count = count;
    statistics.sum = double(sum);
    statistics.mean = statistics.sum / double(count);
    const quint64 square = quint64(qint64(sum) * qint64(sum)); // less than 2^57, as is what it is taken from
    statistics.m2 = double(quint64(count) * squares - square) / double(count);
}

template <class T>
bool isPositive(T value)
{
    return value > T(0) && value <= std::numeric_limits<T>::max();
}

template <class T>
bool holds(const char *values, qint64 count, T wanted)
{
    for (qint64 i = 0; i < count; ++i) {
        if (loadValue<T>(values, i) == wanted)
            return true;
    }
    return false;
}

template <class T>
qint64 countPositive(const char *values, qint64 count)
{
    quint32 positive = 0;
    qint64 i = 0;
    if constexpr (std::is_floating_point_v<T>) {
        decltype(Lanes<T>{} < Lanes<T>{}) found{}; // minus the number of each lane
        for (; i + laneCount<T> <= count; i += laneCount<T>) {
            const Lanes<T> loaded = loadLanes<T>(values, i);
            found += (loaded > Lanes<T>{}) & (loaded <= allLanes(std::numeric_limits<T>::max()));
        }
        for (int lane = 0; lane < laneCount<T>; ++lane)
            positive += quint32(-found[lane]);
    }
    for (; i < count; ++i)
        positive += isPositive(loadValue<T>(values, i)) ? 1u : 0u;
    return positive;
}

} // namespace

template <class T>
SCell<T> cellOf(const char *values, qint64 count, bool &hasGap)
{
    return laneCell<T, false>(values, count, hasGap);
}

template <class T>
T smallestPositive(const char *values, qint64 count)
{
    constexpr T largest = std::numeric_limits<T>::max();
    constexpr int groups = 4;
    Lanes<T> lanes[groups];
    for (Lanes<T> &group : lanes)
        group = allLanes(largest);
    qint64 i = 0;
    for (; i + groups * laneCount<T> <= count; i += groups * laneCount<T>) {
        for (int group = 0; group < groups; ++group) {
            const Lanes<T> loaded = loadLanes<T>(values, i + group * laneCount<T>);
            lanes[group] = lower<T>(loaded > Lanes<T>{} ? loaded : lanes[group], lanes[group]);
        }
    }
    const Lanes<T> joined = lower<T>(lower<T>(lanes[0], lanes[1]), lower<T>(lanes[2], lanes[3]));
    T smallest = largest;
    for (int lane = 0; lane < laneCount<T>; ++lane)
        smallest = std::min(smallest, joined[lane]);
    for (; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        smallest = value > T(0) ? std::min(smallest, value) : smallest;
    }
    return smallest < largest || holds(values, count, largest) ? smallest : T(0);
}

template <class T>
SStatistics statisticsOf(const char *values, qint64 count, const SCell<T> &cell, bool hasGap)
{
    SStatistics statistics;
    if (cell.isEmpty())
        return statistics;
    if constexpr (sizeof(T) < 4)
        measureSmall<T>(statistics, values, count);
    else
        measure<T>(statistics, values, count, cell.lowest, hasGap);
    if (cell.lowest > T(0))
        statistics.positiveCount = statistics.count;
    else if (cell.highest > T(0))
        statistics.positiveCount = countPositive<T>(values, count);
    return statistics;
}

#define VORLIX_SCAN(T) \
  template SCell<T> cellOf<T>(const char *, qint64, bool &); \
  template T smallestPositive<T>(const char *, qint64); \
  template SStatistics statisticsOf<T>(const char *, qint64, const SCell<T> &, bool);
VORLIX_FOR_EVERY_TYPE(VORLIX_SCAN)
#undef VORLIX_SCAN
