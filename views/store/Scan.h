// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SCell.h"
#include "views/store/SStatistics.h"

/// The lowest and highest of `count` values; sets `hasGap` if there is a gap among them.
template <class T>
SCell<T> cellOf(const char *values, qint64 count, bool &hasGap);

/// Of `count` values the smallest above zero; 0 if there is none.
template <class T>
T smallestPositive(const char *values, qint64 count);

/// Counts, adds and measures `count` values, at most a block of them. `cell` is what cellOf() says of them.
template <class T>
SStatistics statisticsOf(const char *values, qint64 count, const SCell<T> &cell, bool hasGap);

/// The same where the cell isn't known.
template <class T>
SStatistics statisticsOf(const char *values, qint64 count)
{
    bool hasGap = false;
    const SCell<T> cell = cellOf<T>(values, count, hasGap);
    return statisticsOf(values, count, cell, hasGap);
}
