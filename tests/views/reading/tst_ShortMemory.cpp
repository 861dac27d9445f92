// SPDX-License-Identifier: MIT
#include "Reading.h"

#include "views/store/MovingAverage.h"
#include "views/store/SeriesDifference.h"

#include <QTemporaryDir>

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>
#include <vector>

/// How many large blocks of memory there are left. Chunks of series are such blocks, of 262144 doubles each.
static std::atomic<int> blocksLeft{std::numeric_limits<int>::max()};

void *operator new[](std::size_t size)
{
    constexpr std::size_t large = 1 << 20;
    if (size >= large && --blocksLeft < 0)
        throw std::bad_alloc();
    if (void *const block = std::malloc(size))
        return block;
    throw std::bad_alloc();
}

void operator delete[](void *block) noexcept
{
    std::free(block);
}

void operator delete[](void *block, std::size_t) noexcept
{
    std::free(block);
}

/// What happens when the system gives no more memory: what is there stays, and it's said that something is missing.
class tst_ShortMemory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void cleanup() { blocksLeft = std::numeric_limits<int>::max(); }
    void aSeriesKeepsWhatItHas();
    void aTextIsReadAsFarAsItFits();
    void aDifferenceGoesOnWhenThereIsMemory();
    void anAverageGoesOnWhenThereIsMemory();

private:
    QTemporaryDir m_folder;
};

namespace {

constexpr int blockValues = 262144;
constexpr int blocks = 3;

void fillWithOnes(SeriesStore &store)
{
    const std::vector<double> ones((blocks + 1) * blockValues, 1.0);
    QVERIFY(store.append(ones.data(), qint64(ones.size())));
}

/// Whether a store has so many values, all the same.
bool holds(const SeriesStore &store, qint64 count, double value)
{
    const SeriesSnapshot values = store.snapshot();
    const SExtremes extremes = values.extremesIn(0, values.end());
    return values.end() == count && extremes.lowest == value && extremes.highest == value;
}

void expectWarning()
{
    const QString words = QStringLiteral("out of memory: value %1 and all that follow are missing");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(words.arg(blocks * blockValues)));
}

} // namespace

void tst_ShortMemory::aSeriesKeepsWhatItHas()
{
    SeriesStore store;
    const std::vector<double> values((blocks + 1) * blockValues, 1.5);
    blocksLeft = blocks;
    QVERIFY(!store.append(values.data(), qint64(values.size())));
    QVERIFY(holds(store, blocks * blockValues, 1.5));
    blocksLeft = 1; // there's some again
    QVERIFY(store.append(1.5));
    QVERIFY(holds(store, blocks * blockValues + 1, 1.5));
}

void tst_ShortMemory::aTextIsReadAsFarAsItFits()
{
    const QString path = m_folder.filePath("long");
    writeFile(path, QByteArray("1;1\n").repeated(2 * blocks * blockValues));
    blocksLeft = 2 * blocks - 1; // the second column gets one less
    SeriesReader reader;
    reader.setSource(path);
    QTRY_VERIFY(hasEnded(reader));
    constexpr int rows = (blocks - 1) * blockValues;
    QCOMPARE(reader.errorString(),
             QStringLiteral("“%1” is larger than the memory; %2 lines were read").arg(path).arg(rows));
    QCOMPARE(reader.stores().size(), 2);
    QVERIFY(holds(*static_cast<SeriesStore *>(reader.stores().at(1)), rows, 1.0));
}

void tst_ShortMemory::aDifferenceGoesOnWhenThereIsMemory()
{
    SeriesStore ones;
    fillWithOnes(ones);
    SeriesDifference difference;
    difference.setFactor(0.5);
    difference.setMinuend(&ones);
    blocksLeft = blocks;
    expectWarning();
    difference.setSubtrahend(&ones);
    QTRY_VERIFY(!difference.isBusy());
    QVERIFY(!difference.store()->isComplete());
    QVERIFY(holds(*difference.store(), blocks * blockValues, 0.5));
    blocksLeft = 3; // of both
    ones.append(1.0);
    QTRY_VERIFY(difference.store()->isComplete());
    QVERIFY(holds(*difference.store(), ones.snapshot().end(), 0.5));
}

void tst_ShortMemory::anAverageGoesOnWhenThereIsMemory()
{
    SeriesStore ones;
    fillWithOnes(ones);
    MovingAverage average;
    average.setDepth(3);
    blocksLeft = blocks;
    expectWarning();
    average.setSource(&ones);
    QTRY_VERIFY(!average.isBusy());
    QVERIFY(!average.store()->isComplete());
    QVERIFY(holds(*average.store(), blocks * blockValues, 1.0));
    blocksLeft = 3; // of both
    ones.append(1.0);
    QTRY_VERIFY(average.store()->isComplete());
    QVERIFY(holds(*average.store(), ones.snapshot().end(), 1.0));
}

QTEST_GUILESS_MAIN(tst_ShortMemory)
#include "tst_ShortMemory.moc"
