// SPDX-License-Identifier: MIT
#include "views/items/SeriesRuns.h"

#include <algorithm>

SeriesRuns::SeriesRuns(const SeriesSnapshot &values, const SeriesPlaces &places, const RowScale &rows)
    : m_values(values),
      m_places(places),
      m_rows(rows)
{
}

double SeriesRuns::valueAt(qint64 index) const
{
    if (index < m_places.begin() || index >= m_places.end() || m_places.hasMisplaced(index, index + 1))
        return std::nan("");
    const double value = m_values.valueAt(index);
    return m_rows.hasPlace(value) ? value : std::nan("");
}

void SeriesRuns::extend(qint64 from, qint64 to, double lowest, double highest)
{
    if (m_open.to == m_open.from) {
        m_open = {from, to, lowest, highest};
        return;
    }
    m_open.to = to;
    m_open.lowest = std::min(m_open.lowest, lowest);
    m_open.highest = std::max(m_open.highest, highest);
}

double SeriesRuns::lowestShown(qint64 from, qint64 to, const SExtremes &extremes) const
{
    return m_rows.isLog() && !(extremes.lowest > 0.0) ? m_values.smallestPositiveIn(from, to) : extremes.lowest;
}
