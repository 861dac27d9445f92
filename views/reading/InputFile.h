// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/Wakeup.h"

#include <QByteArray>
#include <QString>

#include <atomic>

#include <sys/types.h>

/// Bytes of a file, a pipe, a device or standard input, read without ever being stuck in it. For one thread at a time.
class InputFile
{
public:
    explicit InputFile(Wakeup &wakeup) : m_wakeup(wakeup) {}
    ~InputFile();
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;

    /// Opens a path; "-" is standard input, ":/name" a resource of the program. False on an error.
    bool open(const QString &path);
    /// The name, as people are told it.
    QString name() const;

    enum class Got {
        Bytes,
        Nothing, ///< for now: of a pipe that is still open
        End,
        Error
    };
    /// Reads at most `most` bytes that are there. Doesn't wait. A file that is followed and was written anew has ended:
    /// change() says so.
    Got read(char *bytes, qint64 most, qint64 &count);
    /// Gives back bytes that were read first; they will be read again.
    void putBack(const QByteArray &bytes);
    /// Takes the first `position` bytes as read, since somebody else takes them from the descriptor.
    void skipTo(qint64 position);
    /// Has wait() end, too, when the file is changed, if the kernel tells.
    void watch();
    /// Waits until there may be something to read, or something is told, or `milliseconds` have passed.
    void wait(int milliseconds);

    bool isStream() const { return m_isStream; } ///< without size and positions: a pipe, a socket, a terminal
    bool isStandardInput() const { return m_isStandardInput; }
    qint64 size() const; ///< now; -1 if it isn't known
    /// How many bytes were read and not put back. Any thread.
    qint64 position() const { return m_given; }
    int descriptor() const { return m_descriptor; }
    /// Whether the disk still gives what is at this byte, or says that nothing is.
    bool canBeRead(qint64 position) const;
    QString errorString() const; ///< why opening or reading failed: "it doesn't exist", for people
    bool isMissing() const;      ///< whether opening failed because there is no such file

    enum class Change {
        None,
        Grown,
        Shrunk,   ///< or written anew
        Replaced, ///< the path is another file now
        Missing   ///< the path is nothing now
    };
    /// What became of a file since it was read to its end.
    Change change();

private:
    void setDescriptor(int descriptor);
    bool openResource(const QString &path);
    void remember(const char *bytes, qint64 count);
    bool isRewritten() const;
    bool holds(const char *bytes, qint64 count, qint64 position) const;

    Wakeup &m_wakeup;
    QString m_path;
    int m_descriptor = -1;
    int m_error = 0;
    bool m_isStream = false;
    bool m_isStandardInput = false;
    bool m_isRewritten = false;
    bool m_hasSize = false; ///< files of /proc say 0
    dev_t m_device = 0;
    ino_t m_inode = 0;
    qint64 m_position = 0;          ///< bytes taken from the descriptor
    std::atomic<qint64> m_given{0}; ///< the same without what was put back
    QByteArray m_front;             ///< put back
    QByteArray m_tail;              ///< the last bytes that were read
};
