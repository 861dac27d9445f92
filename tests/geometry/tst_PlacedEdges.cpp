// SPDX-License-Identifier: MIT
#include "geometry/PlacedEdges.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {

constexpr SPixelRow pixels{640, 8, true};

/// Bars of one unit from 0 on, in a view.
SEdgeRow unitsIn(double left, double width)
{
    return {2.0 * (-left / width) - 1.0, 2.0 / width};
}

SPlacedEdges placed(double left, double width)
{
    const SEdgeRow edges = unitsIn(left, width);
    return placedEdges(edges, float(edges.start), float(edges.step), {int(left), int(std::ceil(left + width))}, pixels);
}

bool areNumbers(const SPlacedEdges &edges)
{
    return edges.origin == 0.0 && edges.unit == 1.0;
}

/// In pixels from the left of the view.
double shaderPixel(const SPlacedEdges &edges, int edge)
{
    return (double(edges.corner(edge) * edges.step + edges.start) + 1.0) * 0.5 * pixels.count;
}

} // namespace

class tst_PlacedEdges : public QObject
{
    Q_OBJECT

private slots:
    void nearTheBeginningCornersAreNumbers();
    void farAwayCornersAreTheirPlaces();
    void everyEdgeIsExactWhereverItLies();
    void whatIsGivenWrongIsNotUsed();
    void whatIsNoNumberIsNotExact();
    void positionsInTwoPartsAreMeasuredFromTheViewWhereTheyAreTooCoarse();
};

void tst_PlacedEdges::nearTheBeginningCornersAreNumbers()
{
    const SPlacedEdges all = placed(0.0, 10'000.0);
    QVERIFY(areNumbers(all));
    QCOMPARE(all.start, -1.0f);
    QCOMPARE(all.step, float(2.0 / 10'000.0));
    QCOMPARE(all.corner(7), 7.0f);
    QVERIFY(areNumbers(placed(0.0, 1.0)));
    QVERIFY(areNumbers(placed(0.0, 1e7)));
    QVERIFY(areNumbers(placed(9'000.0, 1'000.0)));
}

void tst_PlacedEdges::farAwayCornersAreTheirPlaces()
{
    const SPlacedEdges edges = placed(9e6, 20.0);
    QVERIFY(!areNumbers(edges));
    QCOMPARE(edges.start, 0.0f);
    QCOMPARE(edges.step, 1.0f);
    QCOMPARE(edges.corner(9'000'000), -1.0f);
    QCOMPARE(edges.corner(9'000'005), -0.5f);
    QCOMPARE(edges.corner(9'000'020), 1.0f);
}

void tst_PlacedEdges::everyEdgeIsExactWhereverItLies()
{
    for (const double width : {1.0, 1.3, 7.7, 20.0, 100.0, 1234.5, 1e5, 1e6}) {
        for (const double left : {0.0, 0.3, 77.7, 1e4 + 0.1, 1e6 / 3.0, 7e6 / 3.0, 7e7 + 0.7}) {
            const SPlacedEdges edges = placed(left, width);
            const int step = std::max(1, int(width / 1000));
            for (int edge = int(left) + 1; edge < left + width; edge += step) {
                const double aside = std::abs(shaderPixel(edges, edge) - (edge - left) / width * pixels.count);
                QVERIFY2(aside <= exactToPixels, QByteArray::number(aside));
            }
        }
    }
}

void tst_PlacedEdges::whatIsGivenWrongIsNotUsed()
{
    const SEdgeRow edges = unitsIn(0.0, 1000.0);
    const float wrong = float(edges.step) * 1.0001f; // a tenth of a bar at the end
    QVERIFY(!areNumbers(placedEdges(edges, float(edges.start), wrong, {0, 1000}, pixels)));
    QVERIFY(areNumbers(placedEdges(edges, float(edges.start), wrong, {0, 1}, pixels)));
}

void tst_PlacedEdges::whatIsNoNumberIsNotExact()
{
    const SEdgeRow edges = unitsIn(0.0, 1000.0);
    for (const float strange : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        QVERIFY(!areNumbers(placedEdges(edges, strange, float(edges.step), {0, 1000}, pixels)));
        QVERIFY(!areNumbers(placedEdges(edges, float(edges.start), strange, {0, 1000}, pixels)));
    }
}

void tst_PlacedEdges::positionsInTwoPartsAreMeasuredFromTheViewWhereTheyAreTooCoarse()
{
    QCOMPARE(originOfParts({1e6, 1.0}, pixels), 0.0);
    QCOMPARE(originOfParts({1e9, 1e3}, pixels), 0.0);
    QCOMPARE(originOfParts({1e9, 1.0}, pixels), 1e9);
    QCOMPARE(originOfParts({1e15, 1e3}, pixels), 1e15);
}

QTEST_APPLESS_MAIN(tst_PlacedEdges)
#include "tst_PlacedEdges.moc"
