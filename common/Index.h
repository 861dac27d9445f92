// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

#include <cmath>
#include <limits>

// From positions to indices without surprises.

/// Truncates towards zero. Beyond the range of int the nearest end of it; 0 for NaN.
inline int toIndex(double value)
{
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    if (!(value > lowest))
        return std::isnan(value) ? 0 : std::numeric_limits<int>::min();
    return value < highest ? int(value) : std::numeric_limits<int>::max();
}

/// Whether `extent` contains (x, 0). Qt's own test says yes to NaN; this one says no.
inline bool containsOnAxis(const QRectF &extent, double x)
{
    return !std::isnan(x) && extent.contains(QPointF(x, 0.0));
}
