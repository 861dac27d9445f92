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

    /// Waits until the descriptor can be read, the watched file is changed, somebody tells something or `milliseconds`
    /// have passed (-1: however long it takes). A descriptor of -1 is left out. Returns whether it can be read.
    bool wait(int milliseconds, int descriptor = -1);
    /// Has wait() end, too, when a file is changed, instead of the one watched before. Where the kernel doesn't tell,
    /// looking now and then must do.
    void watch(const char *path);
    void unwatch();
    /// Takes back all of that. It may take seconds when the system has much to do.
    void stopWatching();

private:
    void set(std::atomic<bool> &flag, bool value);

    int m_read = -1;
    int m_write = -1;
    int m_notices = -1; ///< of the kernel; kept from file to file
    int m_watched = -1; ///< the number of the watched file
    std::atomic<bool> m_cancelled{false};
    std::atomic<bool> m_held{false};
    std::atomic<bool> m_follows{false};
};
