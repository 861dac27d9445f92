// SPDX-License-Identifier: MIT
#include "filters/MinimalWidth2D.h"
#include "tests/support/Bits.h"
#include "tests/support/MetaTable.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// The steps, one by one.
QVector<double> plainMerge(const QVector<double> &in, double mergeWidth)
{
    QVector<double> out;
    double acc = 0.0;
    double peak = 0.0;
    for (int i = 0; i < in.size() / 2; ++i) {
        const double w = in.at(2 * i);
        const double v = in.at(2 * i + 1);
        if (w >= mergeWidth && acc == 0.0) {
            out << w << v;
            continue;
        }
        acc += w;
        if (v > peak)
            peak = v;
        if (acc < mergeWidth)
            continue;
        out << mergeWidth << peak;
        acc -= mergeWidth;
        peak = v;
        if (acc >= mergeWidth) {
            out << acc << peak;
            acc = 0.0;
            peak = 0.0;
        }
    }
    if (!qFuzzyCompare(acc, 0.0))
        out << acc << peak;
    return out;
}

QVector<double> merged(const QVector<double> &in, double mergeWidth)
{
    MinimalWidth2D node;
    node.setPercMargin(0.0);
    node.setMergeWidth(mergeWidth);
    node.setData(in);
    return node.data();
}

} // namespace

class tst_MinimalWidth2D : public QObject
{
    Q_OBJECT

private slots:
    void propertiesAndSignalsStandInOrder();
    void narrowBinsAreMerged();
    void wideBinsStayAsTheyAre();
    void theRestBecomesTheLastBin();
    void anExactFitKeepsItsPeakForTheNextRun();
    void aWidthWithoutAValueIsIgnored();
    void everySeriesIsPublished();
    void oddWidthsEndAndStayWithinBounds();
    void randomSeriesAreExact();
    void longSeriesAreExact();

    void aWidthWithinTheMarginIsIgnored();
    void theEdgesOfTheMarginAreTaken();
    void aNegativeWidthIsIgnored();
    void aNewWidthFiltersTheParentsSeriesAgain();
    void fromZeroTheSameWidthIsTakenAgain();
    void aMarginDoesNotFilter();
};

void tst_MinimalWidth2D::propertiesAndSignalsStandInOrder()
{
    const QMetaObject &meta = MinimalWidth2D::staticMetaObject;
    QCOMPARE(ownProperties(meta),
             (QStringList{QStringLiteral("mergeWidth double write mergeWidthChanged"),
                          QStringLiteral("percMargin double write percMarginChanged")}));
    QCOMPARE(ownSignals(meta),
             (QStringList{QStringLiteral("mergeWidthChanged()"), QStringLiteral("percMarginChanged()")}));
    MinimalWidth2D node;
    QCOMPARE(node.mergeWidth(), 1.0);
    QCOMPARE(node.percMargin(), 0.2);
}

