// SPDX-License-Identifier: MIT
#include "views/store/Scan.h"

#include "views/store/EveryType.h"

#include <algorithm>

namespace {

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
    const SSums sums = withLoops<T>([&](auto loops) { return loops.sumsFrom(base, values, count, hasGap); });
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
    const SWholeSums sums = withLoops<T>([&](auto loops) { return loops.wholeSums(values, count); });
    statistics.count = count;
    statistics.sum = double(sums.sum);
    statistics.mean = statistics.sum / double(count);
    const quint64 square = quint64(sums.sum * sums.sum); // less than 2^57, as is what it is taken from
    statistics.m2 = double(quint64(count) * sums.squares - square) / double(count);
}

} // namespace

template <class T>
SStatistics measuredOf(const char *values, qint64 count, const SCell<T> &cell, bool hasGap)
{
    SStatistics statistics;
    if (cell.isEmpty())
        return statistics;
    if constexpr (sizeof(T) < 4)
        measureSmall<T>(statistics, values, count);
    else
        measure<T>(statistics, values, count, cell.lowest, hasGap);
    return statistics;
}

#define VORLIX_SCAN(T) template SStatistics measuredOf<T>(const char *, qint64, const SCell<T> &, bool);
VORLIX_FOR_EVERY_TYPE(VORLIX_SCAN)
#undef VORLIX_SCAN
