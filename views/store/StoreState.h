// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesData.h"

#include <atomic>
#include <memory>
#include <mutex>

class SeriesStore;

/// What a store shares with those who append to it, so that they may outlive it. Thread-safe.
class StoreState : public std::enable_shared_from_this<StoreState>
{
public:
    explicit StoreState(SeriesStore &store);

    std::shared_ptr<SeriesData> data() const;
    /// Puts another series in place. Who is appending to the old one finishes that there.
    void setData(std::shared_ptr<SeriesData> data);
    /// Called first thing when the store is destroyed: values are refused from now on.
    void revoke();

    /// As SeriesData::appendValues(); false, too, if another thread fills the series. Whole chunks beyond the maximum
    /// count leave. Calls from several threads take turns.
    bool append(SampleType type, const void *values, qint64 count);
    qint64 maximumCount() const { return m_maximumCount; }
    void setMaximumCount(qint64 count);
    /// Whether another thread fills the series itself. Then that thread lets values go, too, and append() refuses. To
    /// be set before that thread's series is put in place.
    void setFilledElsewhere(bool isFilledElsewhere) { m_isFilledElsewhere = isFilledElsewhere; }
    bool isFilledElsewhere() const { return m_isFilledElsewhere; }

    /// Has the store tell its thread that something changed: one queued call while none is pending.
    void announce();
    /// The store is about to look at what changed.
    void announced() { m_isPending.exchange(false); }

private:
    std::shared_ptr<SeriesData> growingData();
    void dropExcess(SeriesData &data) const;

    std::mutex m_appending;      ///< held while values are appended; who only looks never takes it
    mutable std::mutex m_access; ///< guards the two pointers; held for a moment
    SeriesStore *m_store;
    std::shared_ptr<SeriesData> m_data;
    std::atomic<qint64> m_maximumCount{0};
    std::atomic<bool> m_isPending{false};
    std::atomic<bool> m_isFilledElsewhere{false};
};
