// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SStatistics.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

// What a look at some values finds. Values are loaded byte by byte, so to say: external memory needn't be aligned.

template <class T>
T loadValue(const char *values, qint64 index)
{
    T value;
    std::memcpy(&value, values + index * qint64(sizeof value), sizeof value);
    return value;
}

/// NaN and the infinities. Whole numbers have none.
template <class T>
bool isGap(T value)
{
    if constexpr (std::is_floating_point_v<T>)
        return !std::isfinite(value);
    else
        return false;
}

/// The lowest and the highest of some values that are not gaps. It begins with the highest below the lowest.
template <class T>
struct SCell
{
    T lowest = std::numeric_limits<T>::max();
    T highest = std::numeric_limits<T>::lowest();

    bool isEmpty() const { return highest < lowest; }
    void include(T value)
    {
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    void include(const SCell &other)
    {
        lowest = std::min(lowest, other.lowest);
        highest = std::max(highest, other.highest);
    }
};

/// The smaller of two values above zero, each 0 if there is none.
template <class T>
T smallerPositive(T a, T b)
{
    if (a == T(0) || b == T(0))
        return std::max(a, b);
    return std::min(a, b);
}

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
