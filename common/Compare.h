// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

#include <cmath>
#include <cstring>

// Equality as the setters of this module understand it. Thread-safe, like everything in this folder.

/// Equal when |a - b| * 1e12 <= min(|a|, |b|), so an exact zero equals only a zero.
/// Bit-identical values are equal too: the same infinity or the same NaN doesn't count as a change. Opposite infinities
/// differ.
inline bool fuzzyEqual(double a, double b)
{
    if (std::memcmp(&a, &b, sizeof a) == 0)
        return true;
    const double distance = std::abs(a - b);
    return !std::isinf(distance) && distance * 1e12 <= std::fmin(std::abs(a), std::abs(b));
}

/// Equal in each of x, y, width and height.
inline bool fuzzyEqual(const QRectF &a, const QRectF &b)
{
    return fuzzyEqual(a.x(), b.x()) && fuzzyEqual(a.y(), b.y()) && fuzzyEqual(a.width(), b.width())
        && fuzzyEqual(a.height(), b.height());
}
