// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

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
