// SPDX-License-Identifier: MIT
#include "tests/views/store/PlainSeries.h"
#include "views/store/SeriesOf.h"

#include <QtTest>

#include <atomic>
#include <random>
#include <thread>

// One thread appends, or several build cells, while others look.

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Value i of a series without end, with a gap now and then.
double valueOf(qint64 i)
{
    const quint64 bits = (quint64(i) + 1) * 0x9e3779b97f4a7c15u;
    if (bits >> 32 & 0x1ff && i % 5000 > 20)
        return double(qint32(bits >> 33)) - 1e9;
    return bits >> 60 < 4 ? notANumber : std::numeric_limits<double>::infinity();
}

PlainSeries seriesOf(qint64 count)
{
    PlainSeries series;
    for (qint64 i = 0; i < count; ++i)
        series.append(valueOf(i));
    return series;
}

/// What is known of the first n values, for every n.
class Beginnings
{
public:
    explicit Beginnings(const PlainSeries &series)
    {
        SFound found;
        m_found.push_back(found);
        for (qint64 i = 0; i < series.size(); ++i) {
            found.take(i, series.at(i));
            m_found.push_back(found);
        }
    }

    /// Whether the whole of a snapshot is answered rightly.
    bool agreesWith(const SeriesSnapshot &snapshot) const
    {
        const SFound &found = m_found[size_t(snapshot.end())];
        const SExtremes extremes = snapshot.extremes();
        const SExtremePlaces places = snapshot.extremePlacesIn(0, snapshot.end());
        const SStatistics statistics = snapshot.statisticsIn(0, snapshot.end());
        const double positive = snapshot.smallestPositiveIn(0, snapshot.end());
        return extremes.isEmpty() == (found.count == 0)
            && (extremes.isEmpty() || (extremes.lowest == found.lowest && extremes.highest == found.highest))
            && extremes.hasGap == (found.firstGap >= 0) && places.lowestAt == found.lowestAt
            && places.highestAt == found.highestAt && statistics.count == found.count
            && statistics.positiveCount == found.positives
            && std::abs(statistics.sum - double(found.sum)) <= 1e-3 // sums of whole numbers, beside gaps
            && (positive == found.positive || (std::isnan(positive) && std::isnan(found.positive)));
    }

private:
    std::vector<SFound> m_found;
};

constexpr qint64 mostCounted = 70'000;

} // namespace

class tst_SeriesThreads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyCountIsAnsweredAsAScanDoes();
    void everyCountIsAnsweredWhileSomebodyAppends();
    void whatIsDroppedStaysForWhoSeesIt();
    void memoryStaysFlat();
    void indicesGoOnPastTheDirectory();
    void aFullDirectoryTakesNoMore();
    void externalMemoryIsAnsweredWhileItIsBuilt();
    void externalMemoryNeedntBeAligned();
    void theSeriesMayGoWhileItIsBuilt();
    void theOwnerGoesWithTheLastWhoLooks();

private:
    const PlainSeries m_series = seriesOf(mostCounted);
};

void tst_SeriesThreads::initTestCase()
{
    const SFound found = [this] {
        SFound all;
        for (qint64 i = 0; i < m_series.size(); ++i)
            all.take(i, m_series.at(i));
        return all;
    }();
    QVERIFY(found.count > mostCounted / 2);
    QVERIFY(found.count < mostCounted);
    QVERIFY(found.positives > 100);
}

void tst_SeriesThreads::everyCountIsAnsweredAsAScanDoes()
{
    const Beginnings beginnings(m_series);
    const std::shared_ptr<SeriesData> data = SeriesData::create(SampleType::Float64);
    std::mt19937 random(1);
    for (qint64 count = 1; count <= mostCounted; ++count) {
        QVERIFY(data->append(m_series.at(count - 1)));
        const SeriesSnapshot snapshot = data->snapshot();
        QCOMPARE(snapshot.end(), count);
        QVERIFY2(beginnings.agreesWith(snapshot), QByteArray::number(count));
        const qint64 from = std::max(count - qint64(random() % 300), qint64(0));
        COMPARE_EXTREMES(snapshot, m_series, from, count);
    }
}

void tst_SeriesThreads::everyCountIsAnsweredWhileSomebodyAppends()
{
    const Beginnings beginnings(m_series);
    const std::shared_ptr<SeriesData> data = SeriesData::create(SampleType::Float64);
    constexpr int readers = 2;
    std::atomic<qint64> seen[readers] = {};
    std::atomic<int> wrong{0};
    std::thread writer([&] {
        for (qint64 i = 0; i < mostCounted; ++i) {
            while (i > 8 + std::min(seen[0], seen[1])) // so that nearly every count is seen
                std::this_thread::yield();
            data->append(m_series.at(i));
        }
    });
    const auto look = [&](int reader) {
        for (qint64 end = 0; end < mostCounted;) {
            const SeriesSnapshot snapshot = data->snapshot();
            if (snapshot.end() == end) {
                std::this_thread::yield();
                continue;
            }
            end = snapshot.end();
            wrong += !beginnings.agreesWith(snapshot);
            wrong += !m_series.extremesComplaint(snapshot, end - 200, end).isEmpty();
            seen[reader] = end;
        }
    };
    std::thread other([&] { look(1); });
    look(0);
    other.join();
    writer.join();
    QCOMPARE(wrong.load(), 0);
}

