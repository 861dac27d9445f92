// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/Levels.h"
#include "views/store/SStatistics.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

// What is known in advance about the values of a chunk. Values are read byte by byte, so to say: external memory
// needn't be aligned.

template <class T>
T loadValue(const char *values, qint64 index)
{
    T value;
    std::memcpy(&value, values + index * qint64(sizeof value), sizeof value);
    return value;
}

/// NaN and the infinities. Whole numbers have none.
template <class T>
bool isGap(T value)
{
    if constexpr (std::is_floating_point_v<T>)
        return !std::isfinite(value);
    else
        return false;
}

/// The lowest and the highest of some values that are no gaps. It begins with the highest below the lowest.
template <class T>
struct SCell
{
    T lowest = std::numeric_limits<T>::max();
    T highest = std::numeric_limits<T>::lowest();

    bool isEmpty() const { return highest < lowest; }
    void include(T value)
    {
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    void include(const SCell &other)
    {
        lowest = std::min(lowest, other.lowest);
        highest = std::max(highest, other.highest);
    }
};

/// The smaller of two values above zero, each 0 if there is none.
template <class T>
T smallerPositive(T a, T b)
{
    if (a == T(0) || b == T(0))
        return std::max(a, b);
    return std::min(a, b);
}

/// Of `count` values the smallest above zero; 0 if there is none.
template <class T>
T smallestPositive(const char *values, qint64 count);

/// Counts, adds and measures `count` values.
template <class T>
SStatistics statisticsOf(const char *values, qint64 count);

/// The lowest and highest of `count` values; sets `hasGap` if there is a gap among them.
template <class T>
SCell<T> cellOf(const char *values, qint64 count, bool &hasGap);

/// The cells of one chunk. One thread builds them from left to right; others read those that are published.
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
    void setGap(int cell, bool hasGap);
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
