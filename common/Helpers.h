// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <system_error>
#include <thread>
#include <vector>

/// Threads that do the same work as the calling one, each by a call of its own. They have ended when this is destroyed,
/// so nothing of it outlasts the function that uses it.
class Helpers
{
public:
    template <class Work>
    Helpers(int count, Work work)
    {
        m_threads.reserve(size_t(count));
        try {
            while (int(m_threads.size()) < count)
                m_threads.emplace_back(work);
        } catch (const std::system_error &) { // no more threads to be had: it takes longer without
        }
    }
    ~Helpers()
    {
        for (std::thread &thread : m_threads)
            thread.join();
    }
    Helpers(const Helpers &) = delete;
    Helpers &operator=(const Helpers &) = delete;

    /// How many threads, the calling one included, work that is worth `pieces` of them should have on this machine.
    static int threadsFor(qint64 pieces)
    {
        constexpr unsigned mostUseful = 4; // they share the memory, and reading is done in turns
        const qint64 processors = std::clamp(std::thread::hardware_concurrency(), 1u, mostUseful);
        return int(std::clamp(pieces, qint64(1), processors));
    }

private:
    std::vector<std::thread> m_threads;
};