void tst_SeriesThreads::whatIsDroppedStaysForWhoSeesIt()
{
    const std::shared_ptr<SeriesData> data = SeriesData::create(SampleType::Float32);
    constexpr qint64 total = 12 * chunkSize;
    constexpr qint64 kept = 2 * chunkSize + 100;
    std::atomic<bool> isDone{false};
    std::thread writer([&] {
        std::vector<float> portion;
        std::mt19937 random(2);
        for (qint64 i = 0; i < total;) {
            portion.clear();
            for (qint64 size = qint64(random() % 40'000); size > 0 && i < total; --size, ++i)
                portion.push_back(float(i % 10'007));
            data->append(portion.data(), qint64(portion.size()));
            data->dropBefore(data->end() - kept);
        }
        isDone = true;
    });
    std::vector<SeriesSnapshot> held;
    std::mt19937 random(3);
    qint64 looked = 0;
    while (!isDone || looked < 50) {
        held.push_back(data->snapshot());
        if (held.size() > 4)
            held.erase(held.begin() + qint64(random() % held.size()));
        for (const SeriesSnapshot &snapshot : held) {
            QVERIFY(snapshot.begin() % chunkSize == 0);
            if (snapshot.isEmpty())
                continue;
            ++looked;
            for (const qint64 i : {snapshot.begin(), snapshot.end() - 1})
                QCOMPARE(snapshot.valueAt(i), double(i % 10'007));
            const SExtremes extremes = snapshot.extremes();
            QVERIFY(snapshot.count() < 10'007 || (extremes.lowest == 0.0 && extremes.highest == 10'006.0));
        }
    }
    writer.join();
    QCOMPARE(data->end(), total);
    QVERIFY(data->begin() > 0);
    QVERIFY(data->end() - data->begin() < kept + chunkSize);
    QVERIFY(std::isnan(data->snapshot().valueAt(data->begin() - 1)));
}

/// Bytes of memory that this process holds, 0 if the system doesn't say.
static qint64 heldMemory()
{
    QFile status(QStringLiteral("/proc/self/statm"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    return status.readAll().split(' ').value(1).toLongLong() * 4096;
}

void tst_SeriesThreads::memoryStaysFlat()
{
    const std::shared_ptr<SeriesData> data = SeriesData::create(SampleType::Float64);
    const std::vector<double> portion(50'000, 1.0);
    qint64 before = 0;
    for (int round = 0; round < 600; ++round) { // 240 MB
        QVERIFY(data->append(portion.data(), qint64(portion.size())));
        data->dropBefore(data->end() - 1'000'000);
        const SeriesSnapshot forOneFrame = data->snapshot();
        if (round == 100)
            before = heldMemory();
    }
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QVERIFY(before >= 0); // the rest says nothing: they keep for a while what was freed
#else
    QVERIFY(heldMemory() - before < 4 * chunkSize * qint64(sizeof(double)));
#endif
    QCOMPARE(data->end(), qint64(600 * 50'000));
}

void tst_SeriesThreads::indicesGoOnPastTheDirectory()
{
    // A directory of 256 chunks, gone round twice.
    const auto data = std::make_shared<SeriesOf<quint8>>(256);
    std::vector<quint8> portion(static_cast<size_t>(chunkSize));
    for (qint64 chunk = 0; chunk < 600; ++chunk) {
        std::fill(portion.begin(), portion.end(), quint8(chunk % 251));
        QVERIFY(data->append(portion.data(), chunkSize));
        data->dropBefore(data->end() - 20 * chunkSize);
    }
    const SeriesSnapshot snapshot = data->snapshot();
    QCOMPARE(snapshot.end(), 600 * chunkSize);
    QCOMPARE(snapshot.begin(), 580 * chunkSize);
    for (qint64 chunk = 580; chunk < 600; ++chunk) {
        const SExtremes extremes = snapshot.extremesIn(chunk * chunkSize, (chunk + 1) * chunkSize);
        QCOMPARE(extremes.lowest, double(chunk % 251));
        QCOMPARE(extremes.highest, double(chunk % 251));
    }
    QCOMPARE(snapshot.extremes().lowest, double(580 % 251));
    QCOMPARE(snapshot.extremes().highest, double(599 % 251));
    QCOMPARE(snapshot.statisticsIn(0, snapshot.end()).count, 20 * chunkSize);
}

void tst_SeriesThreads::aFullDirectoryTakesNoMore()
{
    const auto data = std::make_shared<SeriesOf<quint8>>(256);
    const std::vector<quint8> portion(size_t(chunkSize), 7);
    const SeriesSnapshot empty = data->snapshot(); // sees the first chunk, although it is empty
    for (int chunk = 0; chunk < 256; ++chunk)
        QVERIFY(data->append(portion.data(), chunkSize));
    QVERIFY(!data->append(portion.data(), 1));
    QCOMPARE(data->room().count, qint64(0));
    SeriesSnapshot full = data->snapshot();
    data->dropBefore(2 * chunkSize);
    QVERIFY(!data->append(portion.data(), 1)); // what a snapshot sees can't make room
    QCOMPARE(full.valueAt(0), 7.0);
    full = SeriesSnapshot();
    QVERIFY(!data->append(portion.data(), 1)); // there is still the other one
    QCOMPARE(data->end(), 256 * chunkSize);
}

void tst_SeriesThreads::externalMemoryIsAnsweredWhileItIsBuilt()
{
    const auto values = std::make_shared<std::vector<float>>();
    PlainSeries series;
    for (qint64 i = 0; i < 5 * chunkSize + 1000; ++i) {
        values->push_back(float(i % 7919) - 100.0f);
        series.append(double(values->back()));
    }
    for (int round = 0; round < 20; ++round) {
        const auto data = SeriesData::createOver(SampleType::Float32, values->data(), qint64(values->size()), values);
        std::atomic<int> progresses{0};
        QVERIFY(!data->isBuilt());
        QVERIFY(data->isExternal());
        QVERIFY(!data->append(1.0));
        QCOMPARE(data->room().count, qint64(0));
        const SeriesSnapshot snapshot = data->snapshot();
        QVERIFY(!snapshot.isExact());
        if (round % 2)
            data->buildInBackground([&progresses] { ++progresses; });
        std::mt19937 random(4);
        for (int look = 0; look < 200; ++look) {
            // Whatever is built: what it says lies within the truth, and short ranges are exact.
            const qint64 from = qint64(random() % quint64(series.size()));
            const SExtremes some = snapshot.extremesIn(from, series.size());
            QVERIFY(!some.isEmpty());
            QVERIFY(some.lowest >= -100.0 && some.highest <= 7818.0);
            COMPARE_EXTREMES(snapshot, series, from, from + qint64(random() % 1000));
        }
        if (round % 3 == 0)
            data->buildNow();
        if (round % 3 == 0 || round % 2)
            QTRY_VERIFY(data->isBuilt());
        if (data->isBuilt()) {
            QVERIFY(snapshot.isExact());
            COMPARE_RANGE(snapshot, series, 0, series.size());
            COMPARE_RANGE(snapshot, series, 5, series.size() - 3);
            QTRY_VERIFY(round % 2 == 0 || progresses > 0);
        }
    }
}

void tst_SeriesThreads::externalMemoryNeedntBeAligned()
{
    const PlainSeries series = seriesOf(chunkSize + 5000);
    for (const int shift : {1, 3, 4}) {
        const auto bytes = std::make_shared<std::vector<char>>(size_t(series.size()) * sizeof(double) + 8);
        std::memcpy(bytes->data() + shift, series.data(), size_t(series.size()) * sizeof(double));
        const auto data = SeriesData::createOver(SampleType::Float64, bytes->data() + shift, series.size(), bytes);
        data->buildNow();
        COMPARE_RANGE(data->snapshot(), series, 0, series.size());
        COMPARE_RANGE(data->snapshot(), series, 77, series.size() - 5);
    }
}

void tst_SeriesThreads::theSeriesMayGoWhileItIsBuilt()
{
    const auto values = std::make_shared<std::vector<qint16>>(size_t(20 * chunkSize), qint16(5));
    for (int round = 0; round < 50; ++round) {
        std::atomic<int> progresses{0};
        auto data = SeriesData::createOver(SampleType::Int16, values->data(), qint64(values->size()), values);
        data->buildInBackground([&progresses] { ++progresses; });
        if (round % 2)
            QTRY_VERIFY(progresses > 0);
        data.reset();
        const int then = progresses;
        QTest::qWait(1);
        QCOMPARE(progresses.load(), then);
    }
}

void tst_SeriesThreads::theOwnerGoesWithTheLastWhoLooks()
{
    auto values = std::make_shared<std::vector<double>>(1000, 2.0);
    const std::weak_ptr<std::vector<double>> watched = values;
    auto data = SeriesData::createOver(SampleType::Float64, values->data(), 1000, values);
    values.reset();
    SeriesSnapshot snapshot = data->snapshot();
    data.reset();
    QVERIFY(!watched.expired());
    QCOMPARE(snapshot.extremes().highest, 2.0);
    snapshot = SeriesSnapshot();
    QVERIFY(watched.expired());
}

QTEST_GUILESS_MAIN(tst_SeriesThreads)
#include "tst_SeriesThreads.moc"
