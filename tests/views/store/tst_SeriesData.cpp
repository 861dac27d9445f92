// SPDX-License-Identifier: MIT
#include "tests/views/store/PlainSeries.h"
#include "views/store/SeriesData.h"
#include "views/store/SeriesOf.h"

#include <QtTest>

#include <atomic>
#include <random>
#include <thread>
#include <utility>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

double strange(std::mt19937 &random)
{
    switch (random() % 4) {
    case 0:
        return infinite;
    case 1:
        return -infinite;
    default:
        return notANumber;
    }
}

/// A wave with spikes and, as often as `gaps` says, NaN and infinities.
PlainSeries someNumbers(qint64 count, double gaps, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> uniform;
    PlainSeries series;
    for (qint64 i = 0; i < count; ++i) {
        double value = 100.0 * std::sin(double(i) / 300.0) + 5.0 * uniform(random);
        if (uniform(random) < 0.001)
            value *= 40.0;
        series.append(uniform(random) < gaps ? strange(random) : value);
    }
    return series;
}

/// Numbers of which a type of whole numbers may have any.
template <class T>
std::vector<T> anyValues(qint64 count, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<T> values;
    for (qint64 i = 0; i < count; ++i) {
        if constexpr (std::is_floating_point_v<T>)
            values.push_back(random() % 500 == 0 ? T(strange(random)) : T(int(random())) / T(3));
        else if (random() % 300 == 0)
            values.push_back(random() % 2 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min());
        else
            values.push_back(T(random() % 100) - T(std::is_signed_v<T> ? 50 : 0));
    }
    return values;
}

template <class T>
PlainSeries plain(const std::vector<T> &values)
{
    PlainSeries series;
    for (const T value : values)
        series.append(double(value));
    return series;
}

std::shared_ptr<SeriesData> stored(const PlainSeries &series, SampleType type = SampleType::Float64)
{
    const std::shared_ptr<SeriesData> data = SeriesData::create(type);
    if (!data->append(series.data(), series.size()))
        qFatal("a series isn't taken");
    return data;
}

/// Ranges of any length, most of them short.
std::pair<qint64, qint64> anyRange(std::mt19937 &random, qint64 end)
{
    const qint64 from = qint64(random() % quint64(end));
    const qint64 longest = qint64(1) << (random() % 21);
    return {from, std::min(end, from + qint64(random() % quint64(longest)))};
}

} // namespace

class tst_SeriesData : public QObject
{
    Q_OBJECT

private slots:
    void anEmptySnapshotAnswersEverything();
    void everyRangeIsAnsweredAsAScanDoes();
    void rangesAreCutToTheSnapshot();
    void everyTypeIsAnsweredAsAScanDoes();
    void everyBoundaryOfCellsAndChunks();
    void theUppermostLevelsAreUsed();
    void aSeriesThatBeginsLaterAnswersTheSame();
    void whatStandsOutAtTheEndsCounts();
    void gapsStandAnywhere();
    void tinyAndHugeValues();
    void theDeviationOfLargeValuesIsRight();
    void sumsOfWholeNumbersAreExact();
    void valuesAreConverted();
    void whatDoesntFitIsRefused();
    void valuesAreWrittenInPlace();
    void theLowerBoundIsThatOfAScan();
    void snapshotsStayAsTheyWere();
    void aScaledSnapshotAnswersAsTheProductsDo();
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
        const PlainSeries series = someNumbers(3 * chunkSize + 5000, gaps, 2);
        const SeriesSnapshot snapshot = stored(series)->snapshot();
        for (int round = 0; round < 300; ++round) {
            const auto [from, to] = anyRange(random, series.size());
            COMPARE_RANGE(snapshot, series, from, to);
        }
        COMPARE_RANGE(snapshot, series, 0, series.size());
    }
}

