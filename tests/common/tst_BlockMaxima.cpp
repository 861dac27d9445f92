// SPDX-License-Identifier: MIT
#include "common/BlockMaxima.h"
#include "tests/support/Bits.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

namespace {

double plainMaximum(const QVector<double> &series, int first, int end)
{
    double maximum = 0.0;
    for (int i = first; i < end; ++i) {
        if (series.at(i) > maximum)
            maximum = series.at(i);
    }
    return maximum;
}

/// Rounded each time it is replaced.
double plainSingleMaximum(const QVector<double> &series, int first, int end)
{
    float maximum = 0.0f;
    for (int i = first; i < end; ++i) {
        if (series.at(i) > double(maximum))
            maximum = float(series.at(i));
    }
    return double(maximum);
}

} // namespace

class tst_BlockMaxima : public QObject
{
    Q_OBJECT

private slots:
    void everyRangeHasTheBitsOfThePlainLoop();
    void roundingAtTheEndIsRoundingOnTheWay();
    void blocksAreVisitedInOrderAndCoverTheSeries();
    void theMaximumIsThatOfTheWhole();
    void itAnswersForItsStorageOnly();
    void nothingHasAMaximumOfZero();
};

void tst_BlockMaxima::everyRangeHasTheBitsOfThePlainLoop()
{
    RandomSeries random(1);
    for (int round = 0; round < 2000; ++round) {
        const QVector<double> series = random.series();
        const BlockMaxima maxima = BlockMaxima::of(series);
        for (int range = 0; range < 10; ++range) {
            const int first = random.whole(0, series.size());
            const int end = random.whole(first, series.size());
            QCOMPARE(bitsOf(maxima.maximumIn(first, end)), bitsOf(plainMaximum(series, first, end)));
        }
    }
}

void tst_BlockMaxima::roundingAtTheEndIsRoundingOnTheWay()
{
    RandomSeries random(2);
    for (int round = 0; round < 5000; ++round) {
        QVector<double> series = random.series();
        if (random.oneIn(2)) { // neighbours of a number that single precision cannot hold
            for (double &value : series)
                value = 1.0 + random.whole(0, 9) * 1.2e-8;
        }
        const BlockMaxima maxima = BlockMaxima::of(series);
        const int first = random.whole(0, series.size());
        QCOMPARE(bitsOf(double(float(maxima.maximumIn(first, series.size())))),
                 bitsOf(plainSingleMaximum(series, first, series.size())));
    }
}

void tst_BlockMaxima::blocksAreVisitedInOrderAndCoverTheSeries()
{
    for (const int size : {0, 1, 1023, 1024, 1025, 5000}) {
        int visited = 0;
        BlockMaxima::of(QVector<double>(size, 1.0), [&](int start, int count) {
            QCOMPARE(start, visited);
            QVERIFY(count > 0);
            visited += count;
        });
        QCOMPARE(visited, size);
    }
}

void tst_BlockMaxima::theMaximumIsThatOfTheWhole()
{
    QVector<double> series(5000, -1.0);
    QCOMPARE(BlockMaxima::of(series).maximum(), 0.0);
    series[4999] = 7.0;
    QCOMPARE(BlockMaxima::of(series).maximum(), 7.0);
}

void tst_BlockMaxima::itAnswersForItsStorageOnly()
{
    QVector<double> series(10, 1.0);
    const BlockMaxima maxima = BlockMaxima::of(series);
    QVERIFY(maxima.isOf(series));
    QVERIFY(!maxima.isOf({}));
    series[0] = 2.0; // detaches: the old storage lives on in the maxima
    QVERIFY(!maxima.isOf(series));
    QCOMPARE(maxima.maximum(), 1.0);
}

void tst_BlockMaxima::nothingHasAMaximumOfZero()
{
    QVERIFY(BlockMaxima().isOf({}));
    QCOMPARE(BlockMaxima().maximum(), 0.0);
    QCOMPARE(BlockMaxima().maximumIn(0, 0), 0.0);
}

QTEST_APPLESS_MAIN(tst_BlockMaxima)
#include "tst_BlockMaxima.moc"
