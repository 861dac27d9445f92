// SPDX-License-Identifier: MIT
#include "Reading.h"

#include "views/reading/MappedFile.h"

#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <csetjmp>
#include <csignal>
#include <thread>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

/// Mapped files that others shorten, and what becomes of faults that have nothing to do with them.
class tst_MappedFile : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_file.setFileName(m_folder.filePath("mapped"));
        QVERIFY(m_file.open(QIODevice::ReadWrite | QIODevice::Truncate | QIODevice::Unbuffered));
        QVERIFY(m_file.write(QByteArray(16 * page, 'x')) == 16 * page);
    }
    void cleanup() { m_file.close(); }

    void bytesAreThoseOfTheFile();
    void whatIsCutOffReadsAsZeros();
    void manyThreadsMayMeetTheCut();
    void anotherFileIsLeftAlone();
    void onlySoManyAreMapped();
    void anotherHandlerGetsOtherFaults();
    void theHandlerGoesWithTheLastFile();

private:
    std::shared_ptr<const MappedFile> map() const { return MappedFile::map(m_file.handle(), 16 * page); }

    static constexpr int page = 4096;
    QTemporaryDir m_folder;
    QFile m_file;
};

namespace {

sigjmp_buf behindTheFault;
std::atomic<int> faults{0};

void noteFault(int)
{
    ++faults;
    siglongjmp(behindTheFault, 1);
}

struct sigaction busAction()
{
    struct sigaction now = {};
    sigaction(SIGBUS, nullptr, &now);
    return now;
}

} // namespace

void tst_MappedFile::bytesAreThoseOfTheFile()
{
    const auto mapped = map();
    QVERIFY(mapped);
    QCOMPARE(QByteArray(mapped->begin(), 16 * page), QByteArray(16 * page, 'x'));
    QCOMPARE(mapped->tornFrom(), qint64(-1));
    QVERIFY(!MappedFile::map(m_file.handle(), 0));
    QVERIFY(!MappedFile::map(-1, page));
}

void tst_MappedFile::whatIsCutOffReadsAsZeros()
{
    const auto mapped = map();
    QVERIFY(mapped);
    QVERIFY(m_file.resize(5 * page));
    QCOMPARE(mapped->begin()[16 * page - 1], '\0');
    QCOMPARE(mapped->tornFrom(), qint64(15 * page));
    QCOMPARE(mapped->begin()[5 * page], '\0');
    QCOMPARE(mapped->tornFrom(), qint64(5 * page));
    QCOMPARE(QByteArray(mapped->begin(), 16 * page), QByteArray(5 * page, 'x') + QByteArray(11 * page, '\0'));
}

void tst_MappedFile::manyThreadsMayMeetTheCut()
{
    for (int round = 0; round < 20; ++round) {
        QVERIFY(m_file.resize(16 * page));
        const auto mapped = map();
        QVERIFY(mapped);
        std::atomic<int> waiting{4};
        std::atomic<qint64> sum{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&, i] {
                --waiting;
                while (waiting > 0) {}
                for (int at = i; at < 16 * page; at += 64)
                    sum += mapped->begin()[at];
            });
        }
        const bool isCut = m_file.resize(round % 2 * page);
        for (std::thread &thread : threads)
            thread.join();
        QVERIFY(isCut);
        QVERIFY(sum >= 0);
    }
}

void tst_MappedFile::anotherFileIsLeftAlone()
{
    QFile other(m_folder.filePath("other"));
    QVERIFY(other.open(QIODevice::ReadWrite | QIODevice::Unbuffered) && other.resize(4 * page));
    const auto mapped = map();
    const auto others = MappedFile::map(other.handle(), 4 * page);
    QVERIFY(mapped && others && other.resize(0));
    QCOMPARE(others->begin()[0], '\0');
    QCOMPARE(others->tornFrom(), qint64(0));
    QCOMPARE(mapped->tornFrom(), qint64(-1));
    QCOMPARE(mapped->begin()[0], 'x');
}

void tst_MappedFile::onlySoManyAreMapped()
{
    std::vector<std::shared_ptr<const MappedFile>> files;
    for (int i = 0; i < MappedFile::mostFiles; ++i)
        files.push_back(map());
    QVERIFY(std::all_of(files.begin(), files.end(), [](const auto &file) { return file != nullptr; }));
    QVERIFY(!map());
    files.pop_back();
    QVERIFY(map());
}

void tst_MappedFile::anotherHandlerGetsOtherFaults()
{
    struct sigaction noting = {};
    noting.sa_handler = noteFault;
    noting.sa_flags = SA_NODEFER;
    struct sigaction before = {};
    QVERIFY(sigaction(SIGBUS, &noting, &before) == 0);
    void *const plain = mmap(nullptr, page, PROT_READ, MAP_PRIVATE, m_file.handle(), 0);
    QVERIFY(plain != MAP_FAILED);
    {
        const auto mapped = map();
        QVERIFY(mapped && m_file.resize(0));
        faults = 0;
        if (sigsetjmp(behindTheFault, 1) == 0) {
            const char byte = *static_cast<const volatile char *>(plain);
            QFAIL(qPrintable(QString::number(byte)));
        }
        QCOMPARE(int(faults), 1);
        QCOMPARE(mapped->tornFrom(), qint64(-1));
        QCOMPARE(mapped->begin()[0], '\0');
        QCOMPARE(int(faults), 1);
    }
    munmap(plain, page);
    QVERIFY(busAction().sa_handler == noteFault);
    sigaction(SIGBUS, &before, nullptr);
}

void tst_MappedFile::theHandlerGoesWithTheLastFile()
{
    const auto before = busAction().sa_handler;
    auto first = map();
    auto second = map();
    QVERIFY(first && second);
    QVERIFY(busAction().sa_flags & SA_SIGINFO);
    const auto ours = busAction().sa_sigaction;
    first.reset();
    QVERIFY(busAction().sa_sigaction == ours);
    second.reset();
    QVERIFY(busAction().sa_handler == before);
}

QTEST_GUILESS_MAIN(tst_MappedFile)
#include "tst_MappedFile.moc"
