// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/SeriesPlaces.h"

#include <limits>

/// Finds the places that don't count: those that aren't finite, and those left of one that came before. Each place is
/// looked at once, in portions, so that a frame is never late. GUI thread.
class PlaceOrder
{
public:
    /// Looks at places that weren't there before; starts anew if it's another series. False if some are left for the
    /// next call.
    bool look(const SeriesSnapshot &places);

    /// Their indices.
    const IndexRanges &misplaced() const { return m_misplaced; }
    qint64 misplacedCount() const { return m_count; }

private:
    void lookAt(const double *places, qint64 from, qint64 count);
    void add(qint64 index);

    SeriesSnapshot m_seen;
    qint64 m_next = 0;
    double m_farthest = -std::numeric_limits<double>::infinity();
    IndexRanges m_misplaced;
    qint64 m_count = 0;
};
