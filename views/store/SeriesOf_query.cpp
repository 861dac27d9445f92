// SPDX-License-Identifier: MIT
#include "views/store/SeriesOf.h"

#include "views/store/EveryType.h"
#include "views/store/Prefetch.h"

namespace {

/// Up to here values are looked at one by one where there are no cells yet; of more, so many samples are taken: what a
/// page holds, so that a cold mapping isn't read as a whole for one picture.
constexpr qint64 mostScanned = 1024;
constexpr qint64 samples = 64;
/// Of so many chunks without cells one is looked at, and of a long range so many in all: each may be read from a disk,
/// while the GUI thread waits.
constexpr qint64 leastStride = 4;
constexpr qint64 mostSampled = 64;
/// Of fewer, cells aren't worth the look.
constexpr qint64 fewValues = 64;

/// How many values are looked at of a cell of a level that isn't there yet.
constexpr qint64 scannedOf(int level)
{
    const qint64 size = qint64(1) << cellBits(level);
    return size > mostScanned ? samples : size;
}

template <class T>
void include(SExtremes &extremes, const SCell<T> &cell)
{
    if (!cell.isEmpty())
        extremes.include(double(cell.lowest), double(cell.highest));
}

} // namespace

template <class T>
const ChunkCells<T> *SeriesOf<T>::cellsOf(int level, qint64 cell, int &inside) const
{
    inside = int(cell & (cellsInChunk(level) - 1));
    const Chunk &chunk = chunkOf(cell << cellBits(level));
    return chunk.cells.load(std::memory_order_acquire);
}

template <class T>
bool SeriesOf<T>::cellAt(int level, qint64 cell, SCell<T> &found) const
{
    if (level > chunkLevel) {
        found = m_directory.upper(level, cell).cell;
        return true;
    }
    int inside = 0;
    const ChunkCells<T> *cells = cellsOf(level, cell, inside);
    if (cells)
        found = cells->cell(level, inside);
    return cells != nullptr;
}

template <class T>
void SeriesOf<T>::copyValues(qint64 from, qint64 to, double *target) const
{
    while (from < to) {
        const char *values = valuesAt(from);
        const qint64 count = std::min(to, roundDown(from, chunkBits) + chunkSize) - from;
        for (qint64 i = 0; i < count; ++i) {
            const T found = loadValue<T>(values, i);
            *target++ = isGap(found) ? std::nan("") : double(found);
        }
        from += count;
    }
}

template <class T>
SExtremes SeriesOf<T>::extremesIn(qint64 from, qint64 to) const
{
    SExtremes extremes;
    if (to - from <= fewValues && from >> chunkBits == (to - 1) >> chunkBits) {
        include(extremes, cellOf<T>(valuesAt(from), to - from, extremes.hasGap));
        return extremes;
    }
    const auto visit = [&](int level, qint64 first, qint64 end) {
        if (level == 0) {
            include(extremes, cellOf<T>(valuesAt(first), end - first, extremes.hasGap));
            return;
        }
        if (level < chunkLevel)
            return includeCells(extremes, level, first, end);
        const qint64 stride = std::max((end - first) / mostSampled, leastStride);
        for (qint64 number = first; number < end; ++number)
            includeWhole(extremes, level, number, (number - first) % stride == 0);
    };
    coverFromTop(from, to, topLevel(), visit,
                 [&](int level, qint64 number) { return isWithin(extremes, level, number); });
    return extremes;
}

/// Whether what a cell holds changes nothing in what is known already. False if that isn't clear.
template <class T>
bool SeriesOf<T>::isWithin(const SExtremes &extremes, int level, qint64 number) const
{
    // A cell above the chunks may be one whose first chunks have left, and be written to. What isn't published may be
    // written to, too.
    if (level < 1 || level > chunkLevel || (number + 1) << cellBits(level) > end())
        return false;
    int inside = 0;
    const ChunkCells<T> *cells = cellsOf(level, number, inside);
    if (!cells)
        return extremes.isSampled; // a few samples more make it no better
    const SCell<T> &cell = cells->cell(level, inside);
    return double(cell.lowest) >= extremes.lowest && double(cell.highest) <= extremes.highest
        && (extremes.hasGap || !hasGap(*cells, level, inside, inside + 1));
}

