// SPDX-License-Identifier: MIT
#include "views/store/ChunkMemory.h"

#include "views/store/SeriesData.h"

#include <QtTest>

#include <algorithm>
#include <vector>

#if defined(__GLIBC__)
#  include <malloc.h>
#  include <sys/mman.h>
#  include <unistd.h>
#endif

class tst_ChunkMemory : public QObject
{
    Q_OBJECT

private slots:
    void chunksDoNotOverlap_data();
    void chunksDoNotOverlap();
    void aChunkOutlivesTheOthers();
    void preparedMemoryKeepsWhatLiesThere();
    void anyMemoryCanBePrepared();
    void aGrowingSeriesFindsPreparedMemory_data();
    void aGrowingSeriesFindsPreparedMemory();
};

namespace {

/// Chunks of which each is full of its own number.
std::vector<std::shared_ptr<char>> filledChunks(qint64 bytes, int count)
{
    ChunkMemory memory;
    std::vector<std::shared_ptr<char>> chunks;
    for (int i = 0; i < count; ++i) {
        chunks.push_back(memory.take(bytes));
        std::fill_n(chunks.back().get(), bytes, char(i));
    }
    return chunks;
}

bool isFullOf(const char *chunk, qint64 bytes, int number)
{
    return std::all_of(chunk, chunk + bytes, [=](char c) { return c == char(number); });
}

#if defined(__GLIBC__)
/// How many of the pages of which all bytes are among these the system has handed out.
qint64 residentPages(const char *begin, qint64 bytes)
{
    const qint64 size = qint64(sysconf(_SC_PAGESIZE));
    const qint64 front = (size - qint64(quintptr(begin) % quintptr(size))) % size;
    std::vector<unsigned char> pages(size_t((bytes - front) / size));
    if (mincore(const_cast<char *>(begin) + front, pages.size() * size_t(size), pages.data()) != 0)
        qFatal("mincore failed");
    return std::count_if(pages.begin(), pages.end(), [](unsigned char page) { return page & 1; });
}
#endif

} // namespace

void tst_ChunkMemory::chunksDoNotOverlap_data()
{
    QTest::addColumn<int>("valueSize");
    for (const int valueSize : {1, 2, 4, 8})
        QTest::addRow("values of %d bytes", valueSize) << valueSize;
}

void tst_ChunkMemory::chunksDoNotOverlap()
{
    QFETCH(int, valueSize);
    const qint64 bytes = qint64(valueSize) << 18;
    const int count = int((qint64(24) << 20) / bytes); // the last third in large pages
    const std::vector<std::shared_ptr<char>> chunks = filledChunks(bytes, count);
    for (int i = 0; i < count; ++i) {
        QVERIFY(isFullOf(chunks[size_t(i)].get(), bytes, i));
        QCOMPARE(quintptr(chunks[size_t(i)].get()) % quintptr(alignof(double)), quintptr(0));
    }
}

void tst_ChunkMemory::aChunkOutlivesTheOthers()
{
    constexpr qint64 bytes = qint64(1) << 20;
    std::vector<std::shared_ptr<char>> chunks = filledChunks(bytes, 24);
    const std::shared_ptr<char> kept = chunks[17];
    chunks.clear();
    QVERIFY(isFullOf(kept.get(), bytes, 17));
}

void tst_ChunkMemory::preparedMemoryKeepsWhatLiesThere()
{
    constexpr qint64 bytes = qint64(1) << 20;
    const std::vector<std::shared_ptr<char>> chunks = filledChunks(bytes, 20); // of either kind of pages
    for (size_t i = 0; i < chunks.size(); ++i) {
        ChunkMemory::prepare(chunks[i].get() + 100, bytes - 1000);
        QVERIFY(isFullOf(chunks[i].get(), bytes, int(i)));
    }
}

void tst_ChunkMemory::anyMemoryCanBePrepared()
{
    const std::shared_ptr<char> chunk = ChunkMemory().take(1 << 16);
    if (!ChunkMemory::prepare(chunk.get(), 1 << 16))
        QSKIP("this system prepares no memory");
    for (const qint64 first : {0, 1, 4095, 4096, 30'000}) {
        for (const qint64 bytes : {0, 1, 4095, 4096, 4097, 30'000})
            QVERIFY(ChunkMemory::prepare(chunk.get() + first, bytes));
    }
}

void tst_ChunkMemory::aGrowingSeriesFindsPreparedMemory_data()
{
    QTest::addColumn<qint64>("values");
    QTest::addColumn<qint64>("ahead"); // bytes
    QTest::newRow("few values") << qint64(1000) << qint64(0);
    QTest::newRow("as much as there is") << qint64(1 << 14) << qint64(1 << 17);
    QTest::newRow("no more than is worth it") << qint64(1 << 16) << ChunkMemory::mostPrepared;
    QTest::newRow("in the second chunk") << qint64(1 << 18) << ChunkMemory::mostPrepared;
}

void tst_ChunkMemory::aGrowingSeriesFindsPreparedMemory()
{
#if defined(__GLIBC__)
    QFETCH(qint64, values);
    QFETCH(qint64, ahead);
    const std::shared_ptr<char> chunk = ChunkMemory().take(1 << 16);
    if (!ChunkMemory::prepare(chunk.get(), 1 << 16))
        QSKIP("this system prepares no memory");
    const std::vector<double> numbers(size_t(values), 1.0); // kept: a chunk could take its place
    malloc_trim(0);                                         // what was used before isn't there either
    const std::shared_ptr<SeriesData> series = SeriesData::create(SampleType::Float64);
    QVERIFY(series->append(numbers.data(), values));
    const SRoom room = series->room();
    QVERIFY(residentPages(room.begin, room.count * 8) >= ahead / qint64(sysconf(_SC_PAGESIZE)) - 1);
    if (ahead == 0)
        QVERIFY(residentPages(room.begin, room.count * 8) <= 2);
#else
    QSKIP("this system prepares no memory");
#endif
}

QTEST_GUILESS_MAIN(tst_ChunkMemory)
#include "tst_ChunkMemory.moc"
