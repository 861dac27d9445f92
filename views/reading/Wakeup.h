// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

/// What other threads tell one that reads: to stop, to hold, to end when all is read. It can wait for that and for a
/// descriptor at the same time.
class Wakeup
{
public:
    Wakeup();
    ~Wakeup();
    Wakeup(const Wakeup &) = delete;
    Wakeup &operator=(const Wakeup &) = delete;

    // Any thread

    void cancel() { set(m_cancelled, true); }
    void hold(bool held) { set(m_held, held); }
    void follow(bool follows) { set(m_follows, follows); }
    bool isCancelled() const { return m_cancelled.load(std::memory_order_relaxed); }
    bool isHeld() const { return m_held.load(std::memory_order_relaxed); }
    bool follows() const { return m_follows.load(std::memory_order_relaxed); }
    /// Whether bytes may be taken now.
    bool mayRead() const { return !isCancelled() && !isHeld(); }

    // The thread that reads

    /// Waits until one of the descriptors can be read, somebody tells something or `milliseconds` have passed (-1:
    /// however long it takes). Descriptors of -1 are left out. Returns whether `descriptor` can be read.
    bool wait(int milliseconds, int descriptor = -1, int other = -1);

private:
    void set(std::atomic<bool> &flag, bool value);

    int m_read = -1;
    int m_write = -1;
    std::atomic<bool> m_cancelled{false};
    std::atomic<bool> m_held{false};
    std::atomic<bool> m_follows{false};
};
