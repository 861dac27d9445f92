// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

/// Threads that do the same work as the one that called them, each by a call of its own. The destructor
/// lets no more threads in and waits for those that are at work, so none of the work outlasts this.
///
/// There may be fewer than were asked for, or none, and they may come when everything is done: the calling thread must
/// be able to do all of the work.
class HelperThreads
{
public:
    HelperThreads(int count, const std::function<void()> &work);
    ~HelperThreads();
    HelperThreads(const HelperThreads &) = delete;
    HelperThreads &operator=(const HelperThreads &) = delete;

    /// How many threads, the calling one included, work that is worth `pieces` of them should have on this machine.
    static int threadsFor(qint64 pieces);

private:
    class Door;

    std::shared_ptr<Door> m_door;
};
