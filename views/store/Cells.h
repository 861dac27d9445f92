// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/Levels.h"
#include "views/store/Scan.h"

#include <array>
#include <atomic>
#include <type_traits>

/// What is known in advance about the values of a chunk. One thread builds them from left to right; others read those
/// that are published.
template <class T>
class ChunkCells
{
public:
    /// Builds what becomes complete when values [from, to) of the chunk have been written.
    void build(const char *values, int from, int to);

    /// Cell `i` of this chunk at level 1 to `chunkLevel`.
    const SCell<T> &cell(int level, int i) const { return m_cells[size_t(cellsBefore(level) + i)]; }
    /// Whether one of the cells [first, end) of level 1 has a gap.
    bool hasGap(int first, int end) const;
    /// Of the values of a cell at level 2 to `chunkLevel` the smallest above zero; 0 if there is none.
    T positive(int level, int i) const { return m_positive[size_t(cellsBefore(level) - cellsBefore(2) + i)]; }
    SStatistics blockStatistics(int block) const;
    const SStatistics &statistics() const { return m_statistics; } ///< of the whole chunk

private:
    static constexpr int cellsBefore(int level)
    {
        int cells = 0;
        for (int below = 1; below < level; ++below)
            cells += cellsInChunk(below);
        return cells;
    }
    void buildFirstLevel(const char *values, int from, int to);
    void setGaps(int first, quint64 gaps);
    void buildPositive(const char *values, int cell);
    void buildLevel(int level, int i);
    void buildBlock(const char *values, int block);
    void buildWhole();

    static constexpr int gapWords = std::is_floating_point_v<T> ? cellsInChunk(1) / 64 : 0;

    std::array<SCell<T>, size_t(cellsBefore(chunkLevel + 1))> m_cells;
    std::array<T, size_t(cellsBefore(chunkLevel + 1) - cellsBefore(2))> m_positive;
    /// A bit for each cell of level 1. A word is read while later bits of it are set.
    std::array<std::atomic<quint64>, size_t(gapWords)> m_gaps;
    std::array<double, blocksInChunk> m_means;
    std::array<double, blocksInChunk> m_m2s;
    std::array<quint16, blocksInChunk> m_counts;
    std::array<quint16, blocksInChunk> m_positiveCounts;
    SStatistics m_statistics;
};
