// SPDX-License-Identifier: MIT
#include "views/store/StoreState.h"

#include "views/store/SeriesStore.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// A series of the same values that can grow.
std::shared_ptr<SeriesData> copyOf(const SeriesData &series)
{
    const std::shared_ptr<SeriesData> copy = SeriesData::create(series.type());
    const SeriesSnapshot snapshot = series.snapshot();
    double portion[1024];
    for (qint64 first = snapshot.begin(); first < snapshot.end(); first += qint64(std::size(portion))) {
        const qint64 end = std::min(first + qint64(std::size(portion)), snapshot.end());
        snapshot.copyValues(first, end, portion);
        if (!copy->append(portion, end - first))
            return nullptr;
    }
    return copy;
}

} // namespace

StoreState::StoreState(SeriesStore &store) : m_store(&store), m_data(SeriesData::create(SampleType::Float64)) {}

std::shared_ptr<SeriesData> StoreState::data() const
{
    const std::lock_guard lock(m_access);
    return m_data;
}

void StoreState::setData(std::shared_ptr<SeriesData> data)
{
    {
        const std::lock_guard lock(m_access);
        m_data.swap(data); // the old one goes outside the lock
    }
    announce();
}

void StoreState::revoke()
{
    const std::lock_guard lock(m_access);
    m_store = nullptr;
}

bool StoreState::append(SampleType type, const void *values, qint64 count)
{
    const std::lock_guard lock(m_appending);
    const std::shared_ptr<SeriesData> data = growingData();
    if (!data)
        return false;
    const bool isTaken = data->appendValues(type, values, count);
    dropExcess(*data);
    announce();
    return isTaken;
}

/// The series, after it was replaced by a copy if it is over external memory; null if that failed, the store is gone or
/// the series is somebody else's to fill.
std::shared_ptr<SeriesData> StoreState::growingData()
{
    std::shared_ptr<SeriesData> series;
    {
        const std::lock_guard lock(m_access);
        if (!m_store || m_isFilledElsewhere)
            return nullptr;
        series = m_data;
    }
    if (!series->isExternal())
        return series;
    const std::shared_ptr<SeriesData> copy = copyOf(*series);
    const std::lock_guard lock(m_access);
    if (copy && m_data == series)
        m_data = copy;
    return copy;
}

void StoreState::setMaximumCount(qint64 count)
{
    m_maximumCount = std::max(count, qint64(0));
    const std::unique_lock lock(m_appending, std::try_to_lock);
    if (lock.owns_lock() && !m_isFilledElsewhere) // else who appends looks at it
        dropExcess(*data());
    announce();
}

void StoreState::dropExcess(SeriesData &data) const
{
    const qint64 most = m_maximumCount;
    if (most > 0 && data.end() - data.begin() > most)
        data.dropBefore(data.end() - most);
}

void StoreState::announce()
{
    if (m_isPending.exchange(true)) // whoever waits for the call will see what was published before
        return;
    const std::lock_guard lock(m_access);
    if (m_store)
        QMetaObject::invokeMethod(m_store, &SeriesStore::showChanges, Qt::QueuedConnection);
}
