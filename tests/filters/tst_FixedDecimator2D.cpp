// SPDX-License-Identifier: MIT
#include "filters/FixedDecimator2D.h"
#include "tests/support/Bits.h"
#include "tests/support/MetaTable.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

namespace {

/// The steps, one by one; entries beyond the series are dropped and the walk ends at the last pair.
QVector<double> plainResampling(const QVector<double> &in, int points, double areaWidth)
{
    const double bw = areaWidth / points;
    QVector<double> out(points, 0.0);
    double acc = in.at(0);
    double peak = in.at(1);
    double x = 0.0;
    int p = 0;
    for (int round = 0; round < points; ++round) {
        x += bw;
        while (x - bw / 1000 > acc) {
            if (2 * (p + 1) + 1 >= in.size())
                break;
            ++p;
            acc += in.at(2 * p);
            if (in.at(2 * p + 1) > peak)
                peak = in.at(2 * p + 1);
        }
        out[0] = bw;
        if (points > 2)
            out[2] = peak;
        peak = in.at(2 * p + 1);
    }
    return out;
}

const QRectF someArea(0.0, 0.0, 4.0, 0.0);

} // namespace

class tst_FixedDecimator2D : public QObject
{
    Q_OBJECT

private slots:
    void propertiesAndSignalsStandInOrder();
    void aNullAreaPublishesNothing();
    void aSeriesWithoutAPairPublishesNothing();
    void everyStepWritesToTheSameEntries();
    void theLastStepsPeakIsWritten();
    void fewPointsLeaveOutWhatDoesNotFit();
    void aSeriesShorterThanTheAreaStopsAtItsEnd();
    void everySeriesIsPublished();
    void randomSeriesAreExact();

    void theNumberOfPointsIsAtLeastOne();
    void aHugeNumberOfPointsIsBounded();
    void aNewNumberFiltersTheParentsSeriesAgain();
    void theSameNumberIsNoChange();
};

void tst_FixedDecimator2D::propertiesAndSignalsStandInOrder()
{
    const QMetaObject &meta = FixedDecimator2D::staticMetaObject;
    QCOMPARE(ownProperties(meta), QStringList{QStringLiteral("numPoint int write numPointChanged")});
    QCOMPARE(ownSignals(meta), QStringList{QStringLiteral("numPointChanged()")});
    QCOMPARE(FixedDecimator2D().numPoint(), 256);
}

void tst_FixedDecimator2D::aNullAreaPublishesNothing()
{
    FixedDecimator2D node;
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData({1.0, 5.0});
    QCOMPARE(changes.size(), 0);
    QVERIFY(node.data().isEmpty());
}

void tst_FixedDecimator2D::aSeriesWithoutAPairPublishesNothing()
{
    FixedDecimator2D node;
    node.setArea(someArea);
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData({});
    node.setData({1.0});
    QCOMPARE(changes.size(), 0);
    node.setData({1.0, 2.0, 3.0}); // the last width has no value
    QCOMPARE(changes.size(), 1);
}

void tst_FixedDecimator2D::everyStepWritesToTheSameEntries()
{
    FixedDecimator2D node;
    node.setArea(someArea);
    node.setNumPoint(4);
    node.setData({1.0, 5.0, 1.0, 7.0, 1.0, 2.0, 1.0, 3.0});
    COMPARE_BITS(node.data(), (QVector<double>{1.0, 0.0, 3.0, 0.0}));
}

void tst_FixedDecimator2D::theLastStepsPeakIsWritten()
{
    FixedDecimator2D node;
    node.setArea(someArea);
    node.setNumPoint(3);
    node.setData({2.0, 9.0, 1.0, 8.0, 0.25, 1.0, 0.25, 6.0, 0.5, 2.0}); // the last step begins in the bin of 8.0
    COMPARE_BITS(node.data(), (QVector<double>{4.0 / 3.0, 0.0, 8.0}));
}

