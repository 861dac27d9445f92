// SPDX-License-Identifier: MIT
#include "common/Maxima.h"
#include "common/Series.h"
#include "common/Storage.h"
#include "tests/support/Bits.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

// The rules in their plainest form.

namespace {

bool plainSame(const QVector<double> &a, const QVector<double> &b)
{
    if (a.constData() == b.constData())
        return true;
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (!(a.at(i) == b.at(i)))
            return false;
    }
    return true;
}

double plainMaximum(double start, const double *values, int count)
{
    double maximum = start;
    for (int i = 0; i < count; ++i) {
        if (values[i] > maximum)
            maximum = values[i];
    }
    return maximum;
}

QVector<double> unshared(const QVector<double> &series)
{
    QVector<double> copy(series);
    copy.detach();
    return copy;
}

} // namespace

class tst_Series : public QObject
{
    Q_OBJECT

private slots:
    void seriesOfTheSameStorageAreTheSame();
    void aNaNEqualsNothing();
    void zerosOfBothSignsAreEqual();
    void aSingleDifferenceIsFoundAnywhere();
    void randomSeriesCompareLikeThePlainRule();
    void comparingDetachesNothing();
    void restartKeepsStorageThatIsItsOwn();
    void restartLeavesSharedValuesAlone();
    void extendAppendsZerosInPlace();
    void theLongestSeriesFitsIntoAVector();
    void finiteInSingleKnowsInfinitiesAndNaN();
    void maximumStartsAtZero();
    void maximaHaveTheBitsOfThePlainLoop();
    void theFirstOfEqualMaximaStays();
    void pairMaximaHaveTheBitsOfThePlainLoop();
};

void tst_Series::seriesOfTheSameStorageAreTheSame()
{
    const QVector<double> series{1.0, std::numeric_limits<double>::quiet_NaN()};
    QVERIFY(sameSeries(series, QVector<double>(series)));
    QVERIFY(sameSeries({}, {}));
}

void tst_Series::aNaNEqualsNothing()
{
    const QVector<double> series{1.0, std::numeric_limits<double>::quiet_NaN()};
    QVERIFY(!sameSeries(series, unshared(series)));
}

void tst_Series::zerosOfBothSignsAreEqual()
{
    QVERIFY(sameSeries({0.0, -0.0}, {-0.0, 0.0}));
}

void tst_Series::aSingleDifferenceIsFoundAnywhere()
{
    for (const int size : {1, 2, 3, 1023, 1024, 1025, 2048, 2049, 5000}) {
        const QVector<double> series(size, 1.0);
        for (const int at : {0, 1, size / 2, 1022, 1023, 1024, size - 2, size - 1}) {
            if (at < 0 || at >= size)
                continue;
            QVector<double> other = series;
            other[at] = 2.0;
            QVERIFY(!sameSeries(series, other));
            other[at] = 1.0;
            QVERIFY(sameSeries(series, other));
        }
        QVERIFY(!sameSeries(series, QVector<double>(size + 1, 1.0)));
    }
}

void tst_Series::randomSeriesCompareLikeThePlainRule()
{
    RandomSeries random(1);
    for (int round = 0; round < 5000; ++round) {
        const QVector<double> a = random.series();
        QVector<double> b = unshared(a);
        if (!b.isEmpty() && random.oneIn(2))
            b[random.whole(0, b.size() - 1)] += 1.0;
        QCOMPARE(sameSeries(a, b), plainSame(a, b));
    }
}

void tst_Series::comparingDetachesNothing()
{
    const QVector<double> series(3, 1.0);
    QVector<double> copy = series;
    QVERIFY(sameSeries(series, copy));
    QCOMPARE(copy.constData(), series.constData());
}

void tst_Series::restartKeepsStorageThatIsItsOwn()
{
    QVector<double> series(100, 1.0);
    const double *storage = series.constData();
    restart(series, 80);
    QVERIFY(series.isEmpty());
    QVERIFY(series.capacity() >= 80);
    extend(series, 80);
    QCOMPARE(series.constData(), storage);

    restart(series, 1000);
    QVERIFY(series.isEmpty());
    QVERIFY(series.capacity() >= 1000);
}

