// SPDX-License-Identifier: MIT
#include "geometry/VisibleElements.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {

/// Bars from `first` to one before `end` as a shader places them that gets their numbers.
struct SBarRow
{
    float start = 0.0f;
    float step = 0.0f;
    int first = 0;
    int end = 0;
};

QVector<SIndexRange> seen(const SBarRow &row, const SPixelRow &pixels)
{
    return elementsOnPixelCentres({0.0, 1.0, row.start, row.step}, {row.first, row.end}, pixels);
}

bool areAllSeen(const SBarRow &row, const SPixelRow &pixels)
{
    return seen(row, pixels) == QVector<SIndexRange>{{row.first, row.end}};
}

int barsIn(const QVector<SIndexRange> &ranges)
{
    int count = 0;
    for (const SIndexRange &range : ranges)
        count += range.end - range.first;
    return count;
}

/// Where rasterisers may put a corner: on the grid below, above, or next to where the shader's arithmetic puts it.
class Corner
{
public:
    Corner(float position, const SPixelRow &pixels)
    {
        const double grid = std::ldexp(1.0, pixels.subPixelBits);
        const double pixel = (double(position) + 1.0) * 0.5 * pixels.count;
        m_lowest = std::floor(pixel * grid) / grid;
        m_highest = std::ceil(pixel * grid) / grid;
    }
    double lowest() const { return m_lowest; }
    double highest() const { return m_highest; }

private:
    double m_lowest;
    double m_highest;
};

/// Whether some rasteriser may let a bar between two corners cover the centre of one of the pixels.
bool mayCoverACentre(const Corner &left, const Corner &right, const SPixelRow &pixels)
{
    const double first = std::max(std::ceil(left.lowest() - 0.5), 0.0);
    return first <= right.highest() - 0.5 && first < pixels.count;
}

float shaderPosition(int bar, const SBarRow &row)
{
    return float(bar) * row.step + row.start;
}

float fusedPosition(int bar, const SBarRow &row)
{
    return std::fma(float(bar), row.step, row.start);
}

/// The first bar that is left out although it may be seen; -1 if there is none.
int missedBar(const SBarRow &row, const SPixelRow &pixels, const QVector<SIndexRange> &ranges)
{
    int bar = row.first;
    const auto check = [&](int end) {
        for (; bar < end; ++bar) {
            const bool plain = mayCoverACentre(Corner(shaderPosition(bar, row), pixels),
                                               Corner(shaderPosition(bar + 1, row), pixels), pixels);
            const bool fused = mayCoverACentre(Corner(fusedPosition(bar, row), pixels),
                                               Corner(fusedPosition(bar + 1, row), pixels), pixels);
            if (plain || fused)
                return true;
        }
        return false;
    };
    for (const SIndexRange &range : ranges) {
        if (check(range.first))
            return bar;
        bar = range.end;
    }
    return check(row.end) ? bar : -1;
}

/// The row of a plotter that shows [from, to] of `count` bars.
SBarRow rowOf(int count, double from, double to)
{
    const double view = to - from;
    return {float(2.0 * (-from / view) - 1.0), float(2.0 / (count * view)), std::max(int(from * count), 0),
            std::min(int(to * count) + 1, count)};
}

} // namespace

class tst_VisibleElements : public QObject
{
    Q_OBJECT

private slots:
    void manyBarsLeaveFewToDraw();
    void aFewBarsAreAllDrawn();
    void whatCannotBeKnownIsAllDrawn();
    void noBarThatMayBeSeenIsLeftOut();
    void rangesAscendWithoutTouching();
    void barsOfIndividualWidthsAreChosenByTheirEdges();
    void barsOfIndividualWidthsFarFromTheOriginAreDoubted();
};

