// SPDX-License-Identifier: MIT
#include "common/Index.h"

#include <QtTest>

class tst_Index : public QObject
{
    Q_OBJECT

private slots:
    void toIndexTruncatesTowardsZero();
    void toIndexStaysWithinInt();
    void aPointOnTheAxisIsContainedBetweenTheEdges();
    void aNaNIsContainedNowhere();
};

void tst_Index::toIndexTruncatesTowardsZero()
{
    QCOMPARE(toIndex(0.0), 0);
    QCOMPARE(toIndex(2.9), 2);
    QCOMPARE(toIndex(-2.9), -2);
    QCOMPARE(toIndex(-0.0), 0);
}

void tst_Index::toIndexStaysWithinInt()
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    QCOMPARE(toIndex(highest), highest);
    QCOMPARE(toIndex(highest - 1.0), highest - 1);
    QCOMPARE(toIndex(lowest), lowest);
    QCOMPARE(toIndex(lowest + 1.0), lowest + 1);
    QCOMPARE(toIndex(1e300), highest);
    QCOMPARE(toIndex(-1e300), lowest);
    QCOMPARE(toIndex(std::numeric_limits<double>::infinity()), highest);
    QCOMPARE(toIndex(-std::numeric_limits<double>::infinity()), lowest);
    QCOMPARE(toIndex(std::numeric_limits<double>::quiet_NaN()), 0);
}

void tst_Index::aPointOnTheAxisIsContainedBetweenTheEdges()
{
    const QRectF extent(1.0, -1.0, 2.0, 2.0);
    QVERIFY(containsOnAxis(extent, 1.0));
    QVERIFY(containsOnAxis(extent, 3.0));
    QVERIFY(!containsOnAxis(extent, 0.999));
    QVERIFY(!containsOnAxis(extent, 3.001));
    QVERIFY(!containsOnAxis(QRectF(1.0, 0.5, 2.0, 2.0), 2.0));
    QVERIFY(!containsOnAxis(QRectF(1.0, 0.0, 2.0, 0.0), 2.0));
}

void tst_Index::aNaNIsContainedNowhere()
{
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    QVERIFY(!containsOnAxis(QRectF(0.0, -1.0, 1.0, 2.0), notANumber));
    QVERIFY(!containsOnAxis(QRectF(), notANumber));
}

QTEST_APPLESS_MAIN(tst_Index)
#include "tst_Index.moc"
