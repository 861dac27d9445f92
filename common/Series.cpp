// SPDX-License-Identifier: MIT
#include "common/Series.h"

#include "common/Lanes.h"

#include <algorithm>

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

double *extend(QVector<double> &series, int count)
{
    const int size = series.size();
    series.resize(size + count);
    return series.data() + size;
}