void tst_VisibleElements::manyBarsLeaveFewToDraw()
{
    const SPixelRow pixels{1000, 8};
    const QVector<SIndexRange> million = seen(rowOf(1'000'000, 0.0, 1.0), pixels);
    QVERIFY(!million.isEmpty());
    QVERIFY2(barsIn(million) < 20'000, QByteArray::number(barsIn(million)));
    const QVector<SIndexRange> tenMillion = seen(rowOf(10'000'000, 0.0, 1.0), pixels);
    QVERIFY2(barsIn(tenMillion) < 150'000, QByteArray::number(barsIn(tenMillion)));
}

void tst_VisibleElements::aFewBarsAreAllDrawn()
{
    QVERIFY(areAllSeen(rowOf(1000, 0.0, 1.0), {1000, 8}));
    QVERIFY(areAllSeen(rowOf(4000, 0.0, 1.0), {1000, 8}));
    QVERIFY(areAllSeen({-1.0f, 1e-6f, 5, 5}, {1000, 8}));
}

void tst_VisibleElements::whatCannotBeKnownIsAllDrawn()
{
    const SBarRow row = rowOf(1'000'000, 0.0, 1.0);
    QVERIFY(areAllSeen(row, {1000, 0}));
    QVERIFY(areAllSeen(row, {1000, 1}));
    QVERIFY(areAllSeen(row, {0, 8}));
    QVERIFY(areAllSeen(rowOf(80'000'000, 0.5, 0.5 + 1e-4), {1000, 8})); // positions too coarse
    for (const float strange : {0.0f, -1e-6f, std::numeric_limits<float>::quiet_NaN()})
        QVERIFY(areAllSeen({-1.0f, strange, 0, 1'000'000}, {1000, 8}));
    QVERIFY(areAllSeen({std::numeric_limits<float>::quiet_NaN(), 2e-6f, 0, 1'000'000}, {1000, 8}));
    QVERIFY(areAllSeen({std::numeric_limits<float>::infinity(), 2e-6f, 0, 1'000'000}, {1000, 8}));
}

void tst_VisibleElements::noBarThatMayBeSeenIsLeftOut()
{
    RandomSeries random(1);
    int selected = 0;
    for (int round = 0; round < 300; ++round) {
        const int count = random.whole(5'000, 400'000);
        const double from = random.real(-0.2, 0.9);
        const double to = from + std::pow(10.0, random.real(-3.0, 0.2));
        const SBarRow row = rowOf(count, from, to);
        const SPixelRow pixels{random.whole(1, 3) == 1 ? random.whole(1, 50) : random.whole(50, 2000),
                               random.whole(4, 8)};
        const QVector<SIndexRange> ranges = seen(row, pixels);
        if (areAllSeen(row, pixels))
            continue;
        ++selected;
        QCOMPARE(missedBar(row, pixels, ranges), -1);
    }
    QVERIFY(selected > 50);
}

void tst_VisibleElements::rangesAscendWithoutTouching()
{
    const SBarRow row = rowOf(300'000, 0.1, 0.8);
    int end = row.first - 1;
    for (const SIndexRange &range : seen(row, {700, 8})) {
        QVERIFY(range.first > end);
        QVERIFY(range.end > range.first);
        end = range.end;
    }
    QVERIFY(end <= row.end);
}

void tst_VisibleElements::barsOfIndividualWidthsAreChosenByTheirEdges()
{
    RandomSeries random(2);
    int selected = 0;
    for (int round = 0; round < 100; ++round) {
        const int count = random.whole(5'000, 100'000);
        QVector<double> pairs;
        for (int i = 0; i < count; ++i)
            pairs << (random.oneIn(10) ? 0.0 : std::pow(10.0, random.real(-6.0, 0.0))) << 1.0;
        const BarEdges edges = BarEdges::of(pairs, 0.0);
        const SPixelRow pixels{random.whole(50, 1000), random.whole(4, 8)};
        const SShownPart shown{random.real(-0.2, 0.8) * edges.total(), random.real(0.1, 1.2) * edges.total()};
        const SIndexRange inView = edges.barsBetween(shown.left, shown.left + shown.width);
        const QVector<SIndexRange> ranges = elementsOnPixelCentres(edges, inView, shown, pixels);
        if (ranges == QVector<SIndexRange>{inView})
            continue;
        ++selected;
        const auto corner = [&](int edge) {
            const double x = edges.edge(edge);
            const float most = float(x);
            const float least = float(x - double(most));
            const float leftMost = float(shown.left);
            const float leftLeast = float(shown.left - double(leftMost));
            return Corner(((most - leftMost) + (least - leftLeast)) * float(2.0 / shown.width) - 1.0f, pixels);
        };
        int bar = inView.first;
        for (int range = 0; range <= ranges.size(); ++range) {
            for (const int end = range < ranges.size() ? ranges.at(range).first : inView.end; bar < end; ++bar)
                QVERIFY(!mayCoverACentre(corner(bar), corner(bar + 1), pixels));
            if (range < ranges.size())
                bar = ranges.at(range).end;
        }
    }
    QVERIFY(selected > 30);
}

void tst_VisibleElements::barsOfIndividualWidthsFarFromTheOriginAreDoubted()
{
    QVector<double> pairs{1e30, 1.0};
    for (int i = 0; i < 100'000; ++i)
        pairs << 1.0 << 1.0;
    const BarEdges edges = BarEdges::of(pairs, 0.0);
    const QVector<SIndexRange> all{{1, 100'001}};
    QCOMPARE(elementsOnPixelCentres(edges, {1, 100'001}, {1e30, 1e5}, {1000, 8}), all);
    const double infinity = std::numeric_limits<double>::infinity();
    QCOMPARE(elementsOnPixelCentres(edges, {1, 100'001}, {0.0, infinity}, {1000, 8}), all);
    pairs[0] = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(elementsOnPixelCentres(BarEdges::of(pairs, 0.0), {1, 100'001}, {0.0, 1e5}, {1000, 8}), all);
}

QTEST_APPLESS_MAIN(tst_VisibleElements)
#include "tst_VisibleElements.moc"
