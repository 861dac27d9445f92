// SPDX-License-Identifier: MIT
#pragma once

#include "common/Avx2.h"
#include "views/store/SStatistics.h"
#include "views/store/ScanLoops.h"

// What a look at some values finds, with the widest registers that this processor has.

/// Calls `work` with the loops to use and returns what it returns.
template <class T, class Work>
auto withLoops(Work &&work)
{
#if defined(VORLIX_AVX2)
    if (hasAvx2())
        return work(ScanLoops<T, wideRegisters>());
#endif
    return work(ScanLoops<T, narrowRegisters>());
}

/// The lowest and highest of `count` values; sets `hasGap` if there is a gap among them.
template <class T>
SCell<T> cellOf(const char *values, qint64 count, bool &hasGap)
{
    return withLoops<T>([&](auto loops) { return loops.cellOf(values, count, hasGap); });
}

/// The cells of up to 64 times 64 values. A bit for each that has a gap.
template <class T>
quint64 cellsOf(const char *values, int cells, SCell<T> *found)
{
    return withLoops<T>([&](auto loops) { return loops.cellsOf(values, cells, found); });
}

/// What is above zero among `count` values.
template <class T>
SPositives<T> positivesOf(const char *values, qint64 count)
{
    return withLoops<T>([&](auto loops) { return loops.positivesOf(values, count); });
}

/// Counts, adds and measures `count` values, at most a block of them, but for the positive ones. `cell` is what
/// cellOf() says of them.
template <class T>
SStatistics measuredOf(const char *values, qint64 count, const SCell<T> &cell, bool hasGap);

/// All of the statistics, of a block of values at most.
template <class T>
SStatistics statisticsOf(const char *values, qint64 count)
{
    bool hasGap = false;
    const SCell<T> cell = cellOf<T>(values, count, hasGap);
    SStatistics statistics = measuredOf(values, count, cell, hasGap);
    if (!cell.isEmpty() && cell.highest > T(0))
        statistics.positiveCount = cell.lowest > T(0) ? statistics.count : positivesOf<T>(values, count).count;
    return statistics;
}
