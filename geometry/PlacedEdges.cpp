// SPDX-License-Identifier: MIT
#include "geometry/PlacedEdges.h"

#include <algorithm>
#include <cmath>

namespace {

/// A rounding to single precision loses at most this part of a number.
constexpr double singleRounding = 1.0 / (1 << 24);
constexpr double firstInexactNumber = 1 << 24;

/// How far from its place the shader may put an edge that it gets as a number, in normalised device coordinates.
double errorOfNumber(double number, const SEdgeRow &edges, float start, float step)
{
    const double product = number * double(step);
    const double givenWrong = std::abs((product + double(start)) - (number * edges.step + edges.start));
    const double roundings = number > firstInexactNumber ? 2.0 : 1.0; // of the product, and of the number
    return givenWrong + roundings * singleRounding * std::abs(product);
}

bool areNumbersExact(const SEdgeRow &edges, float start, float step, const SIndexRange &range, const SPixelRow &pixels)
{
    // What is given wrong grows evenly from one end to the other, and the roundings with the numbers.
    const double error =
        std::max(errorOfNumber(range.first, edges, start, step), errorOfNumber(range.end, edges, start, step))
        + singleRounding;
    return error * 0.5 * pixels.count <= exactToPixels; // false for a NaN
}

} // namespace

double SPlacedEdges::reach(const SIndexRange &range) const
{
    const auto onTheWay = [this](double edge) { return std::abs((edge * unit + origin) * double(step)); };
    return std::max(onTheWay(range.first), onTheWay(range.end)) + std::abs(double(start));
}

SPlacedEdges placedEdges(const SEdgeRow &edges, float start, float step, const SIndexRange &range,
                         const SPixelRow &pixels)
{
    if (areNumbersExact(edges, start, step, range, pixels))
        return {0.0, 1.0, start, step};
    return {edges.start, edges.step, 0.0f, 1.0f};
}

double originOfParts(const SShownPart &shown, const SPixelRow &pixels)
{
    constexpr double lostPart = 1.0 / (1ll << 46); // of a position: four roundings of its lesser part
    const double farthest = std::max(std::abs(shown.left), std::abs(shown.left + shown.width));
    const double lost = lostPart * farthest * pixels.count / shown.width;
    return lost <= exactToPixels ? 0.0 : shown.left;
}
