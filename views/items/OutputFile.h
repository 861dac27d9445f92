// SPDX-License-Identifier: MIT
#pragma once

#include <QSaveFile>
#include <QString>

#include <atomic>
#include <memory>

/// A file that's written as a whole or not at all: what was there stays until close(). A device or a pipe, such as
/// /dev/stdout, is written to as it is, and so is standard output, whose path is "-". A pipe that nothing reads is
/// waited for until `isGivenUp`. One thread at a time; in that thread a reader that leaves a pipe is an error and no
/// longer a signal, except at standard output.
class OutputFile
{
public:
    OutputFile(const QString &path, const std::atomic<bool> &isGivenUp);
    /// Gives up what isn't closed.
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    /// All three return false if it went wrong, and from then on do nothing.
    bool open();
    bool write(const char *bytes, qint64 count);
    bool close();
    /// What went wrong, with the path; empty if nothing did.
    QString error() const { return m_error; }

private:
    bool openDevice();
    qint64 writeToDevice(const char *bytes, qint64 count);
    bool isWritable();
    bool fail(const QString &words);
    bool failAsFile() { return fail(m_file->errorString()); }
    bool failAsDevice();

    const QString m_path;
    const std::atomic<bool> &m_isGivenUp;
    const std::unique_ptr<QSaveFile> m_file; ///< null for a device
    int m_device = -1;
    qint64 m_portion = 0; ///< bytes that a device takes at once if it takes any
    QString m_error;
};
