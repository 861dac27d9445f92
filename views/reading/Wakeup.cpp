// SPDX-License-Identifier: MIT
#include "views/reading/Wakeup.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

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

bool Wakeup::wait(int milliseconds, int descriptor, int other)
{
    constexpr int longestWithoutPipe = 20; // milliseconds; when there are no descriptors left
    pollfd watched[] = {{m_read, POLLIN, 0}, {descriptor, POLLIN, 0}, {other, POLLIN, 0}};
    if (m_read < 0 && (milliseconds < 0 || milliseconds > longestWithoutPipe))
        milliseconds = longestWithoutPipe;
    if (poll(watched, 3, milliseconds) <= 0)
        return false;
    if (watched[0].revents != 0)
        drain(m_read);
    if (watched[2].revents != 0)
        drain(other);
    return watched[1].revents != 0;
}
