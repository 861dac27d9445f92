// SPDX-License-Identifier: MIT
#include "geometry/BarEdges.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

BarEdges edgesOf(const QVector<double> &pairs)
{
    return BarEdges::of(pairs, 0.0);
}

/// The plain scan over all bars.
SIndexRange scan(const QVector<double> &pairs, double left, double right)
{
    const int count = pairs.size() / 2;
    double x = 0.0;
    int k = 0;
    while (left > x && k < count)
        x += pairs.at(2 * k++);
    const int start = std::max(k - 1, 0);
    while (right > x && k < count)
        x += pairs.at(2 * k++);
    return {start, k};
}

/// Pairs whose widths are drawn from `width()`; the values do not matter.
template <class Width>
QVector<double> pairsOf(int count, Width &&width)
{
    QVector<double> pairs;
    for (int i = 0; i < count; ++i)
        pairs << width() << double(i);
    return pairs;
}

/// A width of one of the kinds below.
double widthOf(int kind, QRandomGenerator &random)
{
    const double plain = random.generateDouble();
    const bool rare = random.bounded(40) == 0;
    switch (kind) {
    case 1:
        return random.bounded(3) ? 0.0 : plain;
    case 2:
        return plain * std::pow(10.0, random.bounded(24) - 12);
    case 3:
        return rare ? -plain : plain;
    case 4:
        return rare ? notANumber : plain;
    case 5:
        return rare ? infinity : plain;
    case 6:
        return rare ? (random.bounded(2) ? infinity : -infinity) : plain;
    default:
        return plain;
    }
}

void addWidthKinds()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("positive widths") << 0;
    QTest::newRow("many of width zero") << 1;
    QTest::newRow("very different widths") << 2;
    QTest::newRow("some negative") << 3;
    QTest::newRow("some no numbers") << 4;
    QTest::newRow("some infinite") << 5;
    QTest::newRow("infinities of both signs") << 6;
}

} // namespace

class tst_BarEdges : public QObject
{
    Q_OBJECT

private slots:
    void nothingHasNoBars();
    void aNumberWithoutPartnerIsNoBar();
    void edgesAreTheSumsOfWhatLiesBeforeThem();
    void theMaximumBeginsWithTheFirstValue();
    void valuesBeyondSinglePrecisionAreNotFinite();
    void theRangeGoesFromTheBarOfTheLeftEdgeToThatOfTheRight();
    void theRangeIsWhatAScanFinds_data();
    void theRangeIsWhatAScanFinds();
    void edgesAreFoundAndAddedAsAScanDoes_data();
    void edgesAreFoundAndAddedAsAScanDoes();
    void edgesAreFoundWhereverTheyLie_data();
    void edgesAreFoundWhereverTheyLie();
    void maximaHaveTheBitsOfThePlainLoop();
    void itAnswersForItsSeriesAndStartOnly();
    void aSearchTouchesFewBarsOfMany();
};

void tst_BarEdges::nothingHasNoBars()
{
    const BarEdges edges;
    QCOMPARE(edges.barCount(), 0);
    QCOMPARE(edges.total(), 0.0);
    QCOMPARE(edges.barsBetween(0.0, 10.0).first, 0);
    QCOMPARE(edges.barsBetween(0.0, 10.0).end, 0);
}

void tst_BarEdges::aNumberWithoutPartnerIsNoBar()
{
    QCOMPARE(edgesOf({3.0}).barCount(), 0);
    const BarEdges edges = edgesOf({1.0, 5.0, 2.0, 3.0, 7.0});
    QCOMPARE(edges.barCount(), 2);
    QCOMPARE(edges.total(), 3.0);
}

void tst_BarEdges::edgesAreTheSumsOfWhatLiesBeforeThem()
{
    const BarEdges edges = BarEdges::of({1.0, 5.0, 2.0, 3.0, 0.5, -1.0}, 10.0);
    QVector<double> seen;
    for (int edge = 0; edge <= 3; ++edge)
        seen << edges.edge(edge);
    QCOMPARE(seen, (QVector<double>{10.0, 11.0, 13.0, 13.5}));
    const BarEdges many = edgesOf(QVector<double>(2000, 1.0));
    for (const int edge : {0, 1, 255, 256, 257, 999, 1000})
        QCOMPARE(many.edge(edge), double(edge));
}