void tst_SeriesData::rangesAreCutToTheSnapshot()
{
    constexpr qint64 far = std::numeric_limits<qint64>::max();
    const SeriesSnapshot snapshot = stored({1.0, 2.0, notANumber, 4.0})->snapshot();
    QCOMPARE(snapshot.extremesIn(-far, far).highest, 4.0);
    QVERIFY(snapshot.extremesIn(3, 1).isEmpty());
    QVERIFY(snapshot.extremesIn(-far, 0).isEmpty());
    QVERIFY(snapshot.extremesIn(4, far).isEmpty());
    QCOMPARE(snapshot.statisticsIn(-far, far).count, qint64(3));
    QCOMPARE(snapshot.nextGap(-far, far), qint64(2));
    QCOMPARE(snapshot.nextGap(3, far), qint64(4));
    QCOMPARE(snapshot.nextGap(2, 1), qint64(1));
    QCOMPARE(snapshot.lowerBound(5.0, -far), qint64(4));
    QCOMPARE(snapshot.lowerBound(notANumber), qint64(4));
    QCOMPARE(snapshot.lowerBound(-infinite), qint64(0));
    QVERIFY(std::isnan(snapshot.valueAt(far)));
    double values[8];
    snapshot.copyValues(-2, 6, values);
    const double expected[8] = {notANumber, notANumber, 1.0, 2.0, notANumber, 4.0, notANumber, notANumber};
    for (int i = 0; i < 8; ++i)
        QVERIFY(values[i] == expected[i] || (std::isnan(values[i]) && std::isnan(expected[i])));
}

