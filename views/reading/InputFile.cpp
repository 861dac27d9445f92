// SPDX-License-Identifier: MIT
#include "views/reading/InputFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int tailSize = 64;

bool canBeReadNow(int descriptor)
{
    pollfd watched{descriptor, POLLIN, 0};
    return poll(&watched, 1, 0) > 0;
}

int duplicate(int descriptor)
{
    return fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
}

} // namespace

InputFile::~InputFile()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
    m_wakeup.unwatch();
}

QString InputFile::name() const
{
    return m_isStandardInput ? QStringLiteral("Standard input") : QStringLiteral("“%1”").arg(m_path);
}

bool InputFile::open(const QString &path)
{
    m_path = path;
    m_isStandardInput = path == QLatin1String("-");
    if (path.startsWith(QLatin1String(":/")))
        return openResource(path);
    // Without waiting: the other end of a pipe may never come.
    setDescriptor(m_isStandardInput
                      ? duplicate(STDIN_FILENO)
                      : ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (m_wakeup.follows())
        watch();
    return m_error == 0;
}

void InputFile::setDescriptor(int descriptor)
{
    m_descriptor = descriptor;
    struct stat status = {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0) {
        m_error = errno;
        return;
    }
    if (S_ISDIR(status.st_mode))
        m_error = EISDIR;
    m_isStream = !S_ISREG(status.st_mode) && !S_ISBLK(status.st_mode);
    m_device = status.st_dev;
    m_inode = status.st_ino;
    m_hasSize = !m_isStream && status.st_size > 0;
    if (m_isStandardInput && !m_isStream)
        m_given = m_position = std::max<off_t>(lseek(descriptor, 0, SEEK_CUR), 0);
}

/// Copies a resource to memory that is read like a file.
bool InputFile::openResource(const QString &path)
{
    QFile resource(path);
    if (!resource.open(QIODevice::ReadOnly)) {
        m_error = ENOENT;
        return false;
    }
    const QByteArray bytes = resource.readAll();
    setDescriptor(memfd_create("resource", MFD_CLOEXEC));
    if (m_error == 0
        && (write(m_descriptor, bytes.constData(), size_t(bytes.size())) != bytes.size()
            || lseek(m_descriptor, 0, SEEK_SET) != 0))
        m_error = errno;
    return m_error == 0;
}

void InputFile::watch()
{
    if (m_descriptor >= 0 && !m_isStream && !m_isStandardInput)
        m_wakeup.watch(QFile::encodeName(m_path).constData());
}

void InputFile::skipTo(qint64 position)
{
    m_front.clear();
    m_given = m_position = position;
    m_hasSize = true;
    const qint64 kept = std::min(position, qint64(tailSize));
    m_tail.resize(int(kept));
    const ssize_t got = pread(m_descriptor, m_tail.data(), size_t(kept), off_t(position - kept));
    m_tail.resize(int(std::max(got, ssize_t(0))));
}

bool InputFile::canBeRead(qint64 position) const
{
    char byte;
    return pread(m_descriptor, &byte, 1, off_t(position)) >= 0;
}

InputFile::Got InputFile::read(char *bytes, qint64 most, qint64 &count)
{
    count = std::min(most, qint64(m_front.size()));
    if (count > 0) {
        std::memcpy(bytes, m_front.constData(), size_t(count));
        m_front.remove(0, int(count));
        m_given += count;
        return Got::Bytes;
    }
    if (m_isStream && !canBeReadNow(m_descriptor))
        return Got::Nothing;
    const ssize_t got = ::read(m_descriptor, bytes, size_t(most));
    if (got < 0 && (errno == EAGAIN || errno == EINTR))
        return Got::Nothing;
    m_error = got < 0 ? errno : 0;
    if (got <= 0)
        return got < 0 ? Got::Error : Got::End;
    // What was written anew since the last look would be read as if it went on.
    // And so would be what came while it was written anew, a part of the old and a part of the new.
    m_hasSize = m_hasSize || (!m_isStream && size() >= 0);
    if (m_wakeup.follows() && m_hasSize)
        m_isRewritten = m_isRewritten || isRewritten() || !holds(bytes, std::min(got, ssize_t(tailSize)), m_position);
    if (m_isRewritten)
        return Got::End;
    count = got;
    m_position += count;
    m_given += count;
    remember(bytes, count);
    return Got::Bytes;
}

void InputFile::putBack(const QByteArray &bytes)
{
    m_front = bytes + m_front;
    m_given -= bytes.size();
}

void InputFile::wait(int milliseconds)
{
    m_wakeup.wait(milliseconds, m_isStream ? m_descriptor : -1);
}

qint64 InputFile::size() const
{
    struct stat status = {};
    const bool isKnown = !m_isStream && fstat(m_descriptor, &status) == 0 && status.st_size > 0;
    return isKnown ? qint64(status.st_size) : -1;
}

/// Keeps the end of what was read, to recognise a file that was written anew and is longer already.
void InputFile::remember(const char *bytes, qint64 count)
{
    if (m_isStream)
        return;
    if (count < tailSize)
        m_tail = (m_tail + QByteArray(bytes, int(count))).right(tailSize);
    else
        m_tail = QByteArray(bytes + count - tailSize, tailSize);
}

bool InputFile::isRewritten() const
{
    return !holds(m_tail.constData(), m_tail.size(), m_position - m_tail.size());
}

/// Whether these bytes, at most as many as are kept, are in the file now. True if it can't be read.
bool InputFile::holds(const char *bytes, qint64 count, qint64 position) const
{
    char now[tailSize];
    const ssize_t got = pread(m_descriptor, now, size_t(count), off_t(position));
    return got < 0 || (got == count && std::memcmp(now, bytes, size_t(count)) == 0);
}

InputFile::Change InputFile::change()
{
    struct stat status = {};
    if (m_isStream || fstat(m_descriptor, &status) != 0)
        return Change::None;
    m_hasSize = m_hasSize || status.st_size > 0;
    if (m_hasSize && (m_isRewritten || status.st_size < m_position || isRewritten()))
        return Change::Shrunk;
    if (status.st_size > m_position)
        return Change::Grown;
    if (m_isStandardInput)
        return Change::None;
    const bool isRemoved = status.st_nlink == 0;
    if (stat(QFile::encodeName(m_path).constData(), &status) != 0)
        return Change::Missing;
    const bool isSame = status.st_dev == m_device && status.st_ino == m_inode;
    if (isSame && isRemoved)
        return Change::Missing; // the path is about to lead nowhere

    // A file of the kernel, or one that's as empty as before
    const bool isSizeless = !m_hasSize && status.st_size == 0 && !isRemoved;
    return isSame || isSizeless ? Change::None : Change::Replaced;
}

bool InputFile::isMissing() const
{
    return m_error == ENOENT;
}

QString InputFile::errorString() const
{
    switch (m_error) {
    case ENOENT:
        return m_path.startsWith(QLatin1String(":/"))
            ? QStringLiteral("isn't among the program's resources")
            : QStringLiteral("doesn't exist. Is the name right, and is the disk there?");
    case EACCES:
        return QStringLiteral("may not be read by you. Its owner can allow it: chmod a+r");
    case EISDIR:
        return QStringLiteral("is a folder. Choose a file in it");
    case EIO:
        return QStringLiteral("can't be read: the disk or device reports an error");
    case ENXIO:
        return QStringLiteral("is a socket or a device without a driver, which can't be read as a file");
    case EMFILE:
    case ENFILE:
        return QStringLiteral("can't be opened: too many files are open");
    default:
        return QStringLiteral("can't be read: %1").arg(QString::fromLocal8Bit(std::strerror(m_error)));
    }
}
