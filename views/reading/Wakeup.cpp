// SPDX-License-Identifier: MIT
#include "views/reading/Wakeup.h"

#include <QtGlobal>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#if defined(Q_OS_LINUX)
#  include <sys/inotify.h>
#endif

namespace {

void drain(int descriptor)
{
    char bytes[64];
    while (read(descriptor, bytes, sizeof bytes) > 0) {}
}

} // namespace

Wakeup::Wakeup()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) == 0) {
        m_read = ends[0];
        m_write = ends[1];
    }
}

Wakeup::~Wakeup()
{
    stopWatching();
    if (m_read >= 0)
        close(m_read);
    if (m_write >= 0)
        close(m_write);
}

void Wakeup::set(std::atomic<bool> &flag, bool value)
{
    flag = value;
    const char byte = 0;
    if (m_write >= 0 && write(m_write, &byte, 1) < 0) {
        // The pipe is full: enough to wake anyone.
    }
}

bool Wakeup::wait(int milliseconds, int descriptor)
{
    constexpr int longestWithoutPipe = 20; // milliseconds; when there are no descriptors left
    pollfd watched[] = {{m_read, POLLIN, 0}, {descriptor, POLLIN, 0}, {m_notices, POLLIN, 0}};
    if (m_read < 0 && (milliseconds < 0 || milliseconds > longestWithoutPipe))
        milliseconds = longestWithoutPipe;
    if (poll(watched, 3, milliseconds) <= 0)
        return false;
    if (watched[0].revents != 0)
        drain(m_read);
    if (watched[2].revents != 0)
        drain(m_notices);
    return watched[1].revents != 0;
}

void Wakeup::watch([[maybe_unused]] const char *path)
{
#if defined(Q_OS_LINUX)
    unwatch();
    if (m_notices < 0)
        m_notices = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (m_notices >= 0)
        m_watched = inotify_add_watch(m_notices, path, IN_MODIFY | IN_ATTRIB | IN_MOVE_SELF | IN_DELETE_SELF);
#endif
}

void Wakeup::unwatch()
{
#if defined(Q_OS_LINUX)
    if (m_watched >= 0)
        inotify_rm_watch(m_notices, m_watched); // it's gone already if the file is
    m_watched = -1;
#endif
}

void Wakeup::stopWatching()
{
    if (m_notices >= 0)
        close(m_notices);
    m_notices = m_watched = -1;
}
