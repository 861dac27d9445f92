// SPDX-License-Identifier: MIT
#pragma once

#include "common/ParallelParts.h"
#include "views/store/ChunkMemory.h"
#include "views/store/Directory.h"
#include "views/store/SeriesData.h"

#include <deque>
#include <memory>

/// A series of values of type T.
template <class T>
class SeriesOf final : public SeriesData
{
public:
    /// `chunks`: how many can be held, at least; `firstChunk`: the number of the first one.
    explicit SeriesOf(qint64 chunks = Directory<T>::mostChunks, qint64 firstChunk = 0);
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
    static constexpr qint64 bytesOf(qint64 values) { return values * qint64(sizeof(T)); }

    // SeriesOf.cpp: the thread that appends, or builds

    bool appendSame(const char *values, qint64 count);
    template <class U>
    bool appendOther(const char *values, qint64 count);
    bool addChunk();
    void prepareRoom(qint64 inside);
    void buildChunk(Chunk &chunk, int count) const;
    void buildPart(int part);
    void finishBuilding();

    // SeriesOf_query.cpp: any thread

    Chunk &chunkOf(qint64 index) const { return m_directory.chunk(index >> chunkBits); }
    const char *valuesAt(qint64 index) const { return chunkOf(index).values + bytesOf(index & (chunkSize - 1)); }
    T value(qint64 index) const { return loadValue<T>(valuesAt(index), 0); }
    int topLevel() const { return isBuilt() ? levelCount : chunkLevel; }
    /// The cells of the chunk that holds this cell of level 1 to `chunkLevel`, null if they aren't built, and the
    /// cell's number in there.
    const ChunkCells<T> *cellsOf(int level, qint64 cell, int &inside) const;
    /// A cell of any level; false if it isn't built.
    bool cellAt(int level, qint64 cell, SCell<T> &found) const;
    void includeCells(SExtremes &extremes, int level, qint64 first, qint64 end) const;
    void includeWhole(SExtremes &extremes, int level, qint64 number, bool isToBeSampled) const;
    bool isWithin(const SExtremes &extremes, int level, qint64 number) const;
    static bool hasGap(const ChunkCells<T> &cells, int level, int first, int end);
    void includeUnbuilt(SExtremes &extremes, int level, qint64 number) const;
    T positiveOf(int level, qint64 number) const;
    qint64 includeBlocks(SStatistics &statistics, qint64 from, qint64 to) const;

    Directory<T> m_directory;
    ChunkMemory m_memory;                      ///< of the thread that appends
    std::deque<std::shared_ptr<Chunk>> m_held; ///< of the thread that appends
    qint64 m_nextChunk = 0;                    ///< of the thread that appends: the number of the chunk to come
    qint64 m_preparedBytes = 0;                ///< of the thread that appends: at the beginning of the last chunk
    std::shared_ptr<const void> m_owner;       ///< of external memory
    const bool m_isExternal;
    std::atomic<bool> m_isBuilt;
    std::atomic<int> m_unbuilt{0};
    mutable std::atomic<qint64> m_wanted{-1}; ///< a chunk that a reader looked at in vain
    std::function<void()> m_progressed;
    std::unique_ptr<ParallelParts> m_building; ///< last: what it calls uses the rest
};
