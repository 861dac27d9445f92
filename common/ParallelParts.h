// SPDX-License-Identifier: MIT
#pragma once

#include "common/HelperThreads.h"

#include <atomic>
#include <functional>
#include <optional>

/// Work in numbered parts: every thread that takes part takes the next one until none is left. They are better many and
/// small: a thread that comes late, or has to share its processor, then takes fewer of them.
///
/// The destructor waits for the parts that a thread has begun, and leaves out the others.
class ParallelParts
{
public:
    ParallelParts(int count, std::function<void(int)> doPart);
    ~ParallelParts();
    ParallelParts(const ParallelParts &) = delete;
    ParallelParts &operator=(const ParallelParts &) = delete;

    /// Has so many threads work in the background, as soon as they are free; once.
    void begin(int threads);
    /// Takes part, and returns when all is done.
    void finish();

private:
    void work();

    const int m_count;
    const std::function<void(int)> m_doPart;
    std::atomic<int> m_next{0};
    std::optional<HelperThreads> m_helpers;
};

/// Does parts 0 to `count` - 1, with as many threads as they and the machine are worth.
void doParts(int count, std::function<void(int)> doPart);
