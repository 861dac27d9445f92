// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/Cells.h"

#include <array>
#include <atomic>
#include <memory>
#include <vector>

/// 2^18 values and their cells. It never moves.
template <class T>
struct SChunk
{
    const char *values = nullptr;         ///< its own or external
    std::atomic<ChunkCells<T> *> cells{}; ///< null while external values wait for their cells
    std::shared_ptr<char> ownValues;      ///< null if they are external
    std::unique_ptr<ChunkCells<T>> ownCells;
    std::atomic<bool> isTaken{false}; ///< a thread builds the cells
};

/// What is known about a cell of the levels above the chunks.
template <class T>
struct SUpperCell
{
    SCell<T> cell;
    T positive = 0; ///< the smallest value above zero, or 0
    SStatistics statistics;

    void include(const SUpperCell &part)
    {
        cell.include(part.cell);
        positive = smallerPositive(positive, part.positive);
        statistics.include(part.statistics);
    }
};

/// Where the chunks of a series are, and the cells above them: a ring that is allocated once and filled as it is
/// needed. A number goes on for ever, and what was dropped makes room. One thread fills it, others read what is
/// published.
template <class T>
class Directory
{
public:
    static constexpr qint64 groupSize = qint64(1) << (cellBits(levelCount) - chunkBits); ///< chunks
    static constexpr qint64 mostChunks = 1024 * groupSize;

    /// Room for so many chunks, or more.
    explicit Directory(qint64 chunks)
    {
        size_t groups = 1;
        while (qint64(groups) * groupSize < chunks)
            groups *= 2;
        m_groups.resize(groups);
    }

    qint64 size() const { return qint64(m_groups.size()) * groupSize; }
    SChunk<T> &chunk(qint64 number) const { return *group(number).chunks[size_t(number % groupSize)]; }
    void put(qint64 number, SChunk<T> &chunk)
    {
        std::unique_ptr<SGroup> &group = m_groups[placeOf(number)];
        if (!group)
            group = std::make_unique<SGroup>();
        group->chunks[size_t(number % groupSize)] = &chunk;
    }

    /// A cell of level 5 or 6.
    SUpperCell<T> &upper(int level, qint64 cell) const
    {
        SGroup &found = group(cell << (cellBits(level) - chunkBits));
        return level == levelCount ? found.sixth : found.fifth[size_t(cell % 16)];
    }
    /// Adds a complete chunk to the cells above it. No reader looks at those before they are complete, and then the
    /// chunks they stand for may be gone.
    void includeInUpper(qint64 number)
    {
        const ChunkCells<T> &cells = *chunk(number).cells.load(std::memory_order_acquire);
        SUpperCell<T> &fifth = upper(5, number / 16);
        if (number % 16 == 0)
            fifth = {};
        fifth.include({cells.cell(chunkLevel, 0), cells.positive(chunkLevel, 0), cells.statistics()});
        if (number % 16 != 15)
            return;
        SUpperCell<T> &sixth = upper(6, number / groupSize);
        if (number % groupSize == 15)
            sixth = {};
        sixth.include(fifth);
    }

private:
    struct SGroup
    {
        std::array<SChunk<T> *, size_t(groupSize)> chunks{};
        std::array<SUpperCell<T>, size_t(groupSize / 16)> fifth;
        SUpperCell<T> sixth;
    };
    size_t placeOf(qint64 number) const { return size_t(number / groupSize) & (m_groups.size() - 1); }
    SGroup &group(qint64 number) const { return *m_groups[placeOf(number)]; }

    std::vector<std::unique_ptr<SGroup>> m_groups; ///< a power of two of them; it never grows
};