void tst_FixedDecimator2D::fewPointsLeaveOutWhatDoesNotFit()
{
    FixedDecimator2D node;
    node.setArea(someArea);
    node.setNumPoint(1);
    node.setData({1.0, 5.0});
    COMPARE_BITS(node.data(), QVector<double>{4.0});
    node.setNumPoint(2);
    node.setData({1.0, 5.0});
    COMPARE_BITS(node.data(), (QVector<double>{2.0, 0.0}));
}

void tst_FixedDecimator2D::aSeriesShorterThanTheAreaStopsAtItsEnd()
{
    FixedDecimator2D node;
    node.setArea(QRectF(0.0, 0.0, 1e6, 1.0));
    node.setNumPoint(8);
    node.setData({1.0, 5.0, 1.0, 7.0, 1.0, 2.0});
    COMPARE_BITS(node.data(), (QVector<double>{125000.0, 0.0, 2.0, 0.0, 0.0, 0.0, 0.0, 0.0}));
}

void tst_FixedDecimator2D::everySeriesIsPublished()
{
    FixedDecimator2D node;
    node.setArea(someArea);
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData({1.0, 5.0});
    const QVector<double> published = node.data();
    node.setData({1.0, 5.0});
    node.setData({1.0, 6.0});
    QCOMPARE(changes.size(), 3);
    QCOMPARE(published.at(2), 5.0); // what was published is left alone
}

void tst_FixedDecimator2D::randomSeriesAreExact()
{
    RandomSeries random(1);
    for (int round = 0; round < 10000; ++round) {
        QVector<double> in = random.series(random.size() % 500 + 2);
        for (int i = 0; i < in.size() && round % 3; i += 2)
            in[i] = random.real(0.0, 2.0); // else the widths are odd
        FixedDecimator2D node;
        const double width = random.oneIn(50) ? std::numeric_limits<double>::infinity() : random.real(0.1, in.size());
        node.setArea(QRectF(random.real(-9.0, 9.0), 0.0, width, 1.0));
        node.setNumPoint(random.whole(1, 40));
        node.setData(in);
        COMPARE_BITS(node.data(), plainResampling(in, node.numPoint(), width));
    }
}

// numPoint

void tst_FixedDecimator2D::theNumberOfPointsIsAtLeastOne()
{
    FixedDecimator2D node;
    QSignalSpy changes(&node, &FixedDecimator2D::numPointChanged);
    node.setNumPoint(0);
    QCOMPARE(node.numPoint(), 1);
    node.setNumPoint(-5);
    QCOMPARE(changes.size(), 1);
}

void tst_FixedDecimator2D::aHugeNumberOfPointsIsBounded()
{
    FixedDecimator2D node;
    node.setArea(someArea);
    node.setNumPoint(std::numeric_limits<int>::max());
    QCOMPARE(node.numPoint(), FixedDecimator2D::maximumPoints);
    node.setData({1.0, 5.0});
    QCOMPARE(node.data().size(), FixedDecimator2D::maximumPoints);
}

void tst_FixedDecimator2D::aNewNumberFiltersTheParentsSeriesAgain()
{
    Filter1D parent;
    parent.setArea(someArea);
    parent.setData({1.0, 5.0});
    FixedDecimator2D node;
    parent.addFilter(&node);
    QStringList order;
    connect(&node, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("data")); });
    connect(&node, &FixedDecimator2D::numPointChanged, this, [&] { order.append(QStringLiteral("numPoint")); });
    node.setNumPoint(4);
    COMPARE_BITS(node.data(), (QVector<double>{1.0, 0.0, 5.0, 0.0}));
    QCOMPARE(order, (QStringList{QStringLiteral("data"), QStringLiteral("numPoint")}));
}

void tst_FixedDecimator2D::theSameNumberIsNoChange()
{
    FixedDecimator2D node;
    QSignalSpy changes(&node, &FixedDecimator2D::numPointChanged);
    node.setNumPoint(256);
    QCOMPARE(changes.size(), 0);
    node.setNumPoint(1);
    node.setNumPoint(-7); // stored as 1, which it is
    QCOMPARE(changes.size(), 1);
}

QTEST_GUILESS_MAIN(tst_FixedDecimator2D)
#include "tst_FixedDecimator2D.moc"
