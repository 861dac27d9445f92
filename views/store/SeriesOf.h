// SPDX-License-Identifier: MIT
#pragma once

#include "common/ParallelParts.h"
#include "views/store/Cells.h"
#include "views/store/SeriesData.h"

#include <cstdlib>
#include <deque>
#include <memory>
#include <new>

/// 2^18 values and their cells. It never moves.
template <class T>
struct SChunk
{
    const char *values = nullptr;         ///< its own or external
    std::atomic<ChunkCells<T> *> cells{}; ///< null while external values wait for their cells
    std::unique_ptr<T[]> ownValues;       ///< null if they are external
    std::unique_ptr<ChunkCells<T>> ownCells;
    std::atomic<bool> isTaken{false}; ///< somebody builds the cells
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

/// Memory for `count` elements, all zero, of which only the pages that are written cost something.
template <class Element>
class LazyArray
{
public:
    explicit LazyArray(qint64 count) : m_elements(static_cast<Element *>(std::calloc(size_t(count), sizeof(Element))))
    {
        if (!m_elements)
            throw std::bad_alloc();
    }
    Element &operator[](qint64 i) const { return m_elements.get()[i]; }

private:
    struct SFree
    {
        void operator()(Element *elements) const { std::free(elements); }
    };
    std::unique_ptr<Element[], SFree> m_elements;
};

/// A series of values of type T. The directory of its chunks is a ring that is allocated once: an index goes on for
/// ever, and what was dropped makes room.
template <class T>
class SeriesOf final : public SeriesData
{
public:
    static constexpr qint64 mostChunks = qint64(1) << 18;

    /// `slots`: the most chunks that can be held, a power of two, at least 256.
    explicit SeriesOf(qint64 slots = mostChunks);
    SeriesOf(const void *values, qint64 count, std::shared_ptr<const void> owner);

    bool isExternal() const override { return m_isExternal; }
    bool isBuilt() const override { return m_isBuilt.load(std::memory_order_acquire); }
    bool appendValues(SampleType type, const void *values, qint64 count) override;
    SRoom room() override;
    void publish(qint64 count) override;
    void dropBefore(qint64 index) override;
    void buildNow() override;
    void buildInBackground(std::function<void()> progressed) override;

protected:
    void copyValues(qint64 from, qint64 to, double *target) const override;
    SExtremes extremesIn(qint64 from, qint64 to) const override;
    SExtremePlaces extremePlacesIn(qint64 from, qint64 to) const override;
    double smallestPositiveIn(qint64 from, qint64 to) const override;
    SStatistics statisticsIn(qint64 from, qint64 to) const override;
    qint64 lowerBound(double x, qint64 from, qint64 to) const override;
    qint64 nextGap(qint64 from, qint64 to) const override;
    qint64 nextValue(qint64 from, qint64 to) const override;

private:
    using Chunk = SChunk<T>;
    using Upper = SUpperCell<T>;
    static constexpr qint64 bytesOf(qint64 values) { return values * qint64(sizeof(T)); }

    // SeriesOf.cpp: the thread that appends, or builds

    bool appendSame(const char *values, qint64 count);
    template <class U>
    bool appendOther(const char *values, qint64 count);
    bool addChunk(qint64 number);
    void includeInUpper(qint64 number);
    void buildChunk(Chunk &chunk, int count) const;
    void buildPart(int part);
    void finishBuilding();

    // SeriesOf_query.cpp: any thread

    Chunk &chunk(qint64 number) const { return *m_chunks[number & (m_slots - 1)]; }
    Chunk &chunkOf(qint64 index) const { return chunk(index >> chunkBits); }
    Upper &upper(int level, qint64 cell) const
    {
        return level == 5 ? m_fifth[cell & (m_slots / 16 - 1)] : m_sixth[cell & (m_slots / 256 - 1)];
    }
    const char *valuesAt(qint64 index) const { return chunkOf(index).values + bytesOf(index & (chunkSize - 1)); }
    T value(qint64 index) const { return loadValue<T>(valuesAt(index), 0); }
    int topLevel() const { return isBuilt() ? levelCount : chunkLevel; }
    /// The cells of the chunk that holds this cell of level 1 to `chunkLevel`, null if they aren't built, and the
    /// cell's number in there.
    const ChunkCells<T> *cellsOf(int level, qint64 cell, int &inside) const;
    /// A cell of any level; false if it isn't built.
    bool cellAt(int level, qint64 cell, SCell<T> &found) const;
    void includeCell(SExtremes &extremes, int level, qint64 number) const;
    void includeUnbuilt(SExtremes &extremes, int level, qint64 number) const;
    T positiveOf(int level, qint64 number) const;
    qint64 includeBlocks(SStatistics &statistics, qint64 from, qint64 to) const;

    const qint64 m_slots; ///< a power of two, at least 256
    LazyArray<Chunk *> m_chunks;
    LazyArray<Upper> m_fifth;
    LazyArray<Upper> m_sixth;
    std::deque<std::shared_ptr<Chunk>> m_held; ///< of the thread that appends
    std::shared_ptr<const void> m_owner;       ///< of external memory
    const bool m_isExternal;
    std::atomic<bool> m_isBuilt;
    std::atomic<int> m_unbuilt{0};
    mutable std::atomic<qint64> m_wanted{-1}; ///< a chunk that somebody looked at in vain
    std::function<void()> m_progressed;
    std::unique_ptr<ParallelParts> m_building; ///< last: what it calls uses the rest
};
