// SPDX-License-Identifier: MIT
#include "views/items/OutputFile.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <limits>
#include <utility>

namespace {

const auto standardOutput = QLatin1String("-");
constexpr int turn = 20; // milliseconds, after which it's looked whether the file is given up

bool isDevice(const QString &path)
{
    const QFileInfo target(path);
    return path == standardOutput || (target.exists() && !target.isFile() && !target.isDir());
}

/// A write to a pipe whose reader left fails in this thread, instead of ending the program.
void keepFromSignals()
{
    sigset_t blocked;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
}

bool isRegular(int descriptor)
{
    struct stat status;
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

OutputFile::OutputFile(const QString &path, const std::atomic<bool> &isGivenUp)
    : m_path(path),
      m_isGivenUp(isGivenUp),
      m_file(isDevice(path) ? nullptr : std::make_unique<QSaveFile>(path))
{
}

OutputFile::~OutputFile()
{
    if (m_device >= 0)
        ::close(m_device);
}

bool OutputFile::fail(const QString &words)
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("%1: %2").arg(m_path, words);
    return false;
}

bool OutputFile::failAsDevice()
{
    const int error = errno;
    return m_isGivenUp ? fail(QStringLiteral("given up before it was written")) : fail(qt_error_string(error));
}

/// Without a buffer: a write that stops half-way doesn't say why, the next one does.
bool OutputFile::open()
{
    if (m_file)
        return m_file->open(QIODevice::WriteOnly | QIODevice::Unbuffered) || failAsFile();
    if (!openDevice())
        return failAsDevice();
    // What poll() says has room takes as much without waiting.
    m_portion = isRegular(m_device) ? std::numeric_limits<qint64>::max() : PIPE_BUF;
    return true;
}

bool OutputFile::openDevice()
{
    if (m_path == standardOutput) {
        std::fflush(stdout);
        m_device = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
        return m_device >= 0;
    }
    keepFromSignals();
    const QByteArray path = QFile::encodeName(m_path);
    while (m_device < 0 && !m_isGivenUp) {
        m_device = ::open(path.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (m_device < 0 && errno == ENXIO) // a pipe that nothing reads yet
            ::poll(nullptr, 0, turn);
        else if (m_device < 0 && errno != EINTR)
            return false;
    }
    return m_device >= 0;
}

bool OutputFile::write(const char *bytes, qint64 count)
{
    while (m_error.isEmpty() && count > 0) {
        const qint64 written = m_file ? m_file->write(bytes, count) : writeToDevice(bytes, count);
        if (written <= 0)
            return m_file ? failAsFile() : failAsDevice();
        bytes += written;
        count -= written;
    }
    return m_error.isEmpty();
}

qint64 OutputFile::writeToDevice(const char *bytes, qint64 count)
{
    while (isWritable()) {
        const ssize_t written = ::write(m_device, bytes, size_t(std::min(count, m_portion)));
        if (written >= 0 || (errno != EAGAIN && errno != EINTR))
            return written;
    }
    return -1;
}

/// Waits until there's room, or the reader left. False if it's given up meanwhile.
bool OutputFile::isWritable()
{
    while (!m_isGivenUp) {
        pollfd room{m_device, POLLOUT, 0};
        if (::poll(&room, 1, turn) > 0)
            return true;
    }
    return false;
}

bool OutputFile::close()
{
    if (!m_error.isEmpty())
        return false;
    if (m_file)
        return m_file->commit() || failAsFile();
    const int device = std::exchange(m_device, -1);
    return ::close(device) == 0 || failAsDevice();
}
