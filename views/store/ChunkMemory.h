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

private:
    std::shared_ptr<char> m_page; ///< the last one
    qint64 m_pageUsed = 0;        ///< bytes
    qint64 m_taken = 0;           ///< bytes
};
