// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/EveryType.h"
#include "views/store/ScanLoops.h"

#if VORLIX_SCAN_BYTES == 32
#  include <immintrin.h>
#elif defined(__SSE2__)
#  include <emmintrin.h>
#endif

// What ScanLoops do, for a file that says with which registers: VORLIX_SCAN_BYTES. All functions are VORLIX_SCAN_CODE,
// and those within a loop VORLIX_SCAN_INLINE.
//
// The compiler makes no vector code of running extremes and sums of floating-point numbers, because their order matters
// for NaN and for rounding. Here each lane is a running value of its own. There are as many of them however many fit
// into a register, and they are joined in the same order. So is the result the same.

namespace {

/// `count` values side by side. (GCC knows such a type of a template's argument only inside of a class.)
template <class T, int count>
struct SVector
{
    typedef T Type __attribute__((vector_size(count * sizeof(T))));
};

template <class T>
constexpr int laneCount = VORLIX_SCAN_BYTES / int(sizeof(T));
template <class T>
using Lanes = typename SVector<T, laneCount<T>>::Type;
/// Of a register of 16 bytes.
template <class T>
constexpr int fewCount = 16 / int(sizeof(T));
template <class T>
using FewLanes = typename SVector<T, fewCount<T>>::Type;

/// How many registers hold so many bytes.
constexpr int registersFor(int bytes)
{
    return bytes / VORLIX_SCAN_BYTES;
}

template <class T>
VORLIX_SCAN_INLINE Lanes<T> loadLanes(const char *values, qint64 index)
{
    Lanes<T> loaded;
    std::memcpy(&loaded, values + index * qint64(sizeof(T)), sizeof loaded);
    return loaded;
}

template <class T>
VORLIX_SCAN_INLINE Lanes<T> allLanes(T value)
{
    return Lanes<T>{} + value;
}

template <class Values>
VORLIX_SCAN_INLINE Values lower(Values a, Values b)
{
    return a < b ? a : b;
}

template <class Values>
VORLIX_SCAN_INLINE Values higher(Values a, Values b)
{
    return a > b ? a : b;
}

/// Each lane becomes the one that was `shift` lanes behind it; the last ones don't matter.
template <class T, int shift, int... lane>
VORLIX_SCAN_INLINE FewLanes<T> shifted(FewLanes<T> values, std::integer_sequence<int, lane...>)
{
#ifdef __clang__
    return __builtin_shufflevector(values, values, ((lane + shift) % fewCount<T>)...);
#else
    using Places = decltype(values < values);
    return __builtin_shuffle(values, Places{((lane + shift) % fewCount<T>)...});
#endif
}

/// The lowest and the highest of some lanes. Of zeros, which may differ in their signs, it's the first one.
template <class T, int shift = 1>
VORLIX_SCAN_INLINE SCell<T> joined(FewLanes<T> lowest, FewLanes<T> highest)
{
    if constexpr (shift < fewCount<T>) {
        constexpr std::make_integer_sequence<int, fewCount<T>> all;
        return joined<T, 2 * shift>(lower(shifted<T, shift>(lowest, all), lowest),
                                    higher(shifted<T, shift>(highest, all), highest));
    }
    return {lowest[0], highest[0]};
}

/// Extremes, lane by lane.
template <class T>
struct SLaneExtremes
{
    static constexpr int registers = registersFor(2 * 16);
    static constexpr int values = registers * laneCount<T>;

