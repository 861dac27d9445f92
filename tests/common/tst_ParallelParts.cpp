// SPDX-License-Identifier: MIT
#include "common/ParallelParts.h"

#include <QtTest>

#include <algorithm>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

/// Counts how often each part was done.
class Counts
{
public:
    explicit Counts(int parts) : m_done(size_t(parts)) {}
    void add(int part) { ++m_done[size_t(part)]; }
    bool allAre(int count) const
    {
        return std::all_of(m_done.begin(), m_done.end(), [count](const auto &done) { return done == count; });
    }
    int sum() const
    {
        int sum = 0;
        for (const auto &done : m_done)
            sum += done;
        return sum;
    }

private:
    std::vector<std::atomic<int>> m_done;
};

/// Works when the program ends and no thread helps any longer, as one that still reads a file may.
struct LateWork
{
    ~LateWork()
    {
        Counts counts(20);
        doParts(20, [&](int part) { counts.add(part); });
        if (!counts.allAre(1))
            std::_Exit(EXIT_FAILURE);
    }
} lateWork; // goes after the threads, because it's there before them

} // namespace

class tst_ParallelParts : public QObject
{
    Q_OBJECT

private slots:
    void everyPartIsDoneOnce();
    void theCallingThreadDoesAllWhenItIsAlone();
    void theBackgroundDoesThemToo();
    void severalThreadsTakeThem();
    void whatHasBegunIsWaitedFor();
    void theRestIsNotDoneWhenNobodyWants();
    void manyMayBeAtItAtOnce();
    void partsMayHaveParts();
};

void tst_ParallelParts::everyPartIsDoneOnce()
{
    for (int count = 0; count < 200; ++count) {
        Counts counts(count);
        doParts(count, [&](int part) { counts.add(part); });
        QVERIFY(counts.allAre(1));
    }
}

void tst_ParallelParts::theCallingThreadDoesAllWhenItIsAlone()
{
    Counts counts(10);
    const std::thread::id here = std::this_thread::get_id();
    ParallelParts parts(10, [&](int part) {
        QCOMPARE(std::this_thread::get_id(), here);
        counts.add(part);
    });
    parts.finish();
    QVERIFY(counts.allAre(1));
    parts.finish();
    QVERIFY(counts.allAre(1));
}

void tst_ParallelParts::theBackgroundDoesThemToo()
{
    Counts counts(10);
    ParallelParts parts(10, [&](int part) { counts.add(part); });
    parts.begin(1);
    QTRY_VERIFY(counts.allAre(1));
    parts.begin(1); // again is not more
    parts.finish();
    QVERIFY(counts.allAre(1));
}

void tst_ParallelParts::severalThreadsTakeThem()
{
    if (HelperThreads::threadsFor(2) < 2)
        QSKIP("one processor only");
    // Each part waits for the other: one thread alone would wait for ever.
    std::atomic<int> present{0};
    doParts(2, [&](int) {
        ++present;
        while (present < 2)
            std::this_thread::yield();
    });
    QCOMPARE(present.load(), 2);
}

void tst_ParallelParts::whatHasBegunIsWaitedFor()
{
    for (int round = 0; round < 100; ++round) {
        std::atomic<bool> begun{false};
        std::atomic<bool> ended{false};
        {
            ParallelParts parts(1, [&](int) {
                begun = true;
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                ended = true;
            });
            parts.begin(1);
            if (round % 2)
                QTRY_VERIFY(begun);
        }
        QCOMPARE(ended.load(), begun.load());
    }
}

void tst_ParallelParts::theRestIsNotDoneWhenNobodyWants()
{
    Counts counts(1'000'000);
    {
        ParallelParts parts(1'000'000, [&](int part) {
            counts.add(part);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        });
        parts.begin(1);
        QTRY_VERIFY(counts.sum() > 0);
    }
    const int done = counts.sum();
    QVERIFY(done < 1'000'000);
    QTest::qWait(20);
    QCOMPARE(counts.sum(), done);
}

void tst_ParallelParts::manyMayBeAtItAtOnce()
{
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                Counts counts(20);
                doParts(20, [&](int part) { counts.add(part); });
                wrong += !counts.allAre(1);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

void tst_ParallelParts::partsMayHaveParts()
{
    Counts counts(100);
    doParts(10, [&](int tens) { doParts(10, [&](int ones) { counts.add(10 * tens + ones); }); });
    QVERIFY(counts.allAre(1));
}

QTEST_GUILESS_MAIN(tst_ParallelParts)
#include "tst_ParallelParts.moc"
