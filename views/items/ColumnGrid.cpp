// SPDX-License-Identifier: MIT
#include "views/items/ColumnGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int stepBits = 24; // with a column's number of up to 29 bits, an edge is exact

/// With few bits, so that the same zoom has the same step wherever the view begins. Never longer than it was: what
/// stands on the edge of a column stays in it.
double shortened(double step)
{
    int exponent = 0;
    const double mantissa = std::frexp(step, &exponent);
    return std::ldexp(std::floor(std::ldexp(mantissa, stepBits)), exponent - stepBits);
}

/// How much of a step may be rounding of the view's ends, as a part of it.
double roundingOf(double from, double to)
{
    const double farthest = std::max(std::abs(from), std::abs(to));
    return std::ldexp(1.0, -stepBits) + 4.0 * std::numeric_limits<double>::epsilon() * farthest / (to - from);
}

} // namespace

ColumnGrid ColumnGrid::over(double from, double to, int count, double previousStep)
{
    ColumnGrid grid;
    const double wanted = (to - from) / count;
    if (count <= 0 || !std::isfinite(from) || !(wanted > 0.0) || !std::isfinite(wanted))
        return grid;
    const bool isSameZoom = std::abs(wanted - previousStep) <= wanted * roundingOf(from, to);
    grid.step = isSameZoom && previousStep > 0.0 ? previousStep : shortened(wanted);
    const double first = std::round(from / grid.step);
    if (!(std::abs(first) < std::ldexp(1.0, 62))) // so far away that neighbours can't be told apart
        return ColumnGrid();
    grid.first = qint64(first);
    grid.count = count;
    return grid;
}