    Lanes<T> lowest[registers];
    Lanes<T> highest[registers];
    Lanes<T> strange[registers]; ///< finite as long as there was no gap
};

/// `withGaps` leaves gaps out, otherwise it only notices that there may be some.
template <bool withGaps, class T>
VORLIX_SCAN_INLINE void include(SLaneExtremes<T> &extremes, int number, Lanes<T> values)
{
    Lanes<T> low = values;
    Lanes<T> high = values;
    if constexpr (withGaps) {
        const Lanes<T> difference = values - values;
        extremes.strange[number] += difference;
        low = difference == Lanes<T>{} ? values : extremes.lowest[number];
        high = difference == Lanes<T>{} ? values : extremes.highest[number];
    } else if constexpr (std::is_floating_point_v<T>) {
        extremes.strange[number] += values;
    }
    extremes.lowest[number] = lower(low, extremes.lowest[number]); // a NaN in `low` stays out
    extremes.highest[number] = higher(high, extremes.highest[number]);
}

template <class T>
VORLIX_SCAN_INLINE SCell<T> joined(const SLaneExtremes<T> &extremes)
{
    FewLanes<T> lowest[2];
    FewLanes<T> highest[2];
    std::memcpy(lowest, extremes.lowest, sizeof lowest);
    std::memcpy(highest, extremes.highest, sizeof highest);
    return joined<T>(lower(lowest[1], lowest[0]), higher(highest[1], highest[0]));
}

template <class T>
VORLIX_SCAN_INLINE bool isStrange(const SLaneExtremes<T> &extremes)
{
    Lanes<qint64> found{};
    for (const Lanes<T> &strange : extremes.strange)
        found |= Lanes<qint64>(strange - strange != Lanes<T>{});
    qint64 any = 0;
    for (int lane = 0; lane < laneCount<qint64>; ++lane)
        any |= found[lane];
    return any != 0;
}

template <class T>
VORLIX_SCAN_CODE SCell<T> gappyRounds(const char *values, qint64 count, bool &hasGap);

/// Of values that fill the registers a number of times.
template <bool withGaps, class T>
VORLIX_SCAN_INLINE SCell<T> roundsCell(const char *values, qint64 count, bool &hasGap)
{
    SLaneExtremes<T> running;
    for (int k = 0; k < running.registers; ++k) {
        running.lowest[k] = allLanes(std::numeric_limits<T>::max());
        running.highest[k] = allLanes(std::numeric_limits<T>::lowest());
        running.strange[k] = Lanes<T>{};
    }
    for (qint64 i = 0; i < count; i += running.values) {
        for (int k = 0; k < running.registers; ++k)
            include<withGaps>(running, k, loadLanes<T>(values, i + k * laneCount<T>));
    }
    if constexpr (std::is_floating_point_v<T>) {
        const bool isFound = isStrange(running);
        if (!withGaps && isFound)
            return gappyRounds<T>(values, count, hasGap);
        hasGap |= isFound;
    }
    return joined(running);
}

/// The same again where something strange was found. It may be but a sum that is too large.
template <class T>
VORLIX_SCAN_CODE __attribute__((noinline)) SCell<T> gappyRounds(const char *values, qint64 count, bool &hasGap)
{
    return roundsCell<std::is_floating_point_v<T>, T>(values, count, hasGap);
}

/// As many values as there are doubles in a register.
template <class T>
VORLIX_SCAN_INLINE Lanes<double> loadDoubles(const char *values, qint64 index)
{
    const char *const first = values + index * qint64(sizeof(T));
#if VORLIX_SCAN_BYTES == 32 // GCC converts halves of a register one by one
    if constexpr (std::is_same_v<T, float>)
        return _mm256_cvtps_pd(_mm_loadu_ps(reinterpret_cast<const float *>(first)));
    if constexpr (std::is_same_v<T, qint32>)
        return _mm256_cvtepi32_pd(_mm_loadu_si128(reinterpret_cast<const __m128i *>(first)));
#elif defined(__SSE2__)
    if constexpr (std::is_same_v<T, float>)
        return _mm_cvtps_pd(_mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i *>(first))));
    if constexpr (std::is_same_v<T, qint32>)
        return _mm_cvtepi32_pd(_mm_loadl_epi64(reinterpret_cast<const __m128i *>(first)));
#endif
    typename SVector<T, laneCount<double>>::Type loaded;
    std::memcpy(&loaded, first, sizeof loaded);
    return __builtin_convertvector(loaded, Lanes<double>);
}

/// Sums of distances, lane by lane.
struct SLaneSums
{
    static constexpr int values = 8;
    static constexpr int registers = registersFor(values * int(sizeof(double)));

    Lanes<double> sum[registers];
    Lanes<double> squares[registers];
    Lanes<qint64> gaps[registers]; ///< minus their number
};

template <bool withGaps>
VORLIX_SCAN_INLINE void include(SLaneSums &sums, int number, Lanes<double> values, Lanes<double> base)
{
    if constexpr (withGaps) {
        const Lanes<qint64> isGap = values - values != Lanes<double>{};
        sums.gaps[number] += isGap;
        values = isGap ? base : values;
    }
    const Lanes<double> distance = values - base;
    sums.sum[number] += distance;
    sums.squares[number] += distance * distance;
}

VORLIX_SCAN_INLINE SSums joined(const SLaneSums &lanes)
{
    double sums[SLaneSums::values];
    double squares[SLaneSums::values];
    qint64 gaps[SLaneSums::values];
    std::memcpy(sums, lanes.sum, sizeof sums);
    std::memcpy(squares, lanes.squares, sizeof squares);
    std::memcpy(gaps, lanes.gaps, sizeof gaps);
    SSums joined;
    for (int k = 0; k < SLaneSums::values; k += 2) {
        joined.sum += sums[k] + sums[k + 1];
        joined.squares += squares[k] + squares[k + 1];
        joined.count += gaps[k] + gaps[k + 1];
    }
    return joined;
}

