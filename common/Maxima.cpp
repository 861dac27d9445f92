// SPDX-License-Identifier: MIT
#include "common/Maxima.h"

#include "common/Lanes.h"

// The compiler turns a loop with one running maximum into no vector code, because the order of comparisons decides
// which zero or NaN remains. With one maximum per lane, replaced on strictly greater, every lane obeys the rule by
// itself, and lanes that started from the same value differ at the end only in what is greater, or in the sign of a
// zero.

namespace {

/// The largest of `start` and the values. When it is a zero, its sign is that of any zero among them.
double maximumFrom(double start, const double *values, int count)
{
    const Lanes first{start, start};
    Lanes maxima[4] = {first, first, first, first};
    int i = 0;
    for (; i <= count - valuesPerRound; i += valuesPerRound) {
        maxima[0] = greater(loadLanes(values + i), maxima[0]);
        maxima[1] = greater(loadLanes(values + i + lanes), maxima[1]);
        maxima[2] = greater(loadLanes(values + i + 2 * lanes), maxima[2]);
        maxima[3] = greater(loadLanes(values + i + 3 * lanes), maxima[3]);
    }
    const Lanes joined = greater(greater(maxima[3], maxima[2]), greater(maxima[1], maxima[0]));
    double maximum = greater(joined[1], joined[0]);
    for (; i < count; ++i)
        maximum = greater(values[i], maximum);
    return maximum;
}

} // namespace

double maximumFromZero(const double *values, int count)
{
    return maximumFrom(0.0, values, count);
}

double firstMaximum(const double *values, int count)
{
    if (count <= 0)
        return 0.0;
    const double maximum = maximumFrom(values[0], values, count);
    if (maximum != 0.0)
        return maximum;
    const double *zero = values; // the first one decides the sign
    while (*zero != 0.0)
        ++zero;
    return *zero;
}

void pairMaxima(const double *values, int count, double *maxima)
{
    const Lanes zero{};
    int i = 0;
    for (; i <= count - lanes; i += lanes) {
        const Lanes left = loadLanes(values + 2 * i);
        const Lanes right = loadLanes(values + 2 * i + lanes);
        const Lanes even{left[0], right[0]};
        const Lanes odd{left[1], right[1]};
        storeLanes(maxima + i, greater(odd, greater(even, zero)));
    }
    for (; i < count; ++i)
        maxima[i] = greater(values[2 * i + 1], greater(values[2 * i], 0.0));
}
