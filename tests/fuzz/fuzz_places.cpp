// SPDX-License-Identifier: MIT

// Where the elements of a long series are drawn, and which, against extended precision: for any number and width of
// elements, offset, view and framebuffer.

#include "fuzz/Bytes.h"
#include "fuzz/Check.h"
#include "geometry/Vertices.h"
#include "geometry/VisibleElements.h"

#include <cmath>
#include <vector>

namespace {

using Exact = long double;

SPixelRow anyPixels(Bytes &bytes)
{
    return {1 + int(bytes.raw<uint16_t>() % 4096), 4 + bytes.below(5), true};
}

double anyOffset(Bytes &bytes)
{
    constexpr double offsets[] = {0.0, 1e6, 7e6, 1e9, -1e9};
    const int which = bytes.below(8);
    return which < 5 ? offsets[which] : double(bytes.raw<int32_t>()) / 16.0;
}

/// A share of a whole, evenly or close to one of the ends.
double anyShare(Bytes &bytes)
{
    const double even = bytes.raw<uint32_t>() / 4294967296.0;
    return bytes.below(2) == 0 ? even : std::pow(even, 8.0);
}

bool contains(const QVector<SIndexRange> &ranges, int element)
{
    for (const SIndexRange &range : ranges) {
        if (element >= range.first && element < range.end)
            return true;
    }
    return false;
}

void checkEdge(const char *what, int edge, Exact exact, Exact shader, const SPixelRow &pixels)
{
    if (std::abs(exact) > 1.0L)
        return;
    const Exact aside = std::abs(shader - exact) * 0.5L * pixels.count;
    if (!(aside <= Exact(exactToPixels)))
        fail(what, QByteArray::number(edge) + " is " + QByteArray::number(double(aside)) + " pixels aside");
}

/// Every element that covers the centre of a pixel, as the grid within it moves edges, has to be drawn.
template <class ElementAt>
void checkCentres(const QVector<SIndexRange> &drawn, const SIndexRange &inView, const SPixelRow &pixels,
                  ElementAt elementAt)
{
    const Exact grid = std::ldexp(0.5L, -pixels.subPixelBits);
    for (int pixel = 0; pixel < pixels.count; ++pixel) {
        for (const Exact centre : {pixel + 0.5L - grid, pixel + 0.5L, pixel + 0.5L + grid}) {
            const Exact element = elementAt(centre);
            const bool exists = element >= Exact(inView.first) && element < Exact(inView.end);
            if (exists && !contains(drawn, int(element)))
                fail("left out", QByteArray::number(int(element)) + " at pixel " + QByteArray::number(pixel));
        }
    }
}

/// As BarPlotter and AreaPlotter place them.
void checkEqualWidths(Bytes &bytes)
{
    const SPixelRow pixels = anyPixels(bytes);
    const int count = 1 + int(bytes.raw<uint32_t>() % (bytes.below(2) == 0 ? 10'000u : 80'000'000u));
    const double width = std::ldexp(1.0 + bytes.byte() / 256.0, bytes.below(16) - 4);
    const double left = anyOffset(bytes);
    const double shown = std::max(1.0, anyShare(bytes) * count);
    const double viewLeft = left + anyShare(bytes) * (count - shown) * width;
    const double viewWidth = shown * width;

    const SEdgeRow edges{2.0 * ((left - viewLeft) / viewWidth) - 1.0, 2.0 * (width / viewWidth)};
    const auto firstShown = int(std::clamp(std::floor((viewLeft - left) / width), 0.0, double(count - 1)));
    const auto end = int(std::clamp(std::ceil((viewLeft + viewWidth - left) / width), firstShown + 1.0, double(count)));
    const SIndexRange inView{firstShown, end};
    const SPlacedEdges placed = placedEdges(edges, float(edges.start), float(edges.step), inView, pixels);

    const auto exact = [&](int edge) {
        return 2.0L * ((Exact(left) - viewLeft + Exact(edge) * width) / viewWidth) - 1.0L;
    };
    const int step = std::max(1, (end - firstShown) / 2000);
    for (int edge = firstShown; edge <= end; edge += step) {
        const float corner = placed.corner(edge);
        const float product = corner * placed.step;
        checkEdge("edge", edge, exact(edge), Exact(product + placed.start), pixels);
        checkEdge("fused edge", edge, exact(edge), Exact(std::fma(corner, placed.step, placed.start)), pixels);
    }
    checkCentres(elementsOnPixelCentres(placed, inView, pixels), inView, pixels, [&](Exact centre) {
        return std::floor((Exact(viewLeft) - left + centre * viewWidth / pixels.count) / width);
    });
}

/// As BarPlotterDx places them.
void checkIndividualWidths(Bytes &bytes)
{
    const SPixelRow pixels = anyPixels(bytes);
    QVector<double> pairs{anyOffset(bytes), 1.0}; // a first bar that leads far away
    if (pairs.first() < 0.0)
        return;
    const int distinct = 1 + bytes.below(64);
    std::vector<double> widths;
    for (int i = 0; i < distinct; ++i)
        widths.push_back(bytes.below(256) / 64.0);
    const int count = int(bytes.raw<uint16_t>());
    for (int i = 0; i < count; ++i)
        pairs << widths[size_t(i % distinct)] << 1.0;
    const BarEdges edges = BarEdges::of(pairs, 0.0);
    const double rest = edges.total() - pairs.first();
    const SShownPart shown{pairs.first() + anyShare(bytes) * rest, std::max(1.0, anyShare(bytes) * rest)};
    const SIndexRange inView = edges.barsBetween(shown.left, shown.left + shown.width);
    const double origin = originOfParts(shown, pixels);
    const double distance = shown.left - origin;
    const auto leftMost = float(distance);
    const auto leftLeast = float(distance - double(leftMost));
    const auto scale = float(2.0 / shown.width);
    std::vector<SHResVertex> corners(4 * size_t(inView.end - inView.first) + 1);
    double position = edges.edge(inView.first);
    writeHResVertices(pairs.constData() + 2 * inView.first, position, origin, inView.end - inView.first,
                      corners.data());
    for (int bar = inView.first; bar < inView.end; ++bar) {
        position += pairs.at(2 * bar);
        const SHResVertex &corner = corners[4 * size_t(bar - inView.first) + 1];
        const float most = corner.xMost - leftMost;
        const float least = corner.xLeast - leftLeast;
        const float x = (most + least) * scale;
        checkEdge("sum", bar + 1, 2.0L * ((Exact(position) - shown.left) / shown.width) - 1.0L, Exact(x - 1.0f),
                  pixels);
    }
    checkCentres(elementsOnPixelCentres(edges, inView, shown, pixels), inView, pixels, [&](Exact centre) {
        const double x = double(shown.left + centre * shown.width / pixels.count);
        const int edge = edges.edgeAtOrBeyond(x);
        return x <= edges.total() ? Exact(edge - 1) : Exact(-1.0);
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Bytes bytes(data, size);
    if (bytes.below(2) == 0)
        checkEqualWidths(bytes);
    else
        checkIndividualWidths(bytes);
    return 0;
}
