// SPDX-License-Identifier: MIT
#include "common/Series.h"

#include "common/Lanes.h"
#include "common/Storage.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

/// No early exit inside a portion: looking at every pair is faster than asking after each.
bool samePortion(const double *a, const double *b, int count)
{
    LaneTruths same[laneGroups];
    for (LaneTruths &group : same)
        group = ~LaneTruths{};
    int i = 0;
    for (; i <= count - valuesPerRound; i += valuesPerRound) {
        for (int group = 0; group < laneGroups; ++group)
            same[group] &= loadLanes(a + i + group * lanes) == loadLanes(b + i + group * lanes);
    }
    const LaneTruths joined = (same[0] & same[1]) & (same[2] & same[3]);
    bool all = (joined[0] & joined[1]) != 0;
    for (; i < count; ++i)
        all &= a[i] == b[i];
    return all;
}

} // namespace

bool sameSeries(const QVector<double> &a, const QVector<double> &b)
{
    const double *left = a.constData();
    const double *right = b.constData();
    if (left == right)
        return true;
    const int size = a.size();
    if (size != b.size())
        return false;
    for (int start = 0; start < size; start += seriesPortion) {
        if (!samePortion(left + start, right + start, std::min(seriesPortion, size - start)))
            return false;
    }
    return true;
}

bool finiteInSingle(const double *values, int count)
{
    constexpr double largest = std::numeric_limits<float>::max(); // what is above may still round to it; never mind
    quint64 largestBits;
    std::memcpy(&largestBits, &largest, sizeof largestBits);
    // Without their sign, doubles ascend like their bits, with infinity and then the NaNs at the end. What is added
    // takes those beyond the largest to the uppermost bit.
    constexpr quint64 uppermost = quint64(1) << 63;
    const quint64 added = uppermost - 1 - largestBits;
    const LaneBits unsignedBits{uppermost - 1, uppermost - 1};
    const LaneBits addedBits{added, added};
    LaneBits beyond[laneGroups] = {};
    int i = 0;
    for (; i <= count - valuesPerRound; i += valuesPerRound) {
        for (int group = 0; group < laneGroups; ++group) {
            LaneBits bits;
            std::memcpy(&bits, values + i + group * lanes, sizeof bits);
            beyond[group] |= (bits & unsignedBits) + addedBits;
        }
    }
    const LaneBits joined = (beyond[0] | beyond[1]) | (beyond[2] | beyond[3]);
    bool all = ((joined[0] | joined[1]) & uppermost) == 0;
    for (; i < count; ++i)
        all &= values[i] <= largest && values[i] >= -largest;
    return all;
}