void tst_MinimalWidth2D::narrowBinsAreMerged()
{
    MinimalWidth2D node;
    node.setData({0.4, 5.0, 0.4, 7.0, 0.4, 1.0, 2.0, 3.0});
    const QVector<double> expected{1.0, 7.0, 1.0, 3.0, 1.2, 3.0};
    QCOMPARE(node.data().size(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QVERIFY(std::abs(node.data().at(i) - expected.at(i)) < 1e-12);
}

void tst_MinimalWidth2D::wideBinsStayAsTheyAre()
{
    const QVector<double> wide{1.0, -5.0, 2.0, 7.0, 1.5, notANumber};
    COMPARE_BITS(merged(wide, 1.0), wide);
}

void tst_MinimalWidth2D::theRestBecomesTheLastBin()
{
    COMPARE_BITS(merged({0.25, 5.0, 0.25, 7.0}, 1.0), (QVector<double>{0.5, 7.0}));
    COMPARE_BITS(merged({0.25, -5.0}, 1.0), (QVector<double>{0.25, 0.0})); // the peak starts at 0
    COMPARE_BITS(merged({}, 1.0), QVector<double>{});
}

void tst_MinimalWidth2D::anExactFitKeepsItsPeakForTheNextRun()
{
    // 0.5 + 0.5 falls to exactly 0.0; the peak of 9.0 goes into the next merged bin, not into a wide one.
    COMPARE_BITS(merged({0.5, 1.0, 0.5, 9.0, 0.5, 2.0, 0.5, 3.0}, 1.0), (QVector<double>{1.0, 9.0, 1.0, 9.0}));
    COMPARE_BITS(merged({0.5, 1.0, 0.5, 9.0, 2.0, 2.0, 0.5, 3.0}, 1.0),
                 (QVector<double>{1.0, 9.0, 2.0, 2.0, 0.5, 9.0}));
}

void tst_MinimalWidth2D::aWidthWithoutAValueIsIgnored()
{
    COMPARE_BITS(merged({2.0, 5.0, 3.0}, 1.0), (QVector<double>{2.0, 5.0}));
    COMPARE_BITS(merged({2.0}, 1.0), QVector<double>{});
}

void tst_MinimalWidth2D::everySeriesIsPublished()
{
    MinimalWidth2D node;
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    const QVector<double> series{2.0, 5.0};
    node.setData(series);
    const QVector<double> published = node.data();
    node.setData(series);
    node.setData({});
    node.setData({});
    QCOMPARE(changes.size(), 4);
    QVERIFY(node.data().isEmpty());
    COMPARE_BITS(published, series);
}

void tst_MinimalWidth2D::oddWidthsEndAndStayWithinBounds()
{
    RandomSeries random(1);
    const double odd[] = {0.0, -0.0, 0.5, 1.0, 2.0, -0.5, -1.0, infinity, -infinity, notANumber, 1e308, 5e-324};
    for (int round = 0; round < 20000; ++round) {
        QVector<double> in;
        for (int i = random.whole(0, 20); i > 0; --i)
            in << odd[random.whole(0, int(std::size(odd)) - 1)] << random.whole(-3, 3);
        const double mergeWidth = odd[random.whole(0, int(std::size(odd)) - 1)];
        MinimalWidth2D node;
        node.setPercMargin(0.0);
        node.setMergeWidth(mergeWidth);
        node.setData(in);
        COMPARE_BITS(node.data(), plainMerge(in, node.mergeWidth()));
        QVERIFY(node.data().size() <= in.size() + 4);
    }
}

void tst_MinimalWidth2D::randomSeriesAreExact()
{
    RandomSeries random(2);
    for (int round = 0; round < 5000; ++round) {
        QVector<double> in = random.series();
        for (int i = 0; i < in.size(); i += 2) {
            if (!random.oneIn(20))
                in[i] = random.oneIn(2) ? random.real(0.0, 2.0) : 0.25 * random.whole(0, 8);
        }
        const double mergeWidth = random.oneIn(2) ? 1.0 : random.real(0.0, 5.0);
        COMPARE_BITS(merged(in, mergeWidth), plainMerge(in, mergeWidth));
    }
}

void tst_MinimalWidth2D::longSeriesAreExact()
{
    RandomSeries random(3);
    for (int round = 0; round < 10; ++round) {
        QVector<double> in;
        for (int i = random.whole(90'000, 110'000); i > 0; --i)
            in << random.real(0.0, 1.5) << random.real(-1.0, 1.0);
        COMPARE_BITS(merged(in, 1.0), plainMerge(in, 1.0));
    }
}

// properties

void tst_MinimalWidth2D::aWidthWithinTheMarginIsIgnored()
{
    MinimalWidth2D node;
    QSignalSpy changes(&node, &MinimalWidth2D::mergeWidthChanged);
    for (const double width : {1.1, 1.19, 0.81, 1.0})
        node.setMergeWidth(width);
    QCOMPARE(node.mergeWidth(), 1.0);
    QCOMPARE(changes.size(), 0);
    node.setMergeWidth(1.3);
    QCOMPARE(node.mergeWidth(), 1.3);
    QCOMPARE(changes.size(), 1);
}

void tst_MinimalWidth2D::theEdgesOfTheMarginAreTaken()
{
    MinimalWidth2D node;
    node.setPercMargin(0.25);
    node.setMergeWidth(1.25);
    QCOMPARE(node.mergeWidth(), 1.25);
    node.setPercMargin(0.5);
    node.setMergeWidth(0.625);
    QCOMPARE(node.mergeWidth(), 0.625);
}

void tst_MinimalWidth2D::aNegativeWidthIsIgnored()
{
    MinimalWidth2D node;
    QSignalSpy changes(&node, &MinimalWidth2D::mergeWidthChanged);
    node.setMergeWidth(-1.0);
    node.setMergeWidth(-infinity);
    QCOMPARE(node.mergeWidth(), 1.0);
    QCOMPARE(changes.size(), 0);
}

void tst_MinimalWidth2D::aNewWidthFiltersTheParentsSeriesAgain()
{
    Filter1D parent;
    parent.setData({1.0, 5.0, 1.0, 7.0});
    MinimalWidth2D node;
    parent.addFilter(&node);
    QStringList order;
    connect(&node, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("data")); });
    connect(&node, &MinimalWidth2D::mergeWidthChanged, this, [&] { order.append(QStringLiteral("mergeWidth")); });
    node.setMergeWidth(2.0);
    COMPARE_BITS(node.data(), (QVector<double>{2.0, 7.0}));
    QCOMPARE(order, (QStringList{QStringLiteral("data"), QStringLiteral("mergeWidth")}));
}

void tst_MinimalWidth2D::fromZeroTheSameWidthIsTakenAgain()
{
    MinimalWidth2D node;
    QSignalSpy changes(&node, &MinimalWidth2D::mergeWidthChanged);
    node.setMergeWidth(0.0);
    node.setMergeWidth(0.0); // no width is strictly within a margin of 0
    QCOMPARE(changes.size(), 2);
}

void tst_MinimalWidth2D::aMarginDoesNotFilter()
{
    Filter1D parent;
    parent.setData({1.0, 5.0});
    MinimalWidth2D node;
    parent.addFilter(&node);
    QSignalSpy data(&node, &Filter1D::dataChanged);
    QSignalSpy changes(&node, &MinimalWidth2D::percMarginChanged);
    node.setPercMargin(0.2 + 1e-15);
    QCOMPARE(changes.size(), 0);
    node.setPercMargin(0.3);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(node.percMargin(), 0.3);
    QCOMPARE(data.size(), 0);
}

QTEST_GUILESS_MAIN(tst_MinimalWidth2D)
#include "tst_MinimalWidth2D.moc"
