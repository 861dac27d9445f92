// SPDX-License-Identifier: MIT
#include "common/HelperThreads.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace {

/// More share the memory and gain nothing; reading is done in turns.
constexpr unsigned mostUseful = 4;

int processors()
{
    return int(std::clamp(std::thread::hardware_concurrency(), 1u, mostUseful));
}

/// Threads that wait for calls, as many as there are processors, until the process ends. One that waits is at work
/// within a tenth of a millisecond; a new one was seen to stand behind the thread that had started it, with a processor
/// idle, for up to 5 ms. A QThreadPool would do, but the thread sanitizer can't check it: it doesn't see how Qt's
/// locks are made.
class Crew
{
public:
    /// Never destroyed: a thread that isn't waited for may still come while the program ends.
    static Crew &instance()
    {
        static Crew *const crew = new Crew;
        static const SEnd end{*crew};
        return *crew;
    }

    /// Has a thread make this call, as soon as one is free; none does once the program ends.
    void call(std::function<void()> work)
    {
        const std::lock_guard lock(m_mutex);
        if (m_ending)
            return;
        if (m_idle <= m_calls.size() && int(m_threads.size()) < processors())
            hire();
        if (m_threads.empty())
            return;
        m_calls.push_back(std::move(work));
        m_wanted.notify_one();
    }

private:
    /// Has the threads end with the program, whose code they run.
    struct SEnd
    {
        ~SEnd() { crew.end(); }
        Crew &crew;
    };

    void end()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_ending = true;
        }
        m_wanted.notify_all();
        for (std::thread &thread : m_threads)
            thread.join();
    }

    void hire()
    {
        try {
            m_threads.emplace_back([this] { serve(); });
        } catch (const std::system_error &) { // no more threads to be had: everything takes longer
        }
    }

    void serve()
    {
        std::unique_lock lock(m_mutex);
        for (;;) {
            ++m_idle;
            m_wanted.wait(lock, [this] { return m_ending || !m_calls.empty(); });
            --m_idle;
            if (m_ending)
                return;
            std::function<void()> work = std::move(m_calls.front());
            m_calls.pop_front();
            lock.unlock();
            work();
            work = nullptr; // what it holds goes outside the lock
            lock.lock();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_wanted;
    std::deque<std::function<void()>> m_calls;
    std::vector<std::thread> m_threads;
    size_t m_idle = 0;
    bool m_ending = false;
};

} // namespace

/// The way into the work. It outlives the work where a thread comes too late.
class HelperThreads::Door
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

    /// Lets no more threads in and waits until all have left.
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

HelperThreads::HelperThreads(int count, const std::function<void()> &work) : m_door(std::make_shared<Door>())
{
    const auto help = [door = m_door, work] {
        if (!door->enter())
            return;
        work();
        door->leave();
    };
    try {
        for (int i = 0; i < count; ++i)
            Crew::instance().call(help);
    } catch (const std::bad_alloc &) { // no further ones; those that were called must find a door that will be closed
    }
}

HelperThreads::~HelperThreads()
{
    m_door->close();
}

int HelperThreads::threadsFor(qint64 pieces)
{
    return int(std::clamp(pieces, qint64(1), qint64(processors())));
}
