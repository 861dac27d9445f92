// SPDX-License-Identifier: MIT
#include "views/store/Pins.h"

#include <utility>

qint64 Pins::begin() const
{
    const std::lock_guard lock(m_mutex);
    return m_begin;
}

qint64 Pins::seenFrom() const
{
    const std::lock_guard lock(m_mutex);
    return firstSeen();
}

qint64 Pins::add()
{
    const std::lock_guard lock(m_mutex);
    ++m_snapshots[m_begin];
    return m_begin;
}

void Pins::remove(qint64 begin)
{
    std::deque<SDropped> freed; // outside the lock: giving memory back takes its time
    const std::lock_guard lock(m_mutex);
    const auto found = m_snapshots.find(begin);
    if (--found->second == 0)
        m_snapshots.erase(found);
    freed = takeUnseen();
}

void Pins::drop(Chunk chunk, qint64 end)
{
    std::deque<SDropped> freed;
    const std::lock_guard lock(m_mutex);
    m_begin = end;
    m_dropped.push_back({end, std::move(chunk)});
    freed = takeUnseen();
}

std::deque<Pins::SDropped> Pins::takeUnseen()
{
    std::deque<SDropped> unseen;
    while (!m_dropped.empty() && m_dropped.front().end <= firstSeen()) {
        unseen.push_back(std::move(m_dropped.front()));
        m_dropped.pop_front();
    }
    return unseen;
}
