// SPDX-License-Identifier: MIT
#include "views/store/ChunkMemory.h"

#include <QtTest>

#include <algorithm>
#include <vector>

class tst_ChunkMemory : public QObject
{
    Q_OBJECT

private slots:
    void chunksDoNotOverlap_data();
    void chunksDoNotOverlap();
    void aChunkOutlivesTheOthers();
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

QTEST_GUILESS_MAIN(tst_ChunkMemory)
#include "tst_ChunkMemory.moc"