template <bool withGaps, class T>
VORLIX_SCAN_CODE SSums laneSums(double base, const char *values, qint64 count)
{
    SLaneSums running;
    for (int k = 0; k < running.registers; ++k) {
        running.sum[k] = Lanes<double>{};
        running.squares[k] = Lanes<double>{};
        running.gaps[k] = Lanes<qint64>{};
    }
    qint64 i = 0;
    for (; i + running.values <= count; i += running.values) {
        for (int k = 0; k < running.registers; ++k)
            include<withGaps>(running, k, loadDoubles<T>(values, i + k * laneCount<double>), allLanes(base));
    }
    SSums sums = joined(running);
    sums.count += count;
    for (; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        const double distance = isGap(value) ? 0.0 : double(value) - base;
        sums.sum += distance;
        sums.squares += distance * distance;
        sums.count -= isGap(value);
    }
    return sums;
}

template <class T>
VORLIX_SCAN_INLINE bool isPositive(T value)
{
    return value > T(0) && !isGap(value);
}

/// Of a block at most: the number in a lane mustn't become too large for it.
template <class T>
VORLIX_SCAN_INLINE SPositives<T> lanePositives(const char *values, qint64 count)
{
    constexpr T largest = std::numeric_limits<T>::max();
    constexpr int registers = registersFor(4 * 16);
    constexpr int round = registers * laneCount<T>;
    Lanes<T> lowest[registers];
    decltype(Lanes<T>{} < Lanes<T>{}) found[registers]; // minus their number
    for (int k = 0; k < registers; ++k) {
        lowest[k] = allLanes(largest);
        found[k] = decltype(found[k] < found[k]){};
    }
    qint64 i = 0;
    for (; i + round <= count; i += round) {
        for (int k = 0; k < registers; ++k) {
            const Lanes<T> loaded = loadLanes<T>(values, i + k * laneCount<T>);
            const auto isAbove = (loaded > Lanes<T>{}) & (loaded <= allLanes(largest));
            lowest[k] = lower(isAbove ? loaded : lowest[k], lowest[k]);
            found[k] += isAbove;
        }
    }
    T smallest = largest;
    qint64 positive = 0;
    for (int k = 0; k < registers; ++k) {
        for (int lane = 0; lane < laneCount<T>; ++lane) {
            smallest = std::min(smallest, T(lowest[k][lane]));
            positive -= found[k][lane];
        }
    }
    for (; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        if (isPositive(value)) {
            smallest = std::min(smallest, value);
            ++positive;
        }
    }
    return {positive > 0 ? smallest : T(0), positive};
}

} // namespace

template <class T, int registerSize>
VORLIX_SCAN_CODE SCell<T> ScanLoops<T, registerSize>::cellOf(const char *values, qint64 count, bool &hasGap)
{
    const qint64 whole = count - count % SLaneExtremes<T>::values;
    SCell<T> cell = roundsCell<false, T>(values, whole, hasGap);
    for (qint64 i = whole; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        if (isGap(value))
            hasGap = true;
        else
            cell.include(value);
    }
    return cell;
}

template <class T, int registerSize>
VORLIX_SCAN_CODE quint64 ScanLoops<T, registerSize>::cellsOf(const char *values, int cells, SCell<T> *found)
{
    constexpr int size = 1 << cellBits(1);
    quint64 gaps = 0;
    for (int cell = 0; cell < cells; ++cell) {
        bool hasGap = false;
        found[cell] = roundsCell<false, T>(values + cell * size * int(sizeof(T)), size, hasGap);
        gaps |= quint64(hasGap) << cell;
    }
    return gaps;
}

template <class T, int registerSize>
VORLIX_SCAN_CODE SPositives<T> ScanLoops<T, registerSize>::positivesOf(const char *values, qint64 count)
{
    SPositives<T> positives;
    for (qint64 first = 0; first < count; first += blockSize)
        positives.include(
            lanePositives<T>(values + first * qint64(sizeof(T)), std::min(count - first, qint64(blockSize))));
    return positives;
}

template <class T, int registerSize>
VORLIX_SCAN_CODE SSums ScanLoops<T, registerSize>::sumsFrom(double base, const char *values, qint64 count, bool hasGap)
{
    if constexpr (std::is_floating_point_v<T>) {
        if (hasGap)
            return laneSums<true, T>(base, values, count);
    }
    return laneSums<false, T>(base, values, count);
}

template <class T, int registerSize>
VORLIX_SCAN_CODE SWholeSums ScanLoops<T, registerSize>::wholeSums(const char *values, qint64 count)
{
    if constexpr (sizeof(T) < 4) {
        using Whole = std::conditional_t<std::is_signed_v<T>, qint32, quint32>;
        Whole sum = 0; // of 2^12 values of 2^16 at most
        quint64 squares = 0;
        for (qint64 i = 0; i < count; ++i) {
            const auto value = Whole(loadValue<T>(values, i));
            sum += value;
            squares += quint32(value * value);
        }
        return {qint64(sum), squares};
    }
    return {};
}

#define VORLIX_SCAN(T) template struct ScanLoops<T, VORLIX_SCAN_BYTES>;
VORLIX_FOR_EVERY_TYPE(VORLIX_SCAN)
#undef VORLIX_SCAN
