// SPDX-License-Identifier: MIT
#include "views/items/PlaceOrder.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr qint64 blockSize = 4096;
constexpr qint64 portion = qint64(1) << 22; // some milliseconds

} // namespace

bool PlaceOrder::look(const SeriesSnapshot &places)
{
    if (!places.isOfSameSeries(m_seen))
        *this = PlaceOrder();
    m_seen = places;
    m_next = std::max(m_next, places.begin());
    const qint64 end = std::min(places.end(), m_next + portion);
    double block[blockSize];
    while (m_next < end) {
        const qint64 count = std::min(end - m_next, blockSize);
        places.copyValues(m_next, m_next + count, block);
        lookAt(block, m_next, count);
        m_next += count;
    }
    return m_next == places.end();
}

void PlaceOrder::lookAt(const double *places, qint64 from, qint64 count)
{
    for (qint64 i = 0; i < count; ++i) {
        if (places[i] >= m_farthest)
            m_farthest = places[i];
        else
            add(from + i);
    }
}

void PlaceOrder::add(qint64 index)
{
    ++m_count;
    if (!m_misplaced.empty() && m_misplaced.back().second == index)
        m_misplaced.back().second = index + 1;
    else
        m_misplaced.emplace_back(index, index + 1);
}
