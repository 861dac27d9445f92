// SPDX-License-Identifier: MIT
#include "common/Helpers.h"

#include <QThreadPool>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

/// As many threads as there are processors, kept for half a minute after their last work. One that waits is at work
/// within a tenth of a millisecond; a new one was seen to stand behind the thread that had started it, with a processor
/// idle, for up to 5 ms.
QThreadPool &pool()
{
    static QThreadPool pool;
    return pool;
}

} // namespace

/// The way into the work. It outlives the work where a thread comes too late.
class Helpers::Door
{
public:
    /// False when the work is closed. Who was let in must leave().
    bool enter()
    {
        const std::lock_guard lock(m_mutex);
        if (m_closed)
            return false;
        ++m_inside;
        return true;
    }

    void leave()
    {
        const std::lock_guard lock(m_mutex);
        if (--m_inside == 0)
            m_empty.notify_one();
    }

    /// Lets nobody in any more and waits until all have left.
    void close()
    {
        std::unique_lock lock(m_mutex);
        m_closed = true;
        m_empty.wait(lock, [this] { return m_inside == 0; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_empty;
    int m_inside = 0;
    bool m_closed = false;
};

Helpers::Helpers(int count, const std::function<void()> &work) : m_door(std::make_shared<Door>())
{
    const auto help = [door = m_door, work] {
        if (!door->enter())
            return;
        work();
        door->leave();
    };
    for (int i = 0; i < count; ++i)
        pool().start(help);
}

Helpers::~Helpers()
{
    m_door->close();
}

int Helpers::threadsFor(qint64 pieces)
{
    constexpr unsigned mostUseful = 4; // they share the memory, and reading is done in turns
    const qint64 processors = std::clamp(std::thread::hardware_concurrency(), 1u, mostUseful);
    return int(std::clamp(pieces, qint64(1), processors));
}
