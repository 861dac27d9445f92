// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/InputFile.h"
#include "views/reading/ReadingState.h"

#include <QElapsedTimer>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

class MappedFile;

/// Reads one source in a thread of its own, until it ends or is cancelled. The thread keeps the job: whoever started it
/// may forget it at any time, and never has to wait for a disk.
class ReadingJob : public std::enable_shared_from_this<ReadingJob>
{
public:
    /// `changed` is called by the reading thread whenever the state is another, until forget().
    static std::shared_ptr<ReadingJob> start(const SReadingRequest &request, std::function<void()> changed);

    // Any thread

    SReadingState state() const;
    Wakeup &wakeup() { return m_wakeup; }
    /// Lets older values go, in whole chunks; 0 keeps all.
    void keepAtMost(qint64 count) { m_maximumCount = count; }
    /// Cancels, and makes no more calls back.
    void forget();
    /// Waits until the thread has ended, but not longer than so many milliseconds. Returns whether it has.
    bool waitForEnd(int milliseconds);

    // The reading thread

    const SReadingRequest &request() const { return m_request; }
    /// Changes the state under its lock and tells.
    void update(const std::function<void(SReadingState &)> &change);
    void fail(const InputFile &file, const QString &words);
    /// Fails if a file that isn't followed ended because it was shortened or written anew since it was opened.
    bool failIfShortened(InputFile &file);
    /// Why the file is read once more, to be said with what was detected; empty for the first time.
    const QString &reason() const { return m_reason; }
    /// Lets go of values beyond those that are to be kept. Called by whoever appends.
    void dropExcess(SeriesData &series) const;
    /// Notes how far the file is read; `values` so far.
    void noteProgress(const InputFile &file, qint64 values);
    /// Sets which of the series is shown and which is x. False if there is no such column, which is an error then.
    bool choose(const InputFile &file, SReadingState &state, int timeColumn);

    enum class Next {
        Read,  ///< there may be more
        Again, ///< the file is another one: from the beginning
        Finish,
        Stop ///< cancelled
    };
    /// Waits until there is something to do, at most `milliseconds` (-1: however long it takes). `got` says why there
    /// is nothing to read.
    Next waitFor(InputFile &file, InputFile::Got got, int milliseconds = -1);
    /// Stays with a file whose samples are shown from where it's mapped, until it's another one or cancelled.
    /// Everything that is there counts as read.
    Next stayWith(InputFile &file, const MappedFile &mapped);

private:
    explicit ReadingJob(const SReadingRequest &request) : m_request(request) {}
    void run();
    Next readOnce();
    Next readFile(InputFile &file);
    Next waitForFollowed(InputFile &file, int milliseconds);
    int nextLook();
    bool gatherFront(InputFile &file, QByteArray &front, Next &next);
    void say(QString words);
    void beginAnew();

    const SReadingRequest m_request;
    Wakeup m_wakeup;
    std::atomic<qint64> m_maximumCount{0};

    mutable std::mutex m_mutex;
    SReadingState m_state;
    std::function<void()> m_changed;
    std::condition_variable m_endCondition;
    bool m_hasEnded = false;

    // The reading thread's own
    QElapsedTimer m_since;    ///< the beginning
    qint64 m_windowBegin = 0; ///< milliseconds
    qint64 m_windowBytes = 0;
    bool m_hasValues = false;
    int m_nextLook = 1; ///< milliseconds; for a file that's missing
    QString m_reason;
};
