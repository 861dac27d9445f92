// SPDX-License-Identifier: MIT
#include "tests/views/store/PlainSeries.h"
#include "views/store/SeriesData.h"

#include <QtTest>

#include <atomic>
#include <random>
#include <thread>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr qint64 chunk = qint64(1) << 18;

/// Sine-like numbers with spikes and, if `gaps` say so, NaN and infinities.
PlainSeries someNumbers(qint64 count, double gaps, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> uniform;
    PlainSeries series;
    for (qint64 i = 0; i < count; ++i) {
        double value = 100.0 * std::sin(double(i) / 300.0) + 5.0 * uniform(random);
        if (uniform(random) < 0.001)
            value *= 40.0;
        if (uniform(random) < gaps)
            value = uniform(random) < 0.5 ? nan : uniform(random) < 0.5 ? infinite : -infinite;
        series.append(value);
    }
    return series;
}

std::shared_ptr<SeriesData> stored(const PlainSeries &series, SampleType type = SampleType::Float64)
{
    const std::shared_ptr<SeriesData> data = SeriesData::create(type);
    if (!data->append(series.data(), series.size()))
        qFatal("a series isn't taken");
    return data;
}

} // namespace

class tst_SeriesData : public QObject
{
    Q_OBJECT

private slots:
    void anEmptySnapshotAnswersEverything();
    void everyRangeIsAnsweredAsAScanDoes();
};

void tst_SeriesData::anEmptySnapshotAnswersEverything()
{
    for (const SeriesSnapshot &empty : {SeriesSnapshot(), SeriesData::create(SampleType::Int16)->snapshot()}) {
        QVERIFY(empty.isEmpty());
        QVERIFY(empty.isExact());
        QVERIFY(std::isnan(empty.valueAt(0)));
        QVERIFY(std::isnan(empty.valueAt(-1)));
        QVERIFY(empty.extremes().isEmpty());
        QCOMPARE(empty.extremePlacesIn(-5, 5).lowestAt, qint64(-1));
        QVERIFY(std::isnan(empty.smallestPositiveIn(0, 10)));
        QCOMPARE(empty.statisticsIn(0, 10).count, qint64(0));
        QCOMPARE(empty.lowerBound(1.0), qint64(0));
        QCOMPARE(empty.nextGap(0, 10), qint64(0));
        QCOMPARE(empty.nextValue(-3, -1), qint64(0));
    }
}

void tst_SeriesData::everyRangeIsAnsweredAsAScanDoes()
{
    std::mt19937 random(1);
    for (const double gaps : {0.0, 0.0001, 0.1, 0.98}) {
        const PlainSeries series = someNumbers(3 * chunk + 5000, gaps, 2);
        const std::shared_ptr<SeriesData> data = stored(series);
        const SeriesSnapshot snapshot = data->snapshot();
        for (int round = 0; round < 300; ++round) {
            const qint64 from = qint64(random() % quint64(series.size()));
            const qint64 longest = qint64(1) << (random() % 21);
            COMPARE_RANGE(snapshot, series, from, from + qint64(random() % quint64(longest)));
        }
    }
}

QTEST_GUILESS_MAIN(tst_SeriesData)
#include "tst_SeriesData.moc"
