// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <deque>
#include <map>
#include <memory>
#include <mutex>

/// Where a series begins, which snapshots begin where, and the chunks that were dropped but can be seen by one of them.
/// Thread-safe. Locked for a snapshot and for a chunk that leaves, never for a value.
class Pins
{
public:
    using Chunk = std::shared_ptr<const void>; ///< frees the chunk when it goes

    explicit Pins(qint64 begin) : m_begin(begin) {}
    qint64 begin() const;
    /// Where the oldest snapshot begins, or the series, if there is none.
    qint64 seenFrom() const;

    /// Returns where the series begins; what follows is kept until remove() is called with the same index.
    qint64 add();
    void remove(qint64 begin);
    /// Moves the beginning to `end`, where `chunk`, the first one, ends. It is freed as soon as no snapshot can see it.
    void drop(Chunk chunk, qint64 end);

private:
    struct SDropped
    {
        qint64 end;
        Chunk chunk;
    };
    qint64 firstSeen() const { return m_snapshots.empty() ? m_begin : m_snapshots.begin()->first; }
    std::deque<SDropped> takeUnseen();

    mutable std::mutex m_mutex;
    qint64 m_begin;
    std::map<qint64, int> m_snapshots; ///< how many begin at an index
    std::deque<SDropped> m_dropped;
};
