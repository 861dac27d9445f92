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

} // namespace

ColumnGrid ColumnGrid::over(double from, double to, int count, double previousStep, double doubt)
{
    ColumnGrid grid;
    const double wanted = (to - from) / count;
    if (count <= 0 || !std::isfinite(from) || !(wanted > 0.0) || !std::isfinite(wanted))
        return grid;
    const double farthest = std::max(std::abs(from), std::abs(to));
    const double rounding = doubt + 4.0 * std::numeric_limits<double>::epsilon() * farthest;
    const bool isSameZoom = std::abs(wanted - previousStep) <= std::ldexp(wanted, -stepBits) + 2.0 * rounding / count;
    grid.step = isSameZoom && previousStep > 0.0 ? previousStep : shortened(wanted);
    const double first = std::round(from / grid.step);
    if (!(std::abs(first) < std::ldexp(1.0, 62))) // so far away that neighbours can't be told apart
        return ColumnGrid();
    grid.first = qint64(first);
    grid.count = count;
    return grid;
}