void tst_Series::restartLeavesSharedValuesAlone()
{
    QVector<double> series(100, 1.0);
    const QVector<double> shared = series;
    restart(series, 100);
    extend(series, 100)[0] = 2.0;
    COMPARE_BITS(shared, QVector<double>(100, 1.0));
    QVERIFY(series.constData() != shared.constData());
}

void tst_Series::extendAppendsZerosInPlace()
{
    QVector<double> series;
    restart(series, 10);
    double *first = extend(series, 4);
    std::fill(first, first + 4, 7.0);
    double *second = extend(series, 6);
    QCOMPARE(second, first + 4);
    QCOMPARE(series.constData(), first);
    COMPARE_BITS(series, (QVector<double>{7.0, 7.0, 7.0, 7.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0}));
}

void tst_Series::theLongestSeriesFitsIntoAVector()
{
    QVector<double> series;
    restart(series, longestSeries); // address space only: no page of it is written
    QCOMPARE(series.capacity(), longestSeries);
}

void tst_Series::finiteInSingleKnowsInfinitiesAndNaN()
{
    QVERIFY(finiteInSingle(nullptr, 0));
    using Limits = std::numeric_limits<double>;
    const double largest = std::numeric_limits<float>::max();
    const double above = std::nextafter(largest, Limits::infinity());
    for (const double strange : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), -Limits::quiet_NaN(),
                                 1e39, -1e300, above, -above}) {
        for (int size = 1; size < 36; ++size) {
            for (int at = 0; at < size; ++at) {
                QVector<double> series(size, at % 2 ? largest : -largest);
                QVERIFY(finiteInSingle(series.constData(), size));
                series[at] = strange;
                QVERIFY(!finiteInSingle(series.constData(), size));
            }
        }
    }
}

void tst_Series::maximumStartsAtZero()
{
    const double values[] = {-1.0, -0.0, std::numeric_limits<double>::quiet_NaN()};
    QCOMPARE(bitsOf(maximumFromZero(values, 3)), bitsOf(0.0));
    QCOMPARE(bitsOf(maximumFromZero(nullptr, 0)), bitsOf(0.0));
}

void tst_Series::maximaHaveTheBitsOfThePlainLoop()
{
    RandomSeries random(2);
    for (int round = 0; round < 20000; ++round) {
        const QVector<double> series = random.series(round < 10000 ? random.whole(0, 70) : random.size());
        const double *values = series.constData();
        QCOMPARE(bitsOf(maximumFromZero(values, series.size())), bitsOf(plainMaximum(0.0, values, series.size())));
        const double first = series.isEmpty() ? 0.0 : plainMaximum(values[0], values, series.size());
        QCOMPARE(bitsOf(firstMaximum(values, series.size())), bitsOf(first));
    }
}

void tst_Series::theFirstOfEqualMaximaStays()
{
    const double below = -1.0;
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (int length = 2; length < 40; ++length) {
        for (int at = 0; at + 1 < length; ++at) {
            QVector<double> series(length, below);
            series[at] = -0.0;
            for (int i = at + 1; i < length; ++i)
                series[i] = i % 2 ? 0.0 : notANumber;
            QCOMPARE(bitsOf(firstMaximum(series.constData(), length)), bitsOf(-0.0));
            series[at] = 0.0;
            for (int i = at + 1; i < length; ++i)
                series[i] = -0.0;
            QCOMPARE(bitsOf(firstMaximum(series.constData(), length)), bitsOf(0.0));
        }
    }
    const QVector<double> nanInFront{notANumber, 5.0, 7.0};
    QCOMPARE(bitsOf(firstMaximum(nanInFront.constData(), 3)), bitsOf(notANumber));
}

void tst_Series::pairMaximaHaveTheBitsOfThePlainLoop()
{
    RandomSeries random(3);
    for (int round = 0; round < 20000; ++round) {
        const QVector<double> series = random.series(random.whole(0, 200));
        const int count = series.size() / 2;
        QVector<double> expected;
        for (int i = 0; i < count; ++i)
            expected.append(plainMaximum(0.0, series.constData() + 2 * i, 2));
        QVector<double> maxima(count + 1, 99.0);
        pairMaxima(series.constData(), count, maxima.data());
        QCOMPARE(maxima.last(), 99.0); // nothing is written behind the end
        maxima.resize(count);
        COMPARE_BITS(maxima, expected);
    }
}

QTEST_APPLESS_MAIN(tst_Series)
#include "tst_Series.moc"
