// SPDX-License-Identifier: MIT
#include "filters/FixedDecimatorU64.h"
#include "tests/support/Bits.h"
#include "tests/support/MetaTable.h"
#include "tests/support/PlainBuckets.h"
#include "tests/support/RandomSeries.h"
#include "tests/support/RecordingPlotter.h"

#include <QtTest>

namespace {

const QRectF someArea(0.0, 0.0, 1.0, 0.0);

} // namespace

class tst_FixedDecimatorU64 : public QObject
{
    Q_OBJECT

private slots:
    void propertiesAndSignalsStandInOrder();
    void aNewNodeHoldsZeros();
    void aNullAreaPublishesNothing();
    void anEmptySeriesPublishesNothing();
    void everySeriesIsPublished();
    void anAreaThatIsSetLaterDoesNotFilter();
    void fourValuesABucket();
    void negativeValuesSurvive();
    void moreBucketsThanValuesLeaveZerosAndWhatWasThere();
    void whatWasPublishedIsLeftAlone();
    void randomSeriesAreExact();
    void longSeriesAreExact();

    void theNumberOfPointsIsAtLeastOne();
    void theNumberOfPointsIsAtMostThatOfTheParent();
    void aParentWithoutDataSetsNoBound();
    void aHugeNumberOfPointsIsBounded();
    void aNewNumberFiltersTheParentsSeriesAgain();
    void aNewNumberWithoutAParentClears();
    void theSameNumberIsNoChange();
};

void tst_FixedDecimatorU64::propertiesAndSignalsStandInOrder()
{
    const QMetaObject &meta = FixedDecimatorU64::staticMetaObject;
    QCOMPARE(ownProperties(meta), QStringList{QStringLiteral("numPoint int write numPointChanged")});
    QCOMPARE(ownSignals(meta), QStringList{QStringLiteral("numPointChanged()")});
}

void tst_FixedDecimatorU64::aNewNodeHoldsZeros()
{
    FixedDecimatorU64 node;
    QCOMPARE(node.numPoint(), 256);
    COMPARE_BITS(node.data(), QVector<double>(256, 0.0));
    RecordingPlotter plotter;
    node.addPlotter(&plotter);
    COMPARE_BITS(plotter.series.last(), QVector<double>(256, 0.0));
}

void tst_FixedDecimatorU64::aNullAreaPublishesNothing()
{
    FixedDecimatorU64 node;
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData(QVector<double>(1024, 1.0));
    QCOMPARE(changes.size(), 0);
    COMPARE_BITS(node.data(), QVector<double>(256, 0.0));
    node.setArea(QRectF(0.0, 0.0, 0.0, 1.0)); // a height is enough
    node.setData(QVector<double>(1024, 1.0));
    QCOMPARE(changes.size(), 1);
}

void tst_FixedDecimatorU64::anEmptySeriesPublishesNothing()
{
    FixedDecimatorU64 node;
    node.setArea(someArea);
    node.setData(QVector<double>(1024, 1.0));
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData({});
    QCOMPARE(changes.size(), 0);
    COMPARE_BITS(node.data(), QVector<double>(256, 1.0));
}

void tst_FixedDecimatorU64::everySeriesIsPublished()
{
    FixedDecimatorU64 node;
    node.setArea(someArea);
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    const QVector<double> series(1024, 1.0);
    node.setData(series);
    node.setData(series);
    QCOMPARE(changes.size(), 2);
}

void tst_FixedDecimatorU64::anAreaThatIsSetLaterDoesNotFilter()
{
    Filter1D parent;
    FixedDecimatorU64 node;
    parent.addFilter(&node);
    parent.setData(QVector<double>(1024, 1.0));
    parent.setArea(someArea);
    COMPARE_BITS(node.data(), QVector<double>(256, 0.0));
    parent.setData(QVector<double>(1024, 2.0));
    COMPARE_BITS(node.data(), QVector<double>(256, 2.0));
}

void tst_FixedDecimatorU64::fourValuesABucket()
{
    FixedDecimatorU64 node;
    node.setArea(someArea);
    RandomSeries random(1);
    QVector<double> series, expected;
    for (int i = 0; i < 256; ++i) {
        const QVector<double> four{random.real(0.0, 9.0), random.real(0.0, 9.0), random.real(0.0, 9.0),
                                   random.real(0.0, 9.0)};
        series += four;
        expected.append(*std::max_element(four.cbegin(), four.cend()));
    }
    node.setData(series);
    COMPARE_BITS(node.data(), expected);
}

void tst_FixedDecimatorU64::negativeValuesSurvive()
{
    FixedDecimatorU64 node;
    node.setArea(someArea);
    node.setNumPoint(2);
    node.setData({-3.0, -2.0, -5.0, -7.0});
    COMPARE_BITS(node.data(), (QVector<double>{-2.0, -5.0}));
}

void tst_FixedDecimatorU64::moreBucketsThanValuesLeaveZerosAndWhatWasThere()
{
    FixedDecimatorU64 node;
    node.setArea(someArea);
    node.setNumPoint(4);
    node.setData({1.0, 2.0, 3.0, 4.0});
    node.setData({9.0}); // used up at the second quarter
    COMPARE_BITS(node.data(), (QVector<double>{0.0, 9.0, 3.0, 4.0}));
    node.setData({5.0, 6.0, 7.0});
    COMPARE_BITS(node.data(), (QVector<double>{5.0, 6.0, 0.0, 7.0})); // 0.75 1.5 2.25 3 end at 1 2 2 3
}

