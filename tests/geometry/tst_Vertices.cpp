// SPDX-License-Identifier: MIT
#include "geometry/Vertices.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

#include <cstring>

namespace {

/// Single-precision numbers with the bits that decide whether two arrays are the same.
QByteArray bitsOf(const QVector<float> &numbers)
{
    return QByteArray(reinterpret_cast<const char *>(numbers.constData()), numbers.size() * int(sizeof(float)));
}

/// A number that no vertex has, to show what was not written.
constexpr float untouched = -12345.0f;

} // namespace

class tst_Vertices : public QObject
{
    Q_OBJECT

private slots:
    void aBarHasTwoCornersAtZeroAndTwoAtItsValue();
    void barHeightsHaveTheBitsOfThePlainLoop();
    void anAreaHasTwoFillVerticesAndOneOfTheBorderPerPoint();
    void elementsOfALongSeriesHaveTheirCornersWhereTheirEdgesArePlaced();
    void areaVerticesHaveTheBitsOfThePlainLoop();
    void pointNumbersAreRoundedToSinglePrecision();
    void cornersCarryBothPartsOfTheirPosition();
    void cornersHaveTheBitsOfThePlainLoop();
    void indicesCoverEachBarWithTwoTriangles();
    void indicesAreAppendedToThoseThatAreThere();
};

void tst_Vertices::aBarHasTwoCornersAtZeroAndTwoAtItsValue()
{
    const double values[] = {1.5, -2.0, 3.0};
    QVector<float> heights(12);
    writeBarHeights(values, 3, heights.data());
    QCOMPARE(heights, (QVector<float>{0, 0, 1.5f, 1.5f, 0, 0, -2, -2, 0, 0, 3, 3}));
}

void tst_Vertices::barHeightsHaveTheBitsOfThePlainLoop()
{
    RandomSeries random(1);
    for (int round = 0; round < 2000; ++round) {
        const QVector<double> series = random.series();
        QVector<float> expected;
        for (const double value : series)
            expected << 0.0f << 0.0f << float(value) << float(value);
        expected << untouched;
        QVector<float> heights(4 * series.size() + 1, untouched);
        writeBarHeights(series.constData(), series.size(), heights.data());
        QCOMPARE(bitsOf(heights), bitsOf(expected));
    }
}

void tst_Vertices::anAreaHasTwoFillVerticesAndOneOfTheBorderPerPoint()
{
    const double values[] = {1.0, 3.0, 2.0};
    QVector<SPointVertex> fill(6);
    QVector<SPointVertex> border(3);
    writeFillVertices(values, 10, 3, fill.data());
    writeBorderVertices(values, 10, 3, border.data());
    QCOMPARE(fill, (QVector<SPointVertex>{{10, 0}, {10, 1}, {11, 0}, {11, 3}, {12, 0}, {12, 2}}));
    QCOMPARE(border, (QVector<SPointVertex>{{10, 1}, {11, 3}, {12, 2}}));
}

void tst_Vertices::elementsOfALongSeriesHaveTheirCornersWhereTheirEdgesArePlaced()
{
    const double values[] = {9.0, 1.0, 3.0, 2.0};
    const SPlacedEdges halves{-2.0, 0.5, 0.0f, 1.0f};
    QVector<float> corners(16);
    writeBars(values, {1, 3}, halves, corners.data());
    QCOMPARE(corners, (QVector<float>{-1.5f, 0, -1, 0, -1.5f, 1, -1, 1, -1, 0, -0.5f, 0, -1, 3, -0.5f, 3}));
    writeSpans(values, {1, 3}, halves, corners.data());
    QCOMPARE(corners, (QVector<float>{-1.5f, 0, -1.5f, 1, -1, 0, -1, 3, -1, 0, -1, 3, -0.5f, 0, -0.5f, 2}));
    QVector<float> ends(8);
    writeSegments(values, {1, 3}, halves, ends.data());
    QCOMPARE(ends, (QVector<float>{-1.5f, 1, -1, 3, -1, 3, -0.5f, 2}));
}