/// Whether one of the cells [first, end) of a level has a gap.
template <class T>
bool SeriesOf<T>::hasGap(const ChunkCells<T> &cells, int level, int first, int end)
{
    if (level == chunkLevel)
        return cells.statistics().count < chunkSize;
    const int finest = 1 << (cellBits(level) - cellBits(1));
    return cells.hasGap(first * finest, end * finest);
}

/// Cells of one chunk.
template <class T>
void SeriesOf<T>::includeCells(SExtremes &extremes, int level, qint64 first, qint64 end) const
{
    int inside = 0;
    const ChunkCells<T> *cells = cellsOf(level, first, inside);
    if (!cells) {
        for (qint64 number = first; number < end; ++number)
            prefetch(valuesAt(number << cellBits(level)), bytesOf(scannedOf(level)));
        for (qint64 number = first; number < end; ++number)
            includeUnbuilt(extremes, level, number);
        return;
    }
    const int insideEnd = inside + int(end - first);
    SCell<T> joined;
    for (int i = inside; i < insideEnd; ++i)
        joined.include(cells->cell(level, i));
    include(extremes, joined);
    extremes.hasGap = extremes.hasGap || hasGap(*cells, level, inside, insideEnd);
}

/// A chunk, or a cell above. A chunk that has no cells yet is read only if it's to be sampled.
template <class T>
void SeriesOf<T>::includeWhole(SExtremes &extremes, int level, qint64 number, bool isToBeSampled) const
{
    if (level > chunkLevel) {
        const SUpperCell<T> &cell = m_directory.upper(level, number);
        include(extremes, cell.cell);
        extremes.hasGap |= cell.statistics.count < qint64(1) << cellBits(level);
        return;
    }
    const ChunkCells<T> *cells = m_directory.chunk(number).cells.load(std::memory_order_acquire);
    if (!cells) {
        if (isToBeSampled)
            includeUnbuilt(extremes, level, number);
        extremes.isSampled = true;
        return;
    }
    include(extremes, cells->cell(level, 0));
    extremes.hasGap |= cells->statistics().count < chunkSize;
}

template <class T>
void SeriesOf<T>::includeUnbuilt(SExtremes &extremes, int level, qint64 number) const
{
    const qint64 size = qint64(1) << cellBits(level);
    const qint64 first = number * size;
    m_wanted.store(first >> chunkBits, std::memory_order_relaxed);
    extremes.isSampled |= scannedOf(level) < size;
    include(extremes, cellOf<T>(valuesAt(first), scannedOf(level), extremes.hasGap));
}

template <class T>
SExtremePlaces SeriesOf<T>::extremePlacesIn(qint64 from, qint64 to) const
{
    const SExtremes extremes = extremesIn(from, to);
    if (extremes.isEmpty())
        return {};
    const auto placeOf = [&](double wanted, auto reaches) {
        const qint64 place = findFirst(
            from, to, topLevel(),
            [&](int level, qint64 number) {
                SCell<T> cell;
                return !cellAt(level, number, cell) || (!cell.isEmpty() && reaches(cell));
            },
            [&](qint64 index) { return double(value(index)) == wanted; });
        return place < to ? place : -1;
    };
    return {placeOf(extremes.lowest, [&](const SCell<T> &cell) { return double(cell.lowest) <= extremes.lowest; }),
            placeOf(extremes.highest, [&](const SCell<T> &cell) { return double(cell.highest) >= extremes.highest; })};
}

template <class T>
double SeriesOf<T>::smallestPositiveIn(qint64 from, qint64 to) const
{
    T smallest = 0;
    coverRange(from, to, topLevel(), [&](int level, qint64 first, qint64 end) {
        if (level == 0) {
            smallest = smallerPositive(smallest, positivesOf<T>(valuesAt(first), end - first).smallest);
            return;
        }
        for (qint64 number = first; number < end; ++number)
            smallest = smallerPositive(smallest, positiveOf(level, number));
    });
    return smallest > T(0) ? double(smallest) : std::nan("");
}

