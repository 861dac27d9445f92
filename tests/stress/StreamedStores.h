// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Chance.h"
#include "views/store/SeriesStore.h"

#include <QStringList>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>

/// Stores that are full, so that old values leave while new ones come. Each value follows from its index alone.
class StreamedStores
{
public:
    static constexpr qint64 maximumCount = 10'000'000;
    /// From index 0 on; two values each. A plot looks at each gap that is in view.
    static constexpr qint64 gapDistance = 100'003;

    /// Fills them beyond their maximum.
    StreamedStores();

    SeriesStore narrow;    ///< floats above 0, with gaps
    SeriesStore wide;      ///< doubles of both signs, with gaps
    SeriesStore scattered; ///< as `narrow`, for `places`
    SeriesStore places;    ///< a place of its own for each value: around a thousandth of its index

    /// NaN for a gap; `narrow` has no other values.
    static double narrowAt(qint64 index);
    static double placeAt(qint64 index);

    /// Appends until all chunks that are kept are full. What's resident depends on how full they are; the same number
    /// of chunks are as full each time after this.
    void fillUp();
    /// What differs from a full store after fillUp().
    QStringList fillFaults() const;
    /// Compares some ranges, single values and gaps with what they must be.
    QStringList faults(Chance &chance) const;

private:
    void fillTo(qint64 end);
};

/// Appends 1000 values a second to each store, one at a time, from a thread of its own, until it's destroyed. It makes
/// up for delays.
class Recorder
{
public:
    explicit Recorder(StreamedStores &stores);
    ~Recorder();

    struct SRecord
    {
        qint64 appends = 0; ///< to each store
        qint64 refused = 0;
        double seconds = 0.0;
        double longestDelay = 0.0; ///< seconds
    };
    /// Ends the thread.
    SRecord stop();

private:
    static constexpr int perSecond = 1000;
    void record();
    void append(qint64 index);

    std::array<SeriesWriter, 4> m_writers; ///< narrow, wide, scattered, places
    qint64 m_first;
    SRecord m_record;
    std::atomic<bool> m_isDone{false};
    std::thread m_thread; ///< last: it uses the rest
};
