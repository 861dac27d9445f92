// SPDX-License-Identifier: MIT
#include "filters/Pyramid.h"
#include "tests/support/Bits.h"
#include "tests/support/PlainBuckets.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

using Levels = QVector<QVector<double>>;

namespace {

Levels pyramid(const QVector<double> &values, double factor = 2.0)
{
    Levels levels{values};
    buildPyramid(levels, factor);
    return levels;
}

QByteArray difference(const Levels &actual, const Levels &expected)
{
    if (actual.size() != expected.size())
        return QByteArray::number(actual.size()) + " levels instead of " + QByteArray::number(expected.size());
    for (int k = 0; k < actual.size(); ++k) {
        if (!sameBits(actual.at(k), expected.at(k)))
            return "level " + QByteArray::number(k) + ", " + ::difference(actual.at(k), expected.at(k));
    }
    return {};
}

} // namespace

#define COMPARE_LEVELS(actual, expected) \
  do { \
    const QByteArray wrong = difference(actual, expected); \
    QVERIFY2(wrong.isEmpty(), wrong.constData()); \
  } while (false)

class tst_Pyramid : public QObject
{
    Q_OBJECT

private slots:
    void oneValueIsOneLevel();
    void fiveValuesGiveFourLevels();
    void everySizeUpToFiveThousandIsExact();
    void randomSeriesAreExact();
    void longSeriesAreExact();
    void partsByThreadsAreExact();
    void veryLongSeriesAreExactAgain();
    void anotherFactorIsExact();
    void storageIsUsedAgain();
    void sharedLevelsAreLeftAlone();
    void theInputIsNotCopied();
};

void tst_Pyramid::oneValueIsOneLevel()
{
    COMPARE_LEVELS(pyramid({-3.0}), Levels{{-3.0}});
}

void tst_Pyramid::fiveValuesGiveFourLevels()
{
    COMPARE_LEVELS(pyramid({1.0, -5.0, 3.0, 2.0, 0.0}),
                   (Levels{{1.0, -5.0, 3.0, 2.0, 0.0}, {1.0, 3.0, 2.0}, {3.0, 2.0}, {3.0}}));
}

void tst_Pyramid::everySizeUpToFiveThousandIsExact()
{
    RandomSeries random(1);
    for (int size = 1; size <= 5000; ++size) {
        const QVector<double> values = random.series(size);
        COMPARE_LEVELS(pyramid(values), plainPyramid(values));
    }
}

void tst_Pyramid::randomSeriesAreExact()
{
    RandomSeries random(2);
    Levels kept(1);
    for (int round = 0; round < 5000; ++round) {
        const QVector<double> values = random.series(random.size() + 1);
        kept[0] = values;
        buildPyramid(kept, 2.0); // over what the last series left
        COMPARE_LEVELS(kept, plainPyramid(values));
    }
}

void tst_Pyramid::longSeriesAreExact()
{
    RandomSeries random(3);
    for (int round = 0; round < 25; ++round) {
        const QVector<double> values = random.series(random.whole(100'000, 300'000));
        COMPARE_LEVELS(pyramid(values), plainPyramid(values));
    }
    for (const int size : {(1 << 18) - 1, 1 << 18, (1 << 18) + 1, 2'000'003}) {
        const QVector<double> values = random.series(size);
        COMPARE_LEVELS(pyramid(values), plainPyramid(values));
    }
}

void tst_Pyramid::partsByThreadsAreExact()
{
    RandomSeries random(5);
    Levels kept(1);
    for (int round = 0; round < 200; ++round) {
        const int size = random.whole(4'000, 70'000);
        for (int time = 0; time < 2; ++time) { // the second one finds storage to write to
            const QVector<double> values = random.series(size);
            kept[0] = values;
            buildPyramid(kept, 2.0, random.whole(2, 7));
            COMPARE_LEVELS(kept, plainPyramid(values));
        }
    }
}

void tst_Pyramid::veryLongSeriesAreExactAgain()
{
    RandomSeries random(6);
    Levels kept(1);
    for (const int size : {3'000'001, 3'000'001, 4'194'304, 4'194'304, 4'194'303}) {
        const QVector<double> values = random.series(size);
        kept[0] = values;
        buildPyramid(kept, 2.0); // by threads, where there are processors
        COMPARE_LEVELS(kept, plainPyramid(values));
    }
}

void tst_Pyramid::anotherFactorIsExact()
{
    RandomSeries random(4);
    for (int round = 0; round < 500; ++round) {
        const QVector<double> values = random.series(random.size() + 1);
        for (const double factor : {2.5, 3.0, 8.0})
            COMPARE_LEVELS(pyramid(values, factor), plainPyramid(values, factor));
    }
}

void tst_Pyramid::storageIsUsedAgain()
{
    Levels levels{QVector<double>(5001, 1.0)};
    buildPyramid(levels, 2.0);
    QVector<const double *> storage;
    for (int k = 1; k < levels.size(); ++k)
        storage.append(levels.at(k).constData());
    levels[0] = QVector<double>(4999, 2.0);
    buildPyramid(levels, 2.0);
    for (int k = 1; k < levels.size(); ++k)
        QCOMPARE(levels.at(k).constData(), storage.at(k - 1));
}

void tst_Pyramid::sharedLevelsAreLeftAlone()
{
    Levels levels{QVector<double>(5000, 1.0)};
    buildPyramid(levels, 2.0);
    const QVector<double> published = levels.at(2);
    levels[0] = QVector<double>(5000, 2.0);
    buildPyramid(levels, 2.0);
    COMPARE_BITS(published, QVector<double>(1250, 1.0));
    COMPARE_BITS(levels.at(2), QVector<double>(1250, 2.0));
}

void tst_Pyramid::theInputIsNotCopied()
{
    const QVector<double> values(5000, 1.0);
    const Levels levels = pyramid(values);
    QCOMPARE(levels.at(0).constData(), values.constData());
}

QTEST_APPLESS_MAIN(tst_Pyramid)
#include "tst_Pyramid.moc"
