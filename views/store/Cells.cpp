// SPDX-License-Identifier: MIT
#include "views/store/Cells.h"

#include "views/store/EveryType.h"

template <class T>
void ChunkCells<T>::build(const char *values, int from, int to)
{
    // Block by block: what was just read is read again from the cache.
    while (from < to) {
        const int end = std::min(to, (from / blockSize + 1) * blockSize);
        buildFirstLevel(values, from, end);
        for (int cell = from >> cellBits(2); cell < end >> cellBits(2); ++cell) {
            buildLevel(2, cell);
            buildPositive(values, cell);
        }
        if (end % blockSize == 0)
            buildBlock(values, end / blockSize - 1);
        for (int level = 3; level <= chunkLevel; ++level) {
            for (int cell = from >> cellBits(level); cell < end >> cellBits(level); ++cell)
                buildLevel(level, cell);
        }
        from = end;
    }
    if (to == chunkSize)
        buildWhole();
}

template <class T>
void ChunkCells<T>::buildFirstLevel(const char *values, int from, int to)
{
    constexpr int size = 1 << cellBits(1);
    static_assert(blockSize / size == 64, "a word of gaps for each block");
    const int first = from / size;
    setGaps(first,
            cellsOf(values + qint64(first) * size * qint64(sizeof(T)), to / size - first, &m_cells[size_t(first)]));
}

/// Notes which cells of a block have gaps, from a cell on.
template <class T>
void ChunkCells<T>::setGaps([[maybe_unused]] int first, [[maybe_unused]] quint64 gaps)
{
    if constexpr (gapWords > 0) {
        std::atomic<quint64> &word = m_gaps[size_t(first / 64)];
        const quint64 before = first % 64 == 0 ? 0 : word.load(std::memory_order_relaxed);
        word.store(before | gaps << (first % 64), std::memory_order_relaxed);
    }
}

template <class T>
bool ChunkCells<T>::hasGap([[maybe_unused]] int first, [[maybe_unused]] int end) const
{
    if constexpr (gapWords > 0) {
        while (first < end) {
            const int wordEnd = std::min(end, (first / 64 + 1) * 64);
            const quint64 bits = ~quint64(0) >> (64 - (wordEnd - first)) << (first % 64);
            if (m_gaps[size_t(first / 64)].load(std::memory_order_relaxed) & bits)
                return true;
            first = wordEnd;
        }
    }
    return false;
}

template <class T>
void ChunkCells<T>::buildLevel(int level, int i)
{
    SCell<T> joined;
    for (int below = 16 * i; below < 16 * (i + 1); ++below)
        joined.include(cell(level - 1, below));
    m_cells[size_t(cellsBefore(level) + i)] = joined;
    if (level == 2)
        return; // buildPositive() looks at the values
    T smallest = 0;
    for (int below = 16 * i; below < 16 * (i + 1); ++below)
        smallest = smallerPositive(smallest, positive(level - 1, below));
    m_positive[size_t(cellsBefore(level) - cellsBefore(2) + i)] = smallest;
}

/// Looks for values above zero in a cell of level 2, and counts them for its block.
template <class T>
void ChunkCells<T>::buildPositive(const char *values, int i)
{
    constexpr int size = 1 << cellBits(1);
    SPositives<T> positives;
    for (int below = 16 * i; below < 16 * (i + 1); ++below) {
        const SCell<T> &part = cell(1, below);
        if (part.isEmpty() || part.highest <= T(0))
            continue;
        if (part.lowest > T(0) && !hasGap(below, below + 1))
            positives.include({part.lowest, size});
        else
            positives.include(positivesOf<T>(values + qint64(below) * size * qint64(sizeof(T)), size));
    }
    m_positive[size_t(i)] = positives.smallest;
    constexpr int parts = blockSize >> cellBits(2);
    const int before = i % parts == 0 ? 0 : m_positiveCounts[size_t(i / parts)];
    m_positiveCounts[size_t(i / parts)] = quint16(before + positives.count);
}

template <class T>
void ChunkCells<T>::buildBlock(const char *values, int block)
{
    constexpr int parts = blockSize >> cellBits(2);
    SCell<T> joined;
    for (int part = parts * block; part < parts * (block + 1); ++part)
        joined.include(cell(2, part));
    constexpr int finest = blockSize >> cellBits(1);
    const bool isGappy = hasGap(finest * block, finest * (block + 1));
    const char *first = values + qint64(block) * blockSize * qint64(sizeof(T));
    const SStatistics statistics = measuredOf<T>(first, blockSize, joined, isGappy);
    m_means[size_t(block)] = statistics.mean;
    m_m2s[size_t(block)] = statistics.m2;
    m_counts[size_t(block)] = quint16(statistics.count);
}

template <class T>
SStatistics ChunkCells<T>::blockStatistics(int block) const
{
    SStatistics statistics;
    statistics.count = m_counts[size_t(block)];
    statistics.positiveCount = m_positiveCounts[size_t(block)];
    statistics.mean = m_means[size_t(block)];
    statistics.m2 = m_m2s[size_t(block)];
    statistics.sum = statistics.mean * double(statistics.count); // exact if there are no gaps: 4096 is a power of two
    return statistics;
}

template <class T>
void ChunkCells<T>::buildWhole()
{
    m_statistics = SStatistics();
    for (int block = 0; block < blocksInChunk; ++block)
        m_statistics.include(blockStatistics(block));
}

#define VORLIX_CELLS(T) template class ChunkCells<T>;
VORLIX_FOR_EVERY_TYPE(VORLIX_CELLS)
#undef VORLIX_CELLS
