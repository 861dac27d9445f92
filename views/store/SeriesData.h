// SPDX-License-Identifier: MIT
#pragma once

#include "common/Export.h"
#include "views/store/SeriesSnapshot.h"

#include <atomic>
#include <functional>
#include <memory>

class Pins;

/// Where values may be written: raw memory of a chunk.
struct SRoom
{
    char *begin = nullptr; ///< aligned for the series' type
    qint64 count = 0;      ///< values, not bytes
};

/// The values of one series and what is known of them in advance, for one thread that appends and any number of threads
/// that look at snapshots. No thread waits for another on the way of a value.
class VORLIX_EXPORT SeriesData : public std::enable_shared_from_this<SeriesData>
{
public:
    /// An empty series that grows. It begins at index `begin`, rounded down to the beginning of a chunk (262144
    /// values): as if what lies before it had been appended and dropped.
    static std::shared_ptr<SeriesData> create(SampleType type, qint64 begin = 0);
    /// A series that is complete, over memory that isn't copied: `count` values in the byte order of this machine at
    /// `values`, which needn't be aligned. `owner` keeps that memory, which must not change. Nothing is read yet: see
    /// buildNow() and buildInBackground().
    static std::shared_ptr<SeriesData> createOver(SampleType type, const void *values, qint64 count,
                                                  std::shared_ptr<const void> owner);
    virtual ~SeriesData();
    SeriesData(const SeriesData &) = delete;
    SeriesData &operator=(const SeriesData &) = delete;

    // Any thread

    SampleType type() const { return m_type; }
    /// Whether it lies over external memory, and so can't grow.
    virtual bool isExternal() const = 0;
    qint64 begin() const;
    qint64 end() const { return m_end.load(std::memory_order_acquire); }
    SeriesSnapshot snapshot() const;
    /// False as long as cells of external memory are unfinished.
    virtual bool isBuilt() const = 0;

    // The one thread that appends

    /// Appends values of any type. Fractions are rounded for a type of whole numbers. False, and nothing is appended,
    /// if a value can't be held (NaN among whole numbers, 300 in 8 bits), or if the memory is external; false after a
    /// part of the values if memory ran out.
    template <class T>
    bool append(const T *values, qint64 count)
    {
        return appendValues(sampleTypeOf<T>(), values, count);
    }
    bool append(double value) { return append(&value, 1); }
    /// The same for a type that is known only at run time.
    virtual bool appendValues(SampleType type, const void *values, qint64 count) = 0;
    /// Room for the next values, at least one and as many as fit in the chunk; none if memory ran out or is external.
    /// Write the first n of them and call publish(n). Nothing is copied.
    virtual SRoom room() = 0;
    virtual void publish(qint64 count) = 0;
    /// Lets go of whole chunks of values before `index`. Snapshots keep theirs.
    virtual void dropBefore(qint64 index) = 0;

    // For memory that isn't copied

    /// Builds all cells before it returns; helping threads take part.
    virtual void buildNow() = 0;
    /// Builds the cells in helping threads. They call `progressed` now and then, and at the end, as long as this lives.
    virtual void buildInBackground(std::function<void()> progressed) = 0;

protected:
    explicit SeriesData(SampleType type, qint64 begin = 0);

    friend class SeriesSnapshot;
    // Called by snapshots: any thread, 0 <= from < to, and all of it published and held.
    virtual void copyValues(qint64 from, qint64 to, double *target) const = 0;
    virtual SExtremes extremesIn(qint64 from, qint64 to) const = 0;
    virtual SExtremePlaces extremePlacesIn(qint64 from, qint64 to) const = 0;
    virtual double smallestPositiveIn(qint64 from, qint64 to) const = 0;
    virtual SStatistics statisticsIn(qint64 from, qint64 to) const = 0;
    virtual qint64 lowerBound(double x, qint64 from, qint64 to) const = 0;
    virtual qint64 nextGap(qint64 from, qint64 to) const = 0;
    virtual qint64 nextValue(qint64 from, qint64 to) const = 0;

    const SampleType m_type;
    std::atomic<qint64> m_end{0};       ///< what lies before it is published: stored with release, loaded with acquire
    const std::unique_ptr<Pins> m_pins; ///< readers use it, too
};