void tst_BarEdges::theMaximumBeginsWithTheFirstValue()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(edgesOf({}).maximum(), 0.0);
    QCOMPARE(edgesOf({1.0, 5.0, 2.0, 7.0, 0.5, nan}).maximum(), 7.0);
    QCOMPARE(edgesOf({1.0, -5.0, 2.0, -3.0}).maximum(), -3.0);
    QVERIFY(std::isnan(edgesOf({1.0, nan, 2.0, 3.0}).maximum()));
    QVector<double> many(4000, 1.0);
    many[3001] = 2.0;
    QCOMPARE(edgesOf(many).maximum(), 2.0);
}

void tst_BarEdges::valuesBeyondSinglePrecisionAreNotFinite()
{
    QVector<double> pairs(4000, 1.0);
    QVERIFY(edgesOf(pairs).areValuesFinite());
    for (const double strange :
         {1e300, -1e39, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        pairs[1001] = strange;
        QVERIFY(!edgesOf(pairs).areValuesFinite());
    }
    pairs[1001] = 1.0;
    pairs[1000] = 1e300; // a width
    QVERIFY(edgesOf(pairs).areValuesFinite());
}

void tst_BarEdges::theRangeGoesFromTheBarOfTheLeftEdgeToThatOfTheRight()
{
    const BarEdges edges = edgesOf({1.0, 0.0, 2.0, 0.0, 4.0, 0.0, 8.0, 0.0}); // edges 0 1 3 7 15
    QCOMPARE(edges.barsBetween(2.0, 6.5).first, 1);
    QCOMPARE(edges.barsBetween(2.0, 6.5).end, 3);
    QCOMPARE(edges.barsBetween(0.0, 15.0).first, 0);
    QCOMPARE(edges.barsBetween(0.0, 15.0).end, 4);
    QCOMPARE(edges.barsBetween(3.0, 3.0).first, 1); // an edge belongs to the bar on its left
    QCOMPARE(edges.barsBetween(3.0, 3.0).end, 2);
    QCOMPARE(edges.barsBetween(-5.0, -1.0).end, 0);
    QCOMPARE(edges.barsBetween(20.0, 30.0).first, 3);
    QCOMPARE(edges.barsBetween(20.0, 30.0).end, 4);
}

void tst_BarEdges::theRangeIsWhatAScanFinds_data()
{
    addWidthKinds();
}

void tst_BarEdges::theRangeIsWhatAScanFinds()
{
    QFETCH(int, kind);
    QRandomGenerator random(20240517u + uint(kind));
    const auto width = [&] { return widthOf(kind, random); };
    for (int round = 0; round < 400; ++round) {
        const int sizes[] = {0, 1, 2, 3, 7, 255, 256, 257, 511, 512, 513, 1000, int(random.bounded(3000))};
        const QVector<double> pairs = pairsOf(sizes[random.bounded(int(std::size(sizes)))], width);
        const BarEdges edges = edgesOf(pairs);
        double sum = 0.0;
        QVector<double> positions{-1.0, 0.0, infinity, -infinity, notANumber};
        for (int i = 0; i + 1 < pairs.size(); i += 2) {
            sum += pairs.at(i);
            if (random.bounded(20) == 0)
                positions << sum << sum + 1e-9 << sum - 0.3;
        }
        positions << sum << 1.1 * sum;
        for (int probe = 0; probe < 30; ++probe) {
            double left = positions.at(random.bounded(positions.size()));
            double right = positions.at(random.bounded(positions.size()));
            if (left > right)
                std::swap(left, right);
            const SIndexRange expected = scan(pairs, left, right);
            const SIndexRange found = edges.barsBetween(left, right);
            QCOMPARE(found.first, expected.first);
            QCOMPARE(found.end, expected.end);
        }
    }
}

void tst_BarEdges::edgesAreFoundAndAddedAsAScanDoes_data()
{
    addWidthKinds();
}

void tst_BarEdges::edgesAreFoundAndAddedAsAScanDoes()
{
    QFETCH(int, kind);
    QRandomGenerator random(7u + uint(kind));
    for (int round = 0; round < 200; ++round) {
        const double start = round % 3 ? 1e9 * (random.generateDouble() - 0.5) : 0.0;
        const QVector<double> pairs = pairsOf(int(random.bounded(2000)), [&] { return widthOf(kind, random); });
        const BarEdges edges = BarEdges::of(pairs, start);
        QVector<double> plain{start};
        for (int i = 0; i + 1 < pairs.size(); i += 2)
            plain.append(plain.last() + pairs.at(i));
        for (int probe = 0; probe < 30; ++probe) {
            const int index = int(random.bounded(plain.size()));
            const double edge = edges.edge(index);
            QCOMPARE(std::memcmp(&edge, &plain.at(index), sizeof edge), 0);
            const double x = plain.at(index) + (probe % 3 - 1) * 0.3;
            int expected = 0;
            while (x > plain.at(expected) && expected < plain.size() - 1)
                ++expected;
            QCOMPARE(edges.edgeAtOrBeyond(x), expected);
        }
    }
}

void tst_BarEdges::maximaHaveTheBitsOfThePlainLoop()
{
    QRandomGenerator random(3);
    for (int round = 0; round < 300; ++round) {
        QVector<double> pairs = pairsOf(int(random.bounded(2000)), [] { return 1.0; });
        for (int i = 1; i < pairs.size(); i += 2)
            pairs[i] = random.bounded(30) == 0 ? notANumber : random.generateDouble() - (round % 2);
        const BarEdges edges = edgesOf(pairs);
        for (int probe = 0; probe < 20; ++probe) {
            const int first = int(random.bounded(pairs.size() / 2 + 1));
            const int end = first + int(random.bounded(pairs.size() / 2 + 1 - first));
            double maximum = 0.0;
            for (int bar = first; bar < end; ++bar)
                maximum = pairs.at(2 * bar + 1) > maximum ? pairs.at(2 * bar + 1) : maximum;
            const double found = edges.maximumIn(first, end);
            QCOMPARE(std::memcmp(&found, &maximum, sizeof found), 0);
        }
    }
}

void tst_BarEdges::itAnswersForItsSeriesAndStartOnly()
{
    QVector<double> pairs{1.0, 5.0, 2.0, 3.0};
    const BarEdges edges = BarEdges::of(pairs, 2.0);
    QVERIFY(edges.isOf(pairs, 2.0));
    QVERIFY(!edges.isOf(pairs, 0.0));
    pairs[0] = 3.0; // detaches
    QVERIFY(!edges.isOf(pairs, 2.0));
    QVERIFY(BarEdges().isOf({}, 0.0));
}

void tst_BarEdges::edgesAreFoundWhereverTheyLie_data()
{
    QTest::addColumn<QVector<double>>("widths"); // of one bar after the other, and again from the first one on
    QTest::newRow("evenly spaced") << QVector<double>{1.0};
    QTest::newRow("most at the left") << QVector<double>(300, 1e-6) + QVector<double>{1e9};
    QTest::newRow("all at the left but one") << QVector<double>(99'999, 1.0) + QVector<double>{1e12};
    QTest::newRow("all at the right but one") << QVector<double>{1e12} + QVector<double>(99'999, 1.0);
    QTest::newRow("without end") << QVector<double>(99'999, 1.0) + QVector<double>{infinity};
    QTest::newRow("all at one place") << QVector<double>{0.0};
}

/// The search begins where an edge would be if all bars had one width.
void tst_BarEdges::edgesAreFoundWhereverTheyLie()
{
    QFETCH(QVector<double>, widths);
    constexpr int count = 100'000;
    int bar = 0;
    const BarEdges edges = edgesOf(pairsOf(count, [&] { return widths.at(bar++ % widths.size()); }));
    QVector<double> plain{0.0};
    for (int i = 0; i < count; ++i)
        plain.append(plain.last() + widths.at(i % widths.size()));
    QRandomGenerator random(11u);
    for (int probe = 0; probe < 2000; ++probe) {
        const double x = plain.at(int(random.bounded(plain.size()))) + (probe % 3 - 1) * 0.3;
        const auto expected = std::lower_bound(plain.cbegin(), plain.cend() - 1, x) - plain.cbegin();
        QCOMPARE(edges.edgeAtOrBeyond(x), int(expected));
    }
}

void tst_BarEdges::aSearchTouchesFewBarsOfMany()
{
    constexpr int count = 4'000'000;
    const QVector<double> pairs = pairsOf(count, [] { return 0.5; });
    const BarEdges edges = edgesOf(pairs);
    // A scan reads some 2 million widths for each of these: more than a minute in all.
    for (int i = 0; i < 100'000; ++i) {
        const double left = 0.5 * (count / 2 + i) + 0.25;
        const SIndexRange range = edges.barsBetween(left, left + 5.0);
        QCOMPARE(range.first, count / 2 + i);
        QCOMPARE(range.end, count / 2 + i + 11);
    }
}

QTEST_APPLESS_MAIN(tst_BarEdges)
#include "tst_BarEdges.moc"
