// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <atomic>
#include <functional>
#include <list>
#include <thread>

/// Writes files in threads of their own. GUI thread.
class FileJobs : public QObject
{
    Q_OBJECT

public:
    /// Writes to a path and returns what went wrong, or nothing. It looks now and then whether it's to give up.
    using Write = std::function<QString(const std::atomic<bool> &isGivenUp)>;

    /// Has everything given up that can be, and waits for the rest.
    ~FileJobs() override;

    /// Returns at once; finished() follows, after the event loop was entered again.
    void start(const QString &file, Write write);

signals:
    /// `error` is empty if the file is written.
    void finished(const QString &file, const QString &error);

private:
    std::list<std::thread> m_threads;
    std::atomic<bool> m_isGivenUp{false};
};