void tst_SeriesData::everyTypeIsAnsweredAsAScanDoes()
{
    for (int type = 0; type < sampleTypeCount; ++type) {
        const QByteArray complaint = withSampleType(SampleType(type), [type](auto zero) {
            using T = decltype(zero);
            const std::vector<T> values = anyValues<T>(chunkSize + 70'000, 3);
            const PlainSeries series = plain(values);
            const std::shared_ptr<SeriesData> data = SeriesData::create(SampleType(type));
            if (!data->append(values.data(), qint64(values.size())) || data->type() != SampleType(type))
                return QByteArray("not taken");
            const SeriesSnapshot snapshot = data->snapshot();
            std::mt19937 random(4);
            QByteArray found = series.complaint(snapshot, 0, series.size());
            for (int round = 0; round < 200 && found.isEmpty(); ++round) {
                const auto [from, to] = anyRange(random, series.size());
                found = series.complaint(snapshot, from, to);
            }
            return found;
        });
        QVERIFY2(complaint.isEmpty(), nameOf(SampleType(type)) + (' ' + complaint));
    }
}

void tst_SeriesData::everyBoundaryOfCellsAndChunks()
{
    const PlainSeries series = someNumbers(2 * chunkSize + 2, 0.001, 5);
    for (const qint64 boundary : {qint64(64), qint64(1024), qint64(4096), qint64(16384), chunkSize, 2 * chunkSize}) {
        for (qint64 count = boundary - 2; count <= boundary + 2; ++count) {
            // In two portions, one of which ends near the boundary, too.
            for (const qint64 first : {qint64(1), qint64(63), boundary - 65, boundary - 64, boundary - 1}) {
                const std::shared_ptr<SeriesData> data = SeriesData::create(SampleType::Float64);
                const qint64 portion = std::min(std::max(first, qint64(1)), count);
                QVERIFY(data->append(series.data(), portion));
                QVERIFY(data->append(series.data() + portion, count - portion));
                QCOMPARE(data->end(), count);
                for (qint64 from = std::max(boundary - 3, qint64(0)); from < count; ++from)
                    COMPARE_RANGE(data->snapshot(), series, from, count);
                for (qint64 to = std::max(boundary - 66, qint64(0)); to <= count; to += 33)
                    COMPARE_RANGE(data->snapshot(), series, boundary - 80, to);
            }
        }
    }
}

void tst_SeriesData::theUppermostLevelsAreUsed()
{
    // 64 Mi values are one cell of the uppermost level; the ends of the range lie beside its boundaries.
    const qint64 cell = qint64(1) << cellBits(levelCount);
    const std::shared_ptr<SeriesData> data = SeriesData::create(SampleType::UInt8);
    const std::vector<quint8> tens(size_t(chunkSize), 10);
    while (data->end() < 2 * cell + chunkSize)
        QVERIFY(data->append(tens.data(), qint64(tens.size())));
    QVERIFY(data->append(200.0));
    const qint64 end = data->end();
    const SeriesSnapshot snapshot = data->snapshot();
    for (const qint64 from : {qint64(0), qint64(1), cell - 1, cell, cell + 1}) {
        for (const qint64 to : {cell, 2 * cell - 1, 2 * cell, 2 * cell + 1, end}) {
            const SStatistics statistics = snapshot.statisticsIn(from, to);
            const double sum = 10.0 * double(std::max(to - from, qint64(0))) + (to == end ? 190.0 : 0.0);
            QCOMPARE(statistics.sum, sum);
            QCOMPARE(statistics.count, std::max(to - from, qint64(0)));
            QCOMPARE(snapshot.extremesIn(from, to).highest, from >= to ? -largest : to == end ? 200.0 : 10.0);
        }
        QCOMPARE(snapshot.smallestPositiveIn(from, end), 10.0);
        QCOMPARE(snapshot.lowerBound(11.0, from), end - 1);
        QCOMPARE(snapshot.extremePlacesIn(from, end).highestAt, end - 1);
    }
}

void tst_SeriesData::aSeriesThatBeginsLaterAnswersTheSame()
{
    constexpr qint64 chunks = 40; // some cells of the level above chunks are whole, and that of the first isn't
    std::vector<qint16> values(size_t(chunks * chunkSize));
    std::mt19937 random(8);
    for (qint16 &value : values)
        value = qint16(random() % 20'000) - 10'000;
    const std::shared_ptr<SeriesData> first = SeriesData::create(SampleType::Int16);
    const std::shared_ptr<SeriesData> later = SeriesData::create(SampleType::Int16, 1'000'005 * chunkSize + 17);
    const qint64 begin = later->begin();
    QCOMPARE(begin, 1'000'005 * chunkSize);
    QCOMPARE(later->end(), begin);
    QVERIFY(later->snapshot().isEmpty());
    for (const std::shared_ptr<SeriesData> &series : {first, later})
        QVERIFY(series->append(values.data(), qint64(values.size())));
    const SeriesSnapshot expected = first->snapshot();
    const SeriesSnapshot found = later->snapshot();
    for (int round = 0; round < 300; ++round) {
        const auto range = anyRange(random, expected.end());
        const qint64 from = round < 100 ? range.first : range.first / 8;
        const qint64 to = round < 100 ? range.second : expected.end() - from / 2;
        const SExtremePlaces places = expected.extremePlacesIn(from, to);
        QCOMPARE(found.extremesIn(begin + from, begin + to).highest, expected.extremesIn(from, to).highest);
        QCOMPARE(found.extremesIn(begin + from, begin + to).lowest, expected.extremesIn(from, to).lowest);
        QCOMPARE(found.statisticsIn(begin + from, begin + to).sum, expected.statisticsIn(from, to).sum);
        if (from < to)
            QCOMPARE(found.extremePlacesIn(begin + from, begin + to).lowestAt, begin + places.lowestAt);
    }
    later->dropBefore(begin + 3 * chunkSize);
    QCOMPARE(later->begin(), begin + 3 * chunkSize);
}

void tst_SeriesData::whatStandsOutAtTheEndsCounts()
{
    // Cells at the ends of a range hold what is in it and what isn't.
    PlainSeries series = someNumbers(2 * chunkSize + 1000, 0.0, 12);
    std::mt19937 random(13);
    for (const double outstanding : {1e6, -1e6, notANumber}) {
        for (const qint64 length : {90, 700, 5000, 40'000, 300'000}) {
            const qint64 from = qint64(random() % quint64(series.size() - length - 2)) + 1;
            const qint64 to = from + length;
            for (const qint64 at : {from - 1, from, from + 1, from + length / 2, to - 2, to - 1, to}) {
                const double before = std::exchange(series.data()[at], outstanding);
                COMPARE_EXTREMES(stored(series)->snapshot(), series, from, to);
                series.data()[at] = before;
            }
        }
    }
}

void tst_SeriesData::gapsStandAnywhere()
{
    for (const qint64 count : {1, 2, 63, 64, 65, 1024, 4096, 4097, 20'000}) {
        for (const double gap : {notANumber, infinite, -infinite}) {
            for (const qint64 at : {qint64(0), qint64(1), count / 2, count - 2, count - 1}) {
                PlainSeries series = someNumbers(count, 0.0, 6);
                if (at < 0 || at >= count)
                    continue;
                series.data()[at] = gap;
                COMPARE_RANGE(stored(series)->snapshot(), series, 0, count);
                COMPARE_RANGE(stored(series)->snapshot(), series, at, count);
                COMPARE_RANGE(stored(series)->snapshot(), series, 0, at + 1);
                COMPARE_RANGE(stored(series, SampleType::Float32)->snapshot(), singles(series), 0, count);
            }
        }
        PlainSeries nothing = someNumbers(count, 2.0, 7);
        COMPARE_RANGE(stored(nothing)->snapshot(), nothing, 0, count);
        nothing.data()[count - 1] = -5.0; // the only value
        COMPARE_RANGE(stored(nothing)->snapshot(), nothing, 0, count);
    }
}

void tst_SeriesData::tinyAndHugeValues()
{
    const std::vector<PlainSeries> all = {
        {smallest, -smallest, 0.0, -0.0},
        {largest},
        {-largest},
        {largest, notANumber, -largest},
        {0.0, 0.0},
        {-1.0, -0.0},
        {1e300, 1.0, -1e300},
    };
    for (const PlainSeries &some : all) {
        for (const int times : {1, 40, 3000}) {
            PlainSeries series;
            for (int k = 0; k < times; ++k) {
                for (qint64 i = 0; i < some.size(); ++i)
                    series.append(some.at(i));
            }
            const SeriesSnapshot snapshot = stored(series)->snapshot();
            COMPARE_EXTREMES(snapshot, series, 0, series.size());
            const SStatistics statistics = snapshot.statisticsIn(0, series.size());
            QVERIFY(!std::isnan(statistics.sum));
            QVERIFY(std::isfinite(statistics.mean));
            QVERIFY(statistics.m2 >= 0.0);
        }
    }
    // Their sum is beyond double, their mean is not.
    PlainSeries huge;
    for (int i = 0; i < 10'000; ++i)
        huge.append(1.5e308);
    const SStatistics statistics = stored(huge)->snapshot().statisticsIn(0, huge.size());
    QVERIFY(std::isinf(statistics.sum));
    QCOMPARE(statistics.mean, 1.5e308);
}

void tst_SeriesData::theDeviationOfLargeValuesIsRight()
{
    for (const double offset : {0.0, 1e6, -1e9}) {
        std::mt19937 random(8);
        std::uniform_real_distribution<double> uniform(0.0, 10.0);
        PlainSeries series;
        for (int i = 0; i < 1'000'000; ++i)
            series.append(offset + uniform(random));
        const SStatistics statistics = stored(series)->snapshot().statisticsIn(0, series.size());
        QVERIFY(std::abs(statistics.deviation() - 2.8868) < 0.005);
        COMPARE_RANGE(stored(series)->snapshot(), series, 10, series.size() - 10);
    }
}

void tst_SeriesData::sumsOfWholeNumbersAreExact()
{
    std::mt19937 random(9);
    PlainSeries series;
    qint64 sum = 0;
    for (int i = 0; i < 1'000'000; ++i) {
        const qint64 value = random() % 7 == 0 ? 123'456'789 : qint64(random() % 1000);
        series.append(double(value));
        sum += value;
    }
    QCOMPARE(stored(series)->snapshot().statisticsIn(0, series.size()).sum, double(sum));
    QCOMPARE(stored(series, SampleType::Int32)->snapshot().statisticsIn(0, series.size()).sum, double(sum));
}

void tst_SeriesData::valuesAreConverted()
{
    const std::shared_ptr<SeriesData> bytes = SeriesData::create(SampleType::Int8);
    const double numbers[] = {1.4, 1.5, -1.5, -1.6, 127.4, -128.5, -0.2};
    QVERIFY(bytes->append(numbers, 7));
    const double expected[] = {1.0, 2.0, -1.0, -2.0, 127.0, -128.0, 0.0};
    for (int i = 0; i < 7; ++i)
        QCOMPARE(bytes->snapshot().valueAt(i), expected[i]);

    const std::shared_ptr<SeriesData> singles = SeriesData::create(SampleType::Float32);
    const qint32 whole[] = {1, -2, 1 << 30};
    QVERIFY(singles->append(whole, 3));
    QVERIFY(singles->append(1e300)); // beyond float: a gap
    QCOMPARE(singles->snapshot().extremes().highest, double(1 << 30));
    QVERIFY(std::isnan(singles->snapshot().valueAt(3)));
}

void tst_SeriesData::whatDoesntFitIsRefused()
{
    for (const double number : {notANumber, infinite, -infinite, 127.5, -129.0, 1e300}) {
        const std::shared_ptr<SeriesData> bytes = SeriesData::create(SampleType::Int8);
        const double numbers[] = {1.0, number};
        QVERIFY(!bytes->append(numbers, 2));
        QCOMPARE(bytes->end(), qint64(0));
    }
    const std::shared_ptr<SeriesData> words = SeriesData::create(SampleType::UInt32);
    QVERIFY(!words->append(-1.0));
    QVERIFY(words->append(4294967295.0));
    QCOMPARE(words->snapshot().valueAt(0), 4294967295.0);
    QVERIFY(words->append(static_cast<const double *>(nullptr), 0));
    QVERIFY(words->append(static_cast<const double *>(nullptr), -5));
    QCOMPARE(words->end(), qint64(1));
}

void tst_SeriesData::valuesAreWrittenInPlace()
{
    const std::shared_ptr<SeriesData> data = SeriesData::create(SampleType::Float32);
    PlainSeries series;
    std::mt19937 random(10);
    while (data->end() < 2 * chunkSize + 100) {
        const SRoom room = data->room();
        QVERIFY(room.count > 0);
        QCOMPARE(room.count, chunkSize - data->end() % chunkSize);
        QCOMPARE(data->room().begin, room.begin);
        const qint64 count = std::min(room.count, qint64(random() % 70'000));
        for (qint64 i = 0; i < count; ++i) {
            const auto value = float(random() % 1000);
            std::memcpy(room.begin + i * qint64(sizeof value), &value, sizeof value);
            series.append(double(value));
        }
        data->publish(count);
        QCOMPARE(data->end(), series.size());
    }
    COMPARE_RANGE(data->snapshot(), series, 0, series.size());
}

void tst_SeriesData::theLowerBoundIsThatOfAScan()
{
    std::mt19937 random(11);
    for (const double gaps : {0.0, 0.01}) {
        for (const bool ascends : {true, false}) {
            PlainSeries series = someNumbers(chunkSize + 3000, gaps, 12);
            double last = 0.0;
            for (qint64 i = 0; ascends && i < series.size(); ++i) {
                if (std::isfinite(series.at(i)))
                    series.data()[i] = last += double(random() % 3); // equal ones among them
            }
            const SeriesSnapshot snapshot = stored(series)->snapshot();
            for (int round = 0; round < 200; ++round) {
                const qint64 from = qint64(random() % quint64(series.size()));
                const double x = ascends ? double(random() % 600'000) : double(random() % 8000) - 4000.0;
                qint64 expected = from;
                while (expected < series.size() && !(std::isfinite(series.at(expected)) && series.at(expected) >= x))
                    ++expected;
                QCOMPARE(snapshot.lowerBound(x, from), expected);
            }
        }
    }
}

void tst_SeriesData::snapshotsStayAsTheyWere()
{
    const PlainSeries series = someNumbers(10'000, 0.01, 13);
    const std::shared_ptr<SeriesData> data = SeriesData::create(SampleType::Float64);
    std::vector<SeriesSnapshot> snapshots;
    for (qint64 i = 0; i < series.size(); ++i) {
        if (i % 500 == 0)
            snapshots.push_back(data->snapshot());
        QVERIFY(data->append(series.at(i)));
    }
    for (const SeriesSnapshot &snapshot : snapshots)
        COMPARE_RANGE(snapshot, series, 0, snapshot.end());
    QVERIFY(snapshots[1] == snapshots[1]);
    QVERIFY(snapshots[1] != snapshots[2]);
    QVERIFY(snapshots[1].isOfSameSeries(snapshots[2]));
}

void tst_SeriesData::aScaledSnapshotAnswersAsTheProductsDo()
{
    constexpr double factor = 4.0; // exact
    const PlainSeries series = someNumbers(chunkSize + 5000, 0.01, 14);
    PlainSeries products;
    for (qint64 i = 0; i < series.size(); ++i)
        products.append(factor * series.at(i));
    const SeriesSnapshot plain = stored(series)->snapshot();
    const SeriesSnapshot scaled = plain.scaled(factor);
    std::mt19937 random(15);
    for (int round = 0; round < 100; ++round) {
        const auto [from, to] = anyRange(random, series.size());
        COMPARE_RANGE(scaled, products, from, to);
    }
    QVERIFY(scaled != plain && !scaled.isOfSameSeries(plain));
    QVERIFY(scaled.scaled(1.0 / factor) == plain);
    const SeriesSnapshot few = stored({3.0, notANumber, -1e308}, SampleType::Float64)->snapshot().scaled(10.0);
    QCOMPARE(few.valueAt(0), 30.0);
    QVERIFY(std::isnan(few.valueAt(1)));
    QCOMPARE(few.valueAt(2), -largest); // and no gap
    QCOMPARE(few.extremes().lowest, -largest);
    QCOMPARE(few.smallestPositiveIn(0, 3), 30.0);
    QVERIFY(SeriesSnapshot().scaled(2.0).extremes().isEmpty());
    QCOMPARE(stored({1.0}, SampleType::Int16)->snapshot().scaled(0.5).type(), SampleType::Float64);
}

QTEST_GUILESS_MAIN(tst_SeriesData)
#include "tst_SeriesData.moc"
