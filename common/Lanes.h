// SPDX-License-Identifier: MIT
#pragma once

#include <cstring>

// Two doubles side by side, for loops that the compiler does not vectorise by itself because their result depends on
// the order of comparisons. Every 64-bit processor has registers of this width; wider ones were tried and gained
// nothing beyond the second-level cache and little within it.

constexpr int lanes = 2;
constexpr int laneGroups = 4; // independent chains, which hide the latency of one
constexpr int valuesPerRound = laneGroups * lanes;

using Lanes = double __attribute__((vector_size(lanes * sizeof(double))));
using LaneBits = unsigned long long __attribute__((vector_size(lanes * sizeof(unsigned long long))));
using LaneTruths = long long __attribute__((vector_size(lanes * sizeof(long long)))); ///< per lane 0 or -1

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
