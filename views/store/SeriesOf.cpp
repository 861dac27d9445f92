// SPDX-License-Identifier: MIT
#include "views/store/SeriesOf.h"

#include "views/store/EveryType.h"
#include "views/store/Pins.h"

#include <utility>

namespace {

/// Whether T can hold the value; a fraction is rounded.
template <class T, class U>
bool canHold(U value)
{
    if constexpr (std::is_floating_point_v<T>) {
        return true;
    } else {
        const double number = double(value); // NaN fails both
        return number >= double(std::numeric_limits<T>::lowest()) - 0.5
            && number < double(std::numeric_limits<T>::max()) + 0.5;
    }
}

template <class T, class U>
T converted(U value)
{
    if constexpr (std::is_floating_point_v<U> && std::is_integral_v<T>)
        return T(std::floor(double(value) + 0.5));
    else
        return T(value);
}

} // namespace

template <class T>
SeriesOf<T>::SeriesOf(qint64 chunks, qint64 firstChunk)
    : SeriesData(sampleTypeOf<T>(), firstChunk * chunkSize),
      m_directory(chunks),
      m_nextChunk(firstChunk),
      m_isExternal(false),
      m_isBuilt(true)
{
}

template <class T>
SeriesOf<T>::SeriesOf(const void *values, qint64 count, std::shared_ptr<const void> owner)
    : SeriesData(sampleTypeOf<T>()),
      m_directory((count + chunkSize - 1) >> chunkBits),
      m_owner(std::move(owner)),
      m_isExternal(true),
      m_isBuilt(count < 1)
{
    for (qint64 first = 0; first < count; first += chunkSize) {
        m_held.push_back(std::make_shared<Chunk>());
        m_held.back()->values = static_cast<const char *>(values) + bytesOf(first);
        m_directory.put(first >> chunkBits, *m_held.back());
    }
    m_unbuilt = int(m_held.size());
    m_end.store(std::max(count, qint64(0)), std::memory_order_release);
}

template <class T>
bool SeriesOf<T>::appendValues(SampleType type, const void *values, qint64 count)
{
    if (type == this->type())
        return appendSame(static_cast<const char *>(values), count);
    return withSampleType(
        type, [&](auto zero) { return appendOther<decltype(zero)>(static_cast<const char *>(values), count); });
}

template <class T>
bool SeriesOf<T>::appendSame(const char *values, qint64 count)
{
    while (count > 0) {
        const SRoom free = room();
        // A block at a time: its cells are built while it is in the cache.
        const qint64 portion = std::min({count, free.count, blockSize - (end() & (blockSize - 1))});
        if (portion < 1)
            return false;
        std::memcpy(free.begin, values, size_t(bytesOf(portion)));
        publish(portion);
        values += bytesOf(portion);
        count -= portion;
    }
    return true;
}

template <class T>
template <class U>
bool SeriesOf<T>::appendOther(const char *values, qint64 count)
{
    for (qint64 i = 0; i < count; ++i) {
        if (!canHold<T>(loadValue<U>(values, i)))
            return false;
    }
    T portion[1024];
    for (qint64 first = 0; first < count;) {
        const qint64 size = std::min(count - first, qint64(std::size(portion)));
        for (qint64 i = 0; i < size; ++i)
            portion[i] = converted<T>(loadValue<U>(values, first + i));
        if (!appendSame(reinterpret_cast<const char *>(portion), size))
            return false;
        first += size;
    }
    return true;
}

template <class T>
SRoom SeriesOf<T>::room()
{
    if (m_isExternal)
        return {};
    const qint64 end = this->end();
    const qint64 inside = end & (chunkSize - 1);
    if (end >> chunkBits == m_nextChunk && !addChunk())
        return {};
    prepareRoom(inside);
    return {m_held.back()->ownValues.get() + bytesOf(inside), chunkSize - inside};
}