void tst_Vertices::areaVerticesHaveTheBitsOfThePlainLoop()
{
    RandomSeries random(2);
    for (int round = 0; round < 1000; ++round) {
        const QVector<double> series = random.series();
        const int first = random.whole(0, 50'000'000);
        QVector<float> expectedFill;
        QVector<float> expectedBorder;
        for (int i = 0; i < series.size(); ++i) {
            const float x = float(first + i);
            const float y = float(series.at(i));
            expectedFill << x << 0.0f << x << y;
            expectedBorder << x << y;
        }
        QVector<float> fill(4 * series.size());
        QVector<float> border(2 * series.size());
        writeFillVertices(series.constData(), first, series.size(), reinterpret_cast<SPointVertex *>(fill.data()));
        writeBorderVertices(series.constData(), first, series.size(), reinterpret_cast<SPointVertex *>(border.data()));
        QCOMPARE(bitsOf(fill), bitsOf(expectedFill));
        QCOMPARE(bitsOf(border), bitsOf(expectedBorder));
    }
}

void tst_Vertices::pointNumbersAreRoundedToSinglePrecision()
{
    const double values[] = {1.0, 1.0, 1.0};
    QVector<SPointVertex> border(3);
    writeBorderVertices(values, 16'777'216, 3, border.data()); // 2^24: odd numbers have no float any more
    QCOMPARE(border, (QVector<SPointVertex>{{16777216.0f, 1}, {16777216.0f, 1}, {16777218.0f, 1}}));
}

void tst_Vertices::cornersCarryBothPartsOfTheirPosition()
{
    const double pairs[] = {2.5, 7.0};
    SHResVertex corners[4];
    writeHResVertices(pairs, 100'000'000.5, 0.0, 1, corners);
    QCOMPARE(corners[0].xMost, 100'000'000.0f);
    QCOMPARE(corners[0].xLeast, 0.5f);
    QCOMPARE(corners[0].value, 0.0f);
    QCOMPARE(corners[3].xMost, 100'000'000.0f);
    QCOMPARE(corners[3].xLeast, 3.0f);
    QCOMPARE(corners[3].value, 7.0f);
    writeHResVertices(pairs, 100'000'000.5, 100'000'000.0, 1, corners);
    QCOMPARE(corners[0].xMost, 0.5f);
    QCOMPARE(corners[3].xMost, 3.0f);
    QCOMPARE(corners[3].xLeast, 0.0f);
}

void tst_Vertices::cornersHaveTheBitsOfThePlainLoop()
{
    RandomSeries random(3);
    for (int round = 0; round < 1000; ++round) {
        const QVector<double> pairs = random.series(2 * random.whole(0, 300));
        const int count = pairs.size() / 2;
        const double origin = random.oneIn(2) ? 0.0 : random.real(-1e9, 1e9);
        QVector<double> edges{random.real(-1e9, 1e9)};
        for (int bar = 0; bar < count; ++bar)
            edges << edges.last() + pairs.at(2 * bar);
        QVector<float> expected;
        for (int bar = 0; bar < count; ++bar) {
            for (const bool top : {false, true}) {
                for (const double x : {edges.at(bar) - origin, edges.at(bar + 1) - origin})
                    expected << float(x) << float(x - double(float(x))) << (top ? float(pairs.at(2 * bar + 1)) : 0.0f);
            }
        }
        QVector<float> corners(12 * count);
        writeHResVertices(pairs.constData(), edges.first(), origin, count,
                          reinterpret_cast<SHResVertex *>(corners.data()));
        QCOMPARE(bitsOf(corners), bitsOf(expected));
    }
}

void tst_Vertices::indicesCoverEachBarWithTwoTriangles()
{
    QVector<uint> indices;
    appendBarIndices(indices, 0, 2);
    QCOMPARE(indices, (QVector<uint>{1, 2, 0, 1, 2, 3, 5, 6, 4, 5, 6, 7}));
}

void tst_Vertices::indicesAreAppendedToThoseThatAreThere()
{
    for (const int present : {0, 1, 1000, 1024, 3000}) {
        QVector<uint> inTwoSteps;
        appendBarIndices(inTwoSteps, 0, present);
        appendBarIndices(inTwoSteps, present, 3000);
        QVector<uint> atOnce;
        appendBarIndices(atOnce, 0, 3000);
        QCOMPARE(inTwoSteps, atOnce);
        QCOMPARE(atOnce.size(), 18000);
        QCOMPARE(atOnce.last(), 11999u);
    }
}

QTEST_APPLESS_MAIN(tst_Vertices)
#include "tst_Vertices.moc"
