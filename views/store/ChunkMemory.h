// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <memory>

/// Memory for the values of one series, a chunk at a time.
///
/// Fresh memory costs more than writing to it, as the system clears it page by page. A series that has become long gets
/// pages of 2 MiB, where the system has such: a third of the time. Less than one of them is unused.
class ChunkMemory
{
public:
    /// Memory that isn't cleared, for any type; kept as long as it's pointed to. Throws std::bad_alloc.
    std::shared_ptr<char> take(qint64 bytes);

    /// Has the system hand out, at once, the pages of memory that will be written to next: two thirds of the time. What
    /// lies there stays. False if the system can't; memory works without, too.
    static bool prepare(char *begin, qint64 bytes);
    /// No more than that is worth being handed out at once; what isn't written to afterwards is wasted.
    static constexpr qint64 mostPrepared = qint64(1) << 18; // bytes

private:
    std::shared_ptr<char> m_page; ///< the last one
    qint64 m_pageUsed = 0;        ///< bytes
    qint64 m_taken = 0;           ///< bytes
};