/// Prepares no more memory than the series has already: a short one takes none that it doesn't need.
template <class T>
void SeriesOf<T>::prepareRoom(qint64 inside)
{
    constexpr qint64 least = 1 << 16; // less isn't worth it
    const qint64 begin = bytesOf(inside);
    const qint64 before = m_held.size() > 1 ? ChunkMemory::mostPrepared : begin;
    if (begin < m_preparedBytes || before < least)
        return;
    const qint64 bytes = std::min({before, ChunkMemory::mostPrepared, bytesOf(chunkSize) - begin});
    ChunkMemory::prepare(m_held.back()->ownValues.get() + begin, bytes);
    m_preparedBytes = begin + bytes;
}

template <class T>
bool SeriesOf<T>::addChunk()
{
    // The slot may still be that of a chunk which a snapshot sees.
    if ((m_nextChunk - m_directory.size() + 1) * chunkSize > m_pins->seenFrom())
        return false;
    try {
        auto chunk = std::make_shared<Chunk>();
        chunk->ownValues = m_memory.take(bytesOf(chunkSize)); // every value is written before it is read
        chunk->ownCells.reset(new ChunkCells<T>);
        chunk->values = chunk->ownValues.get();
        chunk->cells = chunk->ownCells.get();
        m_directory.put(m_nextChunk, *chunk);
        m_held.push_back(std::move(chunk));
    } catch (const std::bad_alloc &) {
        return false;
    }
    ++m_nextChunk;
    m_preparedBytes = 0;
    return true;
}

template <class T>
void SeriesOf<T>::publish(qint64 count)
{
    if (count < 1)
        return;
    const qint64 before = end();
    const qint64 inside = before & (chunkSize - 1);
    const Chunk &chunk = *m_held.back();
    chunk.ownCells->build(chunk.values, int(inside), int(inside + count));
    if (inside + count == chunkSize)
        m_directory.includeInUpper(before >> chunkBits);
    m_end.store(before + count, std::memory_order_release);
}

template <class T>
void SeriesOf<T>::dropBefore(qint64 index)
{
    if (m_isExternal)
        return;
    for (qint64 end = roundDown(begin(), chunkBits) + chunkSize; end <= std::min(index, this->end());
         end += chunkSize) {
        std::shared_ptr<Chunk> first = std::move(m_held.front());
        m_held.pop_front();
        m_pins->drop(std::move(first), end);
    }
}

template <class T>
void SeriesOf<T>::buildNow()
{
    if (isBuilt())
        return;
    if (!m_building) {
        m_building = std::make_unique<ParallelParts>(int(m_held.size()), [this](int part) { buildPart(part); });
        m_building->begin(HelperThreads::threadsFor(qint64(m_held.size())) - 1);
    }
    m_building->finish();
}

template <class T>
void SeriesOf<T>::buildInBackground(std::function<void()> progressed)
{
    if (isBuilt() || m_building)
        return;
    m_progressed = std::move(progressed);
    m_building = std::make_unique<ParallelParts>(int(m_held.size()), [this](int part) { buildPart(part); });
    m_building->begin(std::max(1, HelperThreads::threadsFor(qint64(m_held.size())) - 1));
}

/// Builds the chunk of this number, and before it one that is being looked at.
template <class T>
void SeriesOf<T>::buildPart(int part)
{
    for (const qint64 number : {m_wanted.exchange(-1), qint64(part)}) {
        if (number < 0 || m_held[size_t(number)]->isTaken.exchange(true))
            continue;
        const int count = int(std::min(end() - number * chunkSize, chunkSize));
        buildChunk(*m_held[size_t(number)], count);
        if (--m_unbuilt == 0)
            finishBuilding();
        if (m_progressed)
            m_progressed();
    }
}

template <class T>
void SeriesOf<T>::buildChunk(Chunk &chunk, int count) const
{
    chunk.ownCells.reset(new ChunkCells<T>);
    chunk.ownCells->build(chunk.values, 0, count);
    chunk.cells.store(chunk.ownCells.get(), std::memory_order_release);
}

template <class T>
void SeriesOf<T>::finishBuilding()
{
    for (qint64 number = 0; number < end() >> chunkBits; ++number)
        m_directory.includeInUpper(number);
    m_isBuilt.store(true, std::memory_order_release);
}

VORLIX_FOR_EVERY_TYPE(VORLIX_SERIES_OF)
