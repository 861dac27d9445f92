// SPDX-License-Identifier: MIT
#include "geometry/VisibleElements.h"

#include "common/Index.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// A rounding to single precision loses at most 2^-24 of a number. This allows for four of them in a row.
constexpr double singleRounding = 1.0 / (1 << 22);
/// Beyond this, in pixels on either side of a centre, hardly an element can be left out.
constexpr double widestDoubt = 0.25;
/// Elements per pixel below which drawing all costs little.
constexpr double fewPerPixel = 4.0;

/// How far a corner may land from where it belongs, in pixels. `reach` is the largest number on the way to its
/// position.
double doubtOf(double reach, const SPixelRow &pixels)
{
    const double half = 0.5 * pixels.count; // pixels per unit of normalised device coordinates
    const double arithmetic = singleRounding * (reach + 2.0) * half;
    const double grid = std::ldexp(1.0, -pixels.subPixelBits);
    return arithmetic + grid;
}

bool isWorthIt(const SIndexRange &elements, double doubt, const SPixelRow &pixels)
{
    return pixels.centresDecide && pixels.count > 0 && pixels.subPixelBits > 0
        && doubt<widestDoubt &&double(elements.end) - elements.first> fewPerPixel * pixels.count;
}

/// Collects ranges in ascending order; those that touch become one.
class Ranges
{
public:
    explicit Ranges(const SIndexRange &limits) : m_limits(limits) {}

    void add(int first, int end)
    {
        first = std::max(first, m_limits.first);
        end = std::min(end, m_limits.end);
        if (first >= end)
            return;
        if (m_ranges.isEmpty() || first > m_ranges.last().end)
            m_ranges.append({first, end});
        else
            m_ranges.last().end = std::max(m_ranges.last().end, end);
    }
    QVector<SIndexRange> take() { return std::move(m_ranges); }

private:
    SIndexRange m_limits;
    QVector<SIndexRange> m_ranges;
};

} // namespace

QVector<SIndexRange> elementsOnPixelCentres(const SPlacedEdges &edges, const SIndexRange &inView,
                                            const SPixelRow &pixels)
{
    const SEdgeRow row = edges.row();
    const double doubt = doubtOf(edges.reach(inView), pixels);
    if (!(row.step > 0.0) || !isWorthIt(inView, doubt, pixels))
        return {inView};

    Ranges ranges(inView);
    const double unit = 2.0 / pixels.count;
    for (int pixel = 0; pixel < pixels.count; ++pixel) {
        const double centre = pixel + 0.5;
        const double left = (centre - doubt) * unit - 1.0;
        const double right = (centre + doubt) * unit - 1.0;
        ranges.add(toIndex(std::floor((left - row.start) / row.step)) - 1,
                   toIndex(std::floor((right - row.start) / row.step)) + 2);
    }
    return ranges.take();
}

QVector<SIndexRange> elementsOnPixelCentres(const BarEdges &edges, const SIndexRange &inView, const SShownPart &shown,
                                            const SPixelRow &pixels)
{
    constexpr double splitRounding = 1.0 / (1ll << 46); // of a position: what its two parts together lose
    const double unitsPerPixel = shown.width / pixels.count;
    const double farthest = std::max(std::abs(edges.edge(inView.first)), std::abs(edges.edge(inView.end)));
    const double split = splitRounding * (farthest + std::abs(shown.left)) / unitsPerPixel;
    const double doubt = doubtOf(2.0, pixels) + split; // far positions cancel before they are rounded
    if (!(unitsPerPixel > 0.0) || !std::isfinite(unitsPerPixel) || !edges.isAscending()
        || !isWorthIt(inView, doubt, pixels))
        return {inView};

    Ranges ranges(inView);
    for (int pixel = 0; pixel < pixels.count; ++pixel) {
        const double centre = pixel + 0.5;
        const double left = shown.left + (centre - doubt) * unitsPerPixel;
        const double right = shown.left + (centre + doubt) * unitsPerPixel;
        const SIndexRange touched = edges.barsBetween(left, right);
        ranges.add(touched.first - 1, touched.end + 1);
    }
    return ranges.take();
}
