// SPDX-License-Identifier: MIT
#include "filters/Buckets.h"
#include "tests/support/Bits.h"
#include "tests/support/PlainBuckets.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

namespace {

/// Which bucket holds a single value when `count` is halved, by walking; and that all others are pairs.
int walkedSingleBucket(int count, bool *othersArePairs)
{
    const int buckets = int(std::ceil(count / 2.0));
    const double step = double(count) / buckets;
    double x = 0.0;
    int start = 0;
    int single = buckets;
    int j = 0;
    *othersArePairs = true;
    do {
        x += step;
        const int end = int(std::round(x));
        if (end - start == 1 && single == buckets)
            single = j;
        else if (end - start != 2)
            *othersArePairs = false;
        start = end;
        ++j;
    } while (start < count);
    *othersArePairs &= j == buckets && start == count;
    return single;
}

} // namespace

class tst_Buckets : public QObject
{
    Q_OBJECT

private slots:
    void aCoarseLevelHasRoomForARest();
    void fiveValuesHaveTheirSingleInTheMiddle();
    void theSingleBucketIsWhereTheAdditionsPutIt();
    void theSingleBucketOfALongSeriesIsWhereTheAdditionsPutIt();
    void bucketMaximaHaveTheBitsOfThePlainLoop();
    void theLastBucketReachesToTheEnd();
    void firstMaximaHaveTheBitsOfThePlainLoop();
    void emptyBucketsAreZero();
};

void tst_Buckets::aCoarseLevelHasRoomForARest()
{
    QCOMPARE(coarseSize(1, 2.0), 1);
    QCOMPARE(coarseSize(4, 2.0), 2);
    QCOMPARE(coarseSize(5, 2.0), 3);
    QCOMPARE(coarseSize(10, 3.0), 4);
    QCOMPARE(coarseSize(std::numeric_limits<int>::max(), 2.0), 1 << 30);
}

void tst_Buckets::fiveValuesHaveTheirSingleInTheMiddle()
{
    QCOMPARE(plainEnds(5, 3), (QVector<int>{2, 3, 5}));
    QCOMPARE(singleBucket(5), 1);
    QCOMPARE(singleBucket(4), 2); // none
}

void tst_Buckets::theSingleBucketIsWhereTheAdditionsPutIt()
{
    for (int count = 1; count <= 10000; ++count) {
        bool othersArePairs = false;
        const int walked = walkedSingleBucket(count, &othersArePairs);
        QVERIFY2(othersArePairs, QByteArray::number(count).constData());
        if (walked != singleBucket(count))
            QCOMPARE(QPair(count, singleBucket(count)), QPair(count, walked));
    }
}

void tst_Buckets::theSingleBucketOfALongSeriesIsWhereTheAdditionsPutIt()
{
    QVector<int> counts{9'999'999, largestHalvedExactly - 1, largestHalvedExactly / 2 + 1,
                        largestHalvedExactly / 4 - 1};
    RandomSeries random(1);
    for (int i = 0; i < 200; ++i)
        counts.append(random.whole(10'000, 1'000'000) | 1);
    for (int i = 0; i < 4; ++i)
        counts.append(random.whole(1'000'000, largestHalvedExactly - 1) | 1);
    for (const int count : counts) {
        bool othersArePairs = false;
        const int walked = walkedSingleBucket(count, &othersArePairs);
        QVERIFY2(othersArePairs, QByteArray::number(count).constData());
        QCOMPARE(QPair(count, singleBucket(count)), QPair(count, walked));
    }
}

void tst_Buckets::bucketMaximaHaveTheBitsOfThePlainLoop()
{
    RandomSeries random(2);
    for (int round = 0; round < 5000; ++round) {
        const QVector<double> values = random.series(random.size() + 1);
        for (const double factor : {2.0, 2.5, 3.0, 10.0}) {
            QVector<double> maxima{-1.0}; // what is there stays
            appendBucketMaxima(values.constData(), values.size(), coarseSize(values.size(), factor), maxima);
            COMPARE_BITS(maxima.mid(1), plainCoarseLevel(values, factor));
            QCOMPARE(maxima.at(0), -1.0);
        }
    }
}

void tst_Buckets::theLastBucketReachesToTheEnd()
{
    for (int count = 1; count < 300; ++count) {
        for (int buckets = 1; buckets <= count; ++buckets) {
            QVector<double> values(count, 0.0);
            values.last() = 7.0;
            QVector<double> maxima;
            appendBucketMaxima(values.constData(), count, buckets, maxima);
            QCOMPARE(maxima.size(), buckets);
            QCOMPARE(maxima.last(), 7.0);
        }
    }
}

void tst_Buckets::firstMaximaHaveTheBitsOfThePlainLoop()
{
    RandomSeries random(3);
    for (int round = 0; round < 20000; ++round) {
        const QVector<double> values = random.series(random.size() + 1);
        const int buckets = random.oneIn(2) ? random.whole(1, 300) : random.whole(1, 3 * values.size());
        const QVector<double> previous = random.series(buckets);
        QVector<double> maxima = previous;
        const int written = writeFirstMaxima(values.constData(), values.size(), maxima.data(), buckets);
        QVERIFY(written >= 1 && written <= buckets);
        QVERIFY(written == buckets || 2 * values.size() <= buckets);
        COMPARE_BITS(maxima, plainFixedReduction(values, previous));
    }
}

void tst_Buckets::emptyBucketsAreZero()
{
    const double value = -3.0;
    QVector<double> maxima(4, 9.0);
    QCOMPARE(writeFirstMaxima(&value, 1, maxima.data(), 4), 2);
    COMPARE_BITS(maxima, (QVector<double>{0.0, -3.0, 9.0, 9.0}));
}

QTEST_APPLESS_MAIN(tst_Buckets)
#include "tst_Buckets.moc"