void tst_FixedDecimatorU64::whatWasPublishedIsLeftAlone()
{
    FixedDecimatorU64 node;
    node.setArea(someArea);
    node.setNumPoint(2);
    node.setData({1.0, 2.0});
    const QVector<double> published = node.data();
    node.setData({3.0, 4.0});
    COMPARE_BITS(published, (QVector<double>{1.0, 2.0}));
}

void tst_FixedDecimatorU64::randomSeriesAreExact()
{
    RandomSeries random(2);
    for (int node = 0; node < 300; ++node) {
        FixedDecimatorU64 decimator;
        decimator.setArea(someArea);
        const int points = random.oneIn(2) ? random.whole(1, 20) : random.whole(1, 1000);
        decimator.setNumPoint(points);
        QVector<double> expected(points, 0.0);
        for (int round = 0; round < 10; ++round) {
            const QVector<double> series = random.series();
            decimator.setData(series);
            if (!series.isEmpty())
                expected = plainFixedReduction(series, expected);
            COMPARE_BITS(decimator.data(), expected);
        }
    }
}

void tst_FixedDecimatorU64::longSeriesAreExact()
{
    RandomSeries random(3);
    for (int round = 0; round < 20; ++round) {
        FixedDecimatorU64 decimator;
        decimator.setArea(someArea);
        const QVector<double> series = random.series(random.whole(150'000, 250'000));
        decimator.setNumPoint(random.oneIn(2) ? random.whole(1, 2000) : random.whole(1, 300'000));
        decimator.setData(series);
        COMPARE_BITS(decimator.data(), plainFixedReduction(series, QVector<double>(decimator.numPoint(), 0.0)));
    }
}

// numPoint

void tst_FixedDecimatorU64::theNumberOfPointsIsAtLeastOne()
{
    FixedDecimatorU64 node;
    QSignalSpy changes(&node, &FixedDecimatorU64::numPointChanged);
    node.setNumPoint(0);
    QCOMPARE(node.numPoint(), 1);
    QCOMPARE(node.data().size(), 1);
    node.setNumPoint(std::numeric_limits<int>::min());
    QCOMPARE(node.numPoint(), 1);
    QCOMPARE(changes.size(), 1);
}

void tst_FixedDecimatorU64::theNumberOfPointsIsAtMostThatOfTheParent()
{
    Filter1D parent;
    parent.setData(QVector<double>(100, 1.0));
    FixedDecimatorU64 node;
    parent.addFilter(&node);
    QCOMPARE(node.numPoint(), 256); // only what is written is bounded
    node.setNumPoint(500);
    QCOMPARE(node.numPoint(), 100);
    node.setNumPoint(50);
    QCOMPARE(node.numPoint(), 50);
}

void tst_FixedDecimatorU64::aParentWithoutDataSetsNoBound()
{
    Filter1D parent;
    FixedDecimatorU64 node;
    parent.addFilter(&node);
    node.setNumPoint(500);
    QCOMPARE(node.numPoint(), 500);
    node.setNumPoint(-1);
    QCOMPARE(node.numPoint(), 1);
}

void tst_FixedDecimatorU64::aHugeNumberOfPointsIsBounded()
{
    FixedDecimatorU64 node;
    node.setArea(someArea);
    node.setNumPoint(std::numeric_limits<int>::max());
    QCOMPARE(node.numPoint(), FixedDecimatorU64::maximumPoints);
    node.setData({1.0, 2.0});
    QCOMPARE(node.data().size(), FixedDecimatorU64::maximumPoints);
    QCOMPARE(*std::max_element(node.data().cbegin(), node.data().cend()), 2.0);
}

void tst_FixedDecimatorU64::aNewNumberFiltersTheParentsSeriesAgain()
{
    Filter1D parent;
    parent.setArea(someArea);
    parent.setData({1.0, 2.0, 3.0, 4.0});
    FixedDecimatorU64 node;
    parent.addFilter(&node);
    QStringList order;
    connect(&node, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("data")); });
    connect(&node, &FixedDecimatorU64::numPointChanged, this, [&] { order.append(QStringLiteral("numPoint")); });
    node.setNumPoint(2);
    COMPARE_BITS(node.data(), (QVector<double>{2.0, 4.0}));
    QCOMPARE(order, (QStringList{QStringLiteral("data"), QStringLiteral("numPoint")}));
}

void tst_FixedDecimatorU64::aNewNumberWithoutAParentClears()
{
    FixedDecimatorU64 node;
    node.setArea(someArea);
    node.setData({1.0, 2.0, 3.0, 4.0});
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setNumPoint(3);
    COMPARE_BITS(node.data(), QVector<double>(3, 0.0));
    QCOMPARE(changes.size(), 0);
}

void tst_FixedDecimatorU64::theSameNumberIsNoChange()
{
    FixedDecimatorU64 node;
    node.setArea(someArea);
    node.setData({1.0});
    const QVector<double> before = node.data();
    QSignalSpy changes(&node, &FixedDecimatorU64::numPointChanged);
    node.setNumPoint(256);
    QCOMPARE(changes.size(), 0);
    COMPARE_BITS(node.data(), before);
}

QTEST_GUILESS_MAIN(tst_FixedDecimatorU64)
#include "tst_FixedDecimatorU64.moc"
