// SPDX-License-Identifier: MIT
#include "Reading.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstring>
#include <ctime>

#include <malloc.h>
#include <unistd.h>

/// What a reader may take from the rest of the program: memory, and the time of the GUI thread.
class tst_ReaderLimits : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void memoryIsThatOfTheValues_data();
    void memoryIsThatOfTheValues();
    void theGuiThreadIsFree_data();
    void theGuiThreadIsFree();

private:
    QTemporaryDir m_folder;
};

namespace {

constexpr double mebi = 1 << 20;

/// The process's own memory in bytes, without what belongs to files.
double residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm")); // pages: size, resident, of which shared, ...
    if (!statm.open(QIODevice::ReadOnly))
        return 0.0;
    const QList<QByteArray> pages = statm.readAll().split(' ');
    return double(pages.value(1).toLongLong() - pages.value(2).toLongLong()) * double(sysconf(_SC_PAGESIZE));
}

/// A sanitizer takes memory and time of its own.
bool isSanitized()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}

/// Milliseconds that the processor worked for this thread: others on a busy machine don't count.
double threadMilliseconds()
{
    timespec used = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return double(used.tv_sec) * 1e3 + double(used.tv_nsec) / 1e6;
}

QByteArray linesOf(const QByteArray &line, int count)
{
    return line.repeated(count);
}

} // namespace

void tst_ReaderLimits::memoryIsThatOfTheValues_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("format");
    QTest::addColumn<double>("valueBytes");
    constexpr int lines = 3'000'000;
    const int text = SeriesReader::Text;
    QTest::newRow("no values to speak of") << linesOf("1\n", 3) << text << 24.0;
    QTest::newRow("a column") << linesOf("-12.375\n", lines) << text << 8.0 * lines;
    QTest::newRow("a chunk and one value") << linesOf("1\n", (1 << 18) + 1) << text << 8.0 * ((1 << 18) + 1);
    QTest::newRow("three columns") << linesOf("1,5;2,25;-3\n", lines) << text << 24.0 * lines;
    QTest::newRow("samples") << linesOf("abcd", 4 * lines) << int(SeriesReader::Raw) << 16.0 * lines;
}

void tst_ReaderLimits::memoryIsThatOfTheValues()
{
    if (isSanitized() || residentBytes() <= 0.0)
        QSKIP("what a process needs isn't told here");
    QFETCH(QByteArray, bytes);
    QFETCH(int, format);
    QFETCH(double, valueBytes);
    const QString path = m_folder.filePath("values");
    writeFile(path, bytes);
    bytes.clear();
    bytes.squeeze();
    malloc_trim(0);
    const double before = residentBytes();
    double highest = before;
    SeriesReader reader;
    reader.setFormat(SeriesReader::Format(format));
    reader.setSource(path);
    const auto isRead = [&] {
        highest = std::max(highest, residentBytes());
        return hasEnded(reader);
    };
    QVERIFY(QTest::qWaitFor(isRead, 60'000));
    QCOMPARE(reader.errorString(), QString());
    isRead();
    const double taken = (highest - before) / mebi;
    qInfo("%.1f MiB for values of %.1f MiB", taken, valueBytes / mebi);
    QVERIFY(taken <= 1.04 * valueBytes / mebi + 8.0);
}

void tst_ReaderLimits::theGuiThreadIsFree_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("follows");
    QTest::newRow("a column") << linesOf("-12.375\n", 2'000'000) << false;
    QTest::newRow("a hundred columns") << linesOf(QByteArray("1;").repeated(99) + "2\n", 20'000) << false;
    QTest::newRow("a file that is followed") << linesOf("1;2\n", 500'000) << true;
    QTest::newRow("a head of a thousand lines") << linesOf("a; b\n", 1'000) + linesOf("1;2\n", 500'000) << false;
    QTest::newRow("gaps in every line") << linesOf("1;x\n", 300'000) << false;
}

void tst_ReaderLimits::theGuiThreadIsFree()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, follows);
    const QString path = m_folder.filePath("series");
    writeFile(path, bytes);
    double longest = 0.0;
    double longestPassed = 0.0;
    const auto note = [&](const auto &work) {
        QElapsedTimer passed;
        passed.start();
        const double before = threadMilliseconds();
        work();
        longest = std::max(longest, threadMilliseconds() - before);
        longestPassed = std::max(longestPassed, double(passed.nsecsElapsed()) / 1e6);
    };
    auto reader = std::make_unique<SeriesReader>();
    reader->setFollow(follows);
    note([&] { reader->setSource(path); });
    QElapsedTimer since;
    since.start();
    while (reader->status() != SeriesReader::Ready && reader->status() != SeriesReader::Error
           && since.elapsed() < 60'000) {
        note([] { QCoreApplication::processEvents(); });
        usleep(200);
    }
    QCOMPARE(reader->status(), SeriesReader::Ready);
    note([&] { reader->reload(); });
    note([&] { reader.reset(); }); // in the middle
    qInfo("held up for %.1f ms at most, of which it worked for %.1f", longestPassed, longest);
    if (isSanitized())
        QSKIP("a sanitizer takes most of the time");
    QVERIFY(longest <= 16.0);
}

QTEST_GUILESS_MAIN(tst_ReaderLimits)
#include "tst_ReaderLimits.moc"
