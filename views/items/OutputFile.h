// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

class QFileDevice;

/// A file that's written as a whole or not at all: what was there stays until close(). A device, such as /dev/stdout,
/// is written to as it is, and so is standard output, whose path is "-". One thread at a time.
class OutputFile
{
public:
    explicit OutputFile(const QString &path);
    /// Gives up what isn't closed.
    ~OutputFile();

    /// All three return false if it went wrong, and from then on do nothing.
    bool open();
    bool write(const char *bytes, qint64 count);
    bool close();
    /// What went wrong, with the path; empty if nothing did.
    QString error() const { return m_error; }

private:
    bool fail();

    const QString m_path;
    const std::unique_ptr<QFileDevice> m_file;
    QString m_error;
};
