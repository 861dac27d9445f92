// SPDX-License-Identifier: MIT
#include "filters/PyramidBuilder.h"
#include "tests/support/Bits.h"
#include "tests/support/PlainBuckets.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

#include <chrono>
#include <thread>

using Levels = QVector<QVector<double>>;

namespace {

constexpr int coarse = 8; // the first level that is built from the series itself

/// A builder and its levels; all series are long for it.
struct SBuilder
{
    Levels levels{1};
    PyramidBuilder builder{levels};

    void begin(const QVector<double> &series, double factor = 2.0)
    {
        builder.giveUp();
        levels[0] = series;
        builder.begin(factor, 0);
    }
    const QVector<double> &level(int k)
    {
        builder.waitFor(k);
        return levels.at(k);
    }
};

} // namespace

class tst_PyramidBuilder : public QObject
{
    Q_OBJECT

private slots:
    void everyLevelAloneIsExact();
    void allLevelsInAnyOrderAreExact();
    void levelsFromTheBackgroundAreExact();
    void aSeriesOfAMillionIsExact();
    void aNewSeriesMayComeAtAnyTime();
    void aLevelThatSomebodyHoldsIsLeftAlone();
    void onlyWhatIsAskedForIsBuilt();
    void shortSeriesAreReadyAtOnce();
    void anotherFactorIsReadyAtOnce();
    void itMayEndWhileItIsBuilding();
};

void tst_PyramidBuilder::everyLevelAloneIsExact()
{
    RandomSeries random(1);
    for (int round = 0; round < 100; ++round) {
        const QVector<double> series = random.series(random.whole(300, 20'000));
        const Levels expected = plainPyramid(series);
        for (int k = 0; k < expected.size(); ++k) {
            SBuilder s;
            s.begin(series);
            QCOMPARE(s.levels.size(), expected.size());
            COMPARE_BITS(s.level(k), expected.at(k));
        }
    }
}

void tst_PyramidBuilder::allLevelsInAnyOrderAreExact()
{
    RandomSeries random(2);
    SBuilder s; // storage is used again and again
    for (int round = 0; round < 500; ++round) {
        const QVector<double> series = random.series(random.whole(300, 20'000));
        const Levels expected = plainPyramid(series);
        s.begin(series);
        for (int time = 0; time < 6; ++time) {
            const int k = random.whole(0, expected.size() - 1);
            COMPARE_BITS(s.level(k), expected.at(k));
        }
    }
}

void tst_PyramidBuilder::levelsFromTheBackgroundAreExact()
{
    RandomSeries random(3);
    SBuilder s;
    for (int round = 0; round < 300; ++round) {
        const QVector<double> series = random.series(random.whole(20'000, 60'000));
        const Levels expected = plainPyramid(series);
        s.begin(series);
        s.builder.goOnInBackground();
        COMPARE_BITS(s.level(coarse + 1), expected.at(coarse + 1)); // beside the other thread
        const int k = random.whole(1, coarse - 1);
        COMPARE_BITS(s.level(k), expected.at(k));
        QVERIFY(!s.builder.isUnfinished());
        COMPARE_BITS(s.level(coarse), expected.at(coarse));
    }
}

void tst_PyramidBuilder::aSeriesOfAMillionIsExact()
{
    RandomSeries random(4);
    SBuilder s;
    for (const int size : {1'048'577, 1'048'577, 2'100'001}) {
        const QVector<double> series = random.series(size);
        const Levels expected = plainPyramid(series);
        s.begin(series);
        COMPARE_BITS(s.level(coarse), expected.at(coarse)); // by threads, where there are processors
        COMPARE_BITS(s.level(1), expected.at(1));
        COMPARE_BITS(s.level(coarse - 1), expected.at(coarse - 1));
    }
}

void tst_PyramidBuilder::aNewSeriesMayComeAtAnyTime()
{
    RandomSeries random(5);
    SBuilder s;
    for (int round = 0; round < 500; ++round) {
        const QVector<double> series = random.series(random.whole(300, 200'000));
        s.begin(series);
        s.builder.goOnInBackground();
        std::this_thread::sleep_for(std::chrono::microseconds(random.whole(0, 300)));
        if (round % 10 == 0) {
            const Levels expected = plainPyramid(series);
            for (int k = 0; k < expected.size(); ++k)
                COMPARE_BITS(s.level(k), expected.at(k));
        }
    }
}

void tst_PyramidBuilder::aLevelThatSomebodyHoldsIsLeftAlone()
{
    SBuilder s;
    s.begin(QVector<double>(5000, 1.0));
    const QVector<double> fine = s.level(2);
    const QVector<double> coarsest = s.level(coarse + 1);
    s.begin(QVector<double>(5000, 2.0));
    s.builder.goOnInBackground();
    COMPARE_BITS(s.level(2), QVector<double>(1250, 2.0));
    COMPARE_BITS(s.level(coarse + 1), QVector<double>(10, 2.0));
    COMPARE_BITS(fine, QVector<double>(1250, 1.0));
    COMPARE_BITS(coarsest, QVector<double>(10, 1.0));
}

void tst_PyramidBuilder::onlyWhatIsAskedForIsBuilt()
{
    SBuilder s;
    s.begin(QVector<double>(100'000, 1.0));
    s.level(0);
    for (int k = 1; k < s.levels.size(); ++k)
        QVERIFY(s.levels.at(k).isEmpty());
    s.level(coarse + 2);
    for (int k = 1; k < s.levels.size(); ++k)
        QCOMPARE(s.levels.at(k).isEmpty(), k < coarse);
    QVERIFY(s.builder.isUnfinished());
    s.level(3);
    QCOMPARE(s.levels.at(1).size(), 50'000);
    QVERIFY(!s.builder.isUnfinished());
}

void tst_PyramidBuilder::shortSeriesAreReadyAtOnce()
{
    RandomSeries random(6);
    Levels levels(1);
    PyramidBuilder builder(levels);
    for (int round = 0; round < 500; ++round) {
        builder.giveUp();
        levels[0] = random.series(random.size() + 1);
        builder.begin(2.0);
        QVERIFY(!builder.isUnfinished());
        const Levels expected = plainPyramid(levels.at(0));
        QCOMPARE(levels.size(), expected.size());
        for (int k = 0; k < levels.size(); ++k)
            COMPARE_BITS(levels.at(k), expected.at(k));
    }
}

void tst_PyramidBuilder::anotherFactorIsReadyAtOnce()
{
    SBuilder s;
    const QVector<double> series = RandomSeries(7).series(5000);
    s.begin(series, 3.0);
    QVERIFY(!s.builder.isUnfinished());
    COMPARE_BITS(s.levels.at(1), plainPyramid(series, 3.0).at(1));
}

void tst_PyramidBuilder::itMayEndWhileItIsBuilding()
{
    const QVector<double> series = RandomSeries(8).series(3'000'000);
    for (int round = 0; round < 20; ++round) {
        Levels levels{series};
        {
            PyramidBuilder builder(levels);
            builder.begin(2.0);
            builder.goOnInBackground();
            std::this_thread::sleep_for(std::chrono::milliseconds(round % 4));
        }
        const int size = levels.at(1).size(); // which grows as long as somebody writes
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
        QCOMPARE(levels.at(1).size(), size);
    }
}

QTEST_APPLESS_MAIN(tst_PyramidBuilder)
#include "tst_PyramidBuilder.moc"
