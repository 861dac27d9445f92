// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <algorithm>

// How a series is divided. Level 0 are the values; a cell of level 1 stands for 64 of them, one of each level above for
// 16 cells of the level below. Cells of levels 1 to 4 lie in chunks, those of 5 and 6 beside them.

constexpr int chunkBits = 18;
constexpr qint64 chunkSize = qint64(1) << chunkBits;
constexpr int levelCount = 6;
constexpr int chunkLevel = 4; ///< one cell of it is a chunk

/// A cell of this level stands for 1 << cellBits(level) values.
constexpr int cellBits(int level)
{
    return level == 0 ? 0 : 2 + 4 * level;
}
static_assert(cellBits(1) == 6 && cellBits(chunkLevel) == chunkBits && cellBits(levelCount) == 26);

/// How many cells of this level a chunk has.
constexpr int cellsInChunk(int level)
{
    return 1 << (chunkBits - cellBits(level));
}

/// Statistics are kept of blocks, which are also what is built at once: their values stay in the first-level cache.
constexpr int blockBits = 12;
constexpr int blockSize = 1 << blockBits;
constexpr int blocksInChunk = 1 << (chunkBits - blockBits);

constexpr qint64 roundUp(qint64 index, int bits)
{
    return ((index + (qint64(1) << bits) - 1) >> bits) << bits;
}
constexpr qint64 roundDown(qint64 index, int bits)
{
    return (index >> bits) << bits;
}

/// Covers values [from, to) with few cells: calls visit(level, first, end) for runs of cells, or of values at level 0.
/// A run lies in one cell of the level above, so that one below `chunkLevel` doesn't leave its chunk. All cells lie
/// wholly in the range: none that is incomplete at the end of the series is ever among them.
template <class Visit>
void coverRange(qint64 from, qint64 to, int topLevel, Visit &&visit)
{
    for (int level = 0; level < topLevel && from < to; ++level) {
        const int bits = cellBits(level + 1) - cellBits(level);
        const qint64 first = std::min(roundUp(from, bits), to);
        const qint64 end = std::max(roundDown(to, bits), first);
        if (from < first)
            visit(level, from, first);
        if (end < to)
            visit(level, end, to);
        from = first >> bits;
        to = end >> bits;
        if (first == end)
            return;
    }
    if (from < to)
        visit(topLevel, from, to);
}

/// The same, but from coarse to fine, so that much needn't be looked at. What a range has beside the whole cells of a
/// level lies, at each end, in one more cell of it: `isSettled(level, cell)` says whether that one changes nothing.
template <class Visit, class IsSettled>
void coverFromTop(qint64 from, qint64 to, int topLevel, Visit &&visit, IsSettled &&isSettled)
{
    const auto visitCells = [&](int level, qint64 first, qint64 end) {
        if (first < end)
            visit(level, first >> cellBits(level), end >> cellBits(level));
    };
    int top = 0;
    while (top < topLevel && roundUp(from, cellBits(top + 1)) < roundDown(to, cellBits(top + 1)))
        ++top;
    qint64 left = roundUp(from, cellBits(top));
    qint64 right = std::max(left, roundDown(to, cellBits(top)));
    const qint64 middle = top < topLevel ? std::min(roundUp(left, cellBits(top + 1)), right) : right;
    visitCells(top, left, middle);
    visitCells(top, middle, right);
    for (int level = top; from < left && !isSettled(level, from >> cellBits(level)); --level) {
        const qint64 end = left;
        left = roundUp(from, cellBits(level - 1));
        visitCells(level - 1, left, end);
    }
    for (int level = top; right < to && !isSettled(level, right >> cellBits(level)); --level) {
        const qint64 first = right;
        right = roundDown(to, cellBits(level - 1));
        visitCells(level - 1, first, right);
    }
}

/// The first index in [from, to) for which `holds(index)`, or `to`. `mayHold(level, cell)` says whether it is worth
/// looking into a cell, which lies wholly in the range.
template <class MayHold, class Holds>
qint64 findFirst(qint64 from, qint64 to, int topLevel, MayHold &&mayHold, Holds &&holds)
{
    const auto size = [](int level) { return qint64(1) << cellBits(level); };
    while (from < to) {
        int level = 0;
        while (level < topLevel && from % size(level + 1) == 0 && from + size(level + 1) <= to)
            ++level;
        while (level > 0 && mayHold(level, from >> cellBits(level)))
            --level;
        if (level > 0) {
            from += size(level);
            continue;
        }
        if (holds(from))
            return from;
        ++from;
    }
    return to;
}
