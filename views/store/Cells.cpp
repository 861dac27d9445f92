// SPDX-License-Identifier: MIT
#include "views/store/Cells.h"

template <class T>
T smallestPositive(const char *values, qint64 count)
{
    T smallest = 0;
    for (qint64 i = 0; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        if (value > T(0) && !isGap(value))
            smallest = smallerPositive(smallest, value);
    }
    return smallest;
}

template <class T>
SCell<T> cellOf(const char *values, qint64 count, bool &hasGap)
{
    SCell<T> cell;
    for (qint64 i = 0; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        if (isGap(value))
            hasGap = true;
        else
            cell.include(value);
    }
    return cell;
}

template <class T>
SStatistics statisticsOf(const char *values, qint64 count)
{
    SStatistics statistics;
    for (qint64 i = 0; i < count; ++i) {
        const T value = loadValue<T>(values, i);
        if (isGap(value))
            continue;
        const double distance = double(value) - statistics.mean;
        ++statistics.count;
        statistics.positiveCount += value > T(0);
        statistics.sum += double(value);
        statistics.mean += distance / double(statistics.count);
        statistics.m2 += distance * (double(value) - statistics.mean);
    }
    return statistics;
}

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
    for (int cell = from / size; cell < to / size; ++cell) {
        bool hasGap = false;
        m_cells[size_t(cell)] = cellOf<T>(values + qint64(cell) * size * qint64(sizeof(T)), size, hasGap);
        setGap(cell, hasGap);
    }
}

template <class T>
void ChunkCells<T>::setGap([[maybe_unused]] int cell, [[maybe_unused]] bool hasGap)
{
    if constexpr (gapWords > 0) {
        std::atomic<quint64> &word = m_gaps[size_t(cell / 64)];
        const quint64 before = cell % 64 == 0 ? 0 : word.load(std::memory_order_relaxed);
        word.store(before | quint64(hasGap) << (cell % 64), std::memory_order_relaxed);
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

template <class T>
void ChunkCells<T>::buildPositive(const char *values, int i)
{
    constexpr int size = 1 << cellBits(1);
    T smallest = 0;
    for (int below = 16 * i; below < 16 * (i + 1); ++below) {
        const SCell<T> &part = cell(1, below);
        if (part.isEmpty() || part.highest <= T(0))
            continue;
        if (part.lowest > T(0))
            smallest = smallerPositive(smallest, part.lowest);
        else
            smallest =
                smallerPositive(smallest, smallestPositive<T>(values + qint64(below) * size * qint64(sizeof(T)), size));
    }
    m_positive[size_t(i)] = smallest;
}

template <class T>
void ChunkCells<T>::buildBlock(const char *values, int block)
{
    const SStatistics statistics = statisticsOf<T>(values + qint64(block) * blockSize * qint64(sizeof(T)), blockSize);
    m_means[size_t(block)] = statistics.mean;
    m_m2s[size_t(block)] = statistics.m2;
    m_counts[size_t(block)] = quint16(statistics.count);
    m_positiveCounts[size_t(block)] = quint16(statistics.positiveCount);
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

#define VORLIX_CELLS_OF(T) \
  template class ChunkCells<T>; \
  template T smallestPositive<T>(const char *, qint64); \
  template SCell<T> cellOf<T>(const char *, qint64, bool &); \
  template SStatistics statisticsOf<T>(const char *, qint64);
VORLIX_CELLS_OF(double)
VORLIX_CELLS_OF(float)
VORLIX_CELLS_OF(qint32)
VORLIX_CELLS_OF(quint32)
VORLIX_CELLS_OF(qint16)
VORLIX_CELLS_OF(quint16)
VORLIX_CELLS_OF(qint8)
VORLIX_CELLS_OF(quint8)
#undef VORLIX_CELLS_OF