template <class T>
T SeriesOf<T>::positiveOf(int level, qint64 number) const
{
    if (level > chunkLevel)
        return m_directory.upper(level, number).positive;
    int inside = 0;
    const ChunkCells<T> *cells = cellsOf(level, number, inside);
    const qint64 size = qint64(1) << cellBits(level);
    if (cells && level > 1)
        return cells->positive(level, inside);
    if (cells && cells->cell(level, inside).lowest > T(0) && !cells->cell(level, inside).isEmpty())
        return cells->cell(level, inside).lowest;
    if (cells && cells->cell(level, inside).highest <= T(0))
        return 0;
    return positivesOf<T>(valuesAt(number * size), scannedOf(level)).smallest;
}

template <class T>
SStatistics SeriesOf<T>::statisticsIn(qint64 from, qint64 to) const
{
    SStatistics statistics;
    const auto scan = [&](qint64 first, qint64 end) {
        if (first < end)
            statistics.include(statisticsOf<T>(valuesAt(first), end - first));
    };
    while (from < to) {
        const qint64 blockEnd = roundDown(from, blockBits) + blockSize;
        if (from % blockSize != 0 || blockEnd > to) {
            scan(from, std::min(blockEnd, to));
            from = std::min(blockEnd, to);
            continue;
        }
        from = includeBlocks(statistics, from, to);
    }
    return statistics;
}

/// Adds what begins with the block at `from`: that block, its chunk, or more chunks. Returns where it ends.
template <class T>
qint64 SeriesOf<T>::includeBlocks(SStatistics &statistics, qint64 from, qint64 to) const
{
    for (int level = topLevel(); level >= chunkLevel; --level) {
        const qint64 size = qint64(1) << cellBits(level);
        if (from % size != 0 || from + size > to)
            continue;
        if (level > chunkLevel) {
            statistics.include(m_directory.upper(level, from / size).statistics);
            return from + size;
        }
        if (const ChunkCells<T> *cells = chunkOf(from).cells.load(std::memory_order_acquire))
            statistics.include(cells->statistics());
        else
            statistics.isPartial = true;
        return from + size;
    }
    if (const ChunkCells<T> *cells = chunkOf(from).cells.load(std::memory_order_acquire))
        statistics.include(cells->blockStatistics(int(from & (chunkSize - 1)) >> blockBits));
    else
        statistics.include(statisticsOf<T>(valuesAt(from), blockSize));
    return from + blockSize;
}

template <class T>
qint64 SeriesOf<T>::lowerBound(double x, qint64 from, qint64 to) const
{
    return findFirst(
        from, to, topLevel(),
        [&](int level, qint64 number) {
            SCell<T> cell;
            return !cellAt(level, number, cell) || (!cell.isEmpty() && double(cell.highest) >= x);
        },
        [&](qint64 index) {
            const T found = value(index);
            return !isGap(found) && double(found) >= x;
        });
}

template <class T>
qint64 SeriesOf<T>::nextGap(qint64 from, qint64 to) const
{
    if constexpr (!std::is_floating_point_v<T>)
        return to;
    return findFirst(
        from, to, topLevel(),
        [&](int level, qint64 number) {
            if (level > chunkLevel)
                return m_directory.upper(level, number).statistics.count < qint64(1) << cellBits(level);
            int inside = 0;
            const ChunkCells<T> *cells = cellsOf(level, number, inside);
            return !cells || hasGap(*cells, level, inside, inside + 1);
        },
        [&](qint64 index) { return isGap(value(index)); });
}

template <class T>
qint64 SeriesOf<T>::nextValue(qint64 from, qint64 to) const
{
    return findFirst(
        from, to, topLevel(),
        [&](int level, qint64 number) {
            SCell<T> cell;
            return !cellAt(level, number, cell) || !cell.isEmpty();
        },
        [&](qint64 index) { return !isGap(value(index)); });
}

VORLIX_FOR_EVERY_TYPE(VORLIX_SERIES_OF)
