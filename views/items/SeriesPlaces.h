// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesSnapshot.h"

#include <utility>
#include <vector>

/// Index ranges [from, to), ascending and apart from each other.
using IndexRanges = std::vector<std::pair<qint64, qint64>>;

/// Where the values of a series stand. A place is what columns are counted in: the index where values are evenly
/// spaced, else x (without the series' own offset), or its decimal logarithm on a log axis. Places ascend; those that
/// don't are gaps. Cheap to copy, any thread; `misplaced` must outlive it.
class SeriesPlaces
{
public:
    /// Value i at start + i * step; begin and end are the indices that there are.
    SeriesPlaces(double start, double step, qint64 begin, qint64 end, bool log);
    /// Value i at the number i of `places` plus `offset`. `misplaced` are the indices that aren't to be taken.
    SeriesPlaces(const SeriesSnapshot &places, double offset, qint64 begin, qint64 end, bool log,
                 const IndexRanges *misplaced);

    qint64 begin() const { return m_begin; }
    qint64 end() const { return m_end; }
    /// Both ways between x, as an axis has it, and places. NaN where there is no place.
    double toPlace(double x) const;
    double toX(double place) const;
    /// Of a value; NaN if it has none.
    double placeOf(qint64 index) const;
    double xOf(qint64 index) const { return toX(placeOf(index)); }
    /// The first index at `place` or behind it, from begin() to end().
    qint64 firstFrom(double place) const;
    /// Where the last bar ends: at the place after the last value if there is one, else as wide as the one before.
    double endPlace() const;
    bool hasMisplaced(qint64 from, qint64 to) const;

private:
    bool isEven() const { return !m_hasOwn; }

    SeriesSnapshot m_own;
    bool m_hasOwn;
    bool m_isLog;
    double m_start;
    double m_step = 1.0;
    qint64 m_begin;
    qint64 m_end;
    const IndexRanges *m_misplaced = nullptr;
};
