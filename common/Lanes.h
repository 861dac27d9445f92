// SPDX-License-Identifier: MIT
#pragma once

#include <cstring>

// Two doubles side by side, for loops that the compiler does not vectorise by itself because their result depends on
// the order of comparisons. Every 64-bit processor has registers of this width; wider ones were tried and gained
// nothing beyond the second-level cache and little within it.
//
// GCC and clang have such vectors. For other compilers, and with VORLIX_PLAIN_LANES, plain numbers do the same, bit by
// bit, and slower.

#if (defined(__GNUC__) || defined(__clang__)) && !defined(VORLIX_PLAIN_LANES)
#  define VORLIX_HAS_VECTORS 1
#else
#  define VORLIX_HAS_VECTORS 0
#  include "common/PlainLanes.h"
#endif

constexpr int lanes = 2;
constexpr int laneGroups = 4; // independent chains, which hide the latency of one
constexpr int valuesPerRound = laneGroups * lanes;

#if VORLIX_HAS_VECTORS
using Lanes = double __attribute__((vector_size(lanes * sizeof(double))));
using LaneBits = unsigned long long __attribute__((vector_size(lanes * sizeof(unsigned long long))));
using LaneTruths = long long __attribute__((vector_size(lanes * sizeof(long long)))); ///< per lane 0 or -1
using FloatLanes = float __attribute__((vector_size(lanes * sizeof(float))));
using FourFloats = float __attribute__((vector_size(4 * sizeof(float))));
#else
using Lanes = PlainLanes<double, lanes>;
using LaneBits = PlainLanes<unsigned long long, lanes>;
using LaneTruths = PlainLanes<long long, lanes>;
using FloatLanes = PlainLanes<float, lanes>;
using FourFloats = PlainLanes<float, 4>;
#endif

inline Lanes loadLanes(const double *values)
{
    Lanes loaded;
    std::memcpy(&loaded, values, sizeof loaded);
    return loaded;
}

inline void storeLanes(double *values, Lanes stored)
{
    std::memcpy(values, &stored, sizeof stored);
}

/// The candidate if it is greater, else the maximum: a NaN never replaces one.
inline double greater(double candidate, double maximum)
{
    return candidate > maximum ? candidate : maximum;
}

/// The same per lane.
inline Lanes greater(Lanes candidate, Lanes maximum)
{
#if VORLIX_HAS_VECTORS
    return candidate > maximum ? candidate : maximum;
#else
    return lanesOf<double, lanes>([&](int i) { return greater(candidate[i], maximum[i]); });
#endif
}

/// The candidate if it is less, else the minimum: a NaN never replaces one.
inline double lesser(double candidate, double minimum)
{
    return candidate < minimum ? candidate : minimum;
}

/// The same per lane.
inline Lanes lesser(Lanes candidate, Lanes minimum)
{
#if VORLIX_HAS_VECTORS
    return candidate < minimum ? candidate : minimum;
#else
    return lanesOf<double, lanes>([&](int i) { return lesser(candidate[i], minimum[i]); });
#endif
}

/// Rounded to single precision.
inline FloatLanes roundedLanes(Lanes values)
{
#if VORLIX_HAS_VECTORS
    return __builtin_convertvector(values, FloatLanes);
#else
    return lanesOf<float, lanes>([&](int i) { return float(values[i]); });
#endif
}
