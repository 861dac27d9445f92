// SPDX-License-Identifier: MIT
#pragma once

#include "common/Compare.h"

#include <cstring>
#include <type_traits>

/// Stores `value` when it differs from `stored` and says whether it did: the first line of every setter.
/// Doubles and rectangles are compared by fuzzyEqual(), everything else by its own equality.
template <class T>
bool change(T &stored, const T &value)
{
    if constexpr (std::is_same_v<T, double> || std::is_same_v<T, QRectF>) {
        if (fuzzyEqual(stored, value))
            return false;
    } else {
        if (stored == value)
            return false;
    }
    stored = value;
    return true;
}

/// The same for places on an axis, where the twelfth digit counts: only bit-identical values count as equal.
inline bool changeExactly(double &stored, double value)
{
    if (std::memcmp(&stored, &value, sizeof value) == 0)
        return false;
    stored = value;
    return true;
}
