// SPDX-License-Identifier: MIT
#pragma once

#include "common/Export.h"
#include "views/store/SExtremes.h"
#include "views/store/SStatistics.h"
#include "views/store/SampleType.h"

#include <memory>

class SeriesData;

/// A series as it was at one moment, for one frame or one question: a cheap value that any thread may take, copy and
/// ask. Values that come later aren't in it; values that are dropped or cleared later stay in it until it goes.
/// Don't keep one for long: what it holds can't be freed.
///
/// Index 0 is the first value that was ever appended. Ranges are half open, [from, to), and cut to [begin(), end()).
/// The cost of an answer doesn't depend on the length of the range, except where it says so.
class VORLIX_EXPORT SeriesSnapshot
{
public:
    /// No values.
    SeriesSnapshot() = default;

    qint64 begin() const { return m_begin; } ///< grows when values leave on the left
    qint64 end() const { return m_end; }
    qint64 count() const { return m_end - m_begin; }
    bool isEmpty() const { return m_end == m_begin; }
    /// The type in which each value is held exactly.
    SampleType type() const;
    /// The same series with all values multiplied by a finite factor above 0; what is too large for a double then is
    /// the largest one. Nothing is copied.
    SeriesSnapshot scaled(double factor) const;
    /// Whether both show the same values of the same series.
    bool operator==(const SeriesSnapshot &other) const;
    bool operator!=(const SeriesSnapshot &other) const { return !(*this == other); }
    /// Whether both are of the same series, at whatever moments. A series that was cleared is another one.
    bool isOfSameSeries(const SeriesSnapshot &other) const
    {
        return m_data == other.m_data && m_factor == other.m_factor;
    }
    /// False as long as the cells of a series over external memory are being built: answers about long ranges then come
    /// from a few samples of them, and say so.
    bool isExact() const;

    /// NaN for a gap, and outside.
    double valueAt(qint64 index) const;
    /// Writes the values of [from, to) to `target`, NaN for gaps and outside; the range is not cut.
    void copyValues(qint64 from, qint64 to, double *target) const;

    SExtremes extremesIn(qint64 from, qint64 to) const;
    SExtremes extremes() const { return extremesIn(m_begin, m_end); }
    /// The first places of the lowest and the highest value.
    SExtremePlaces extremePlacesIn(qint64 from, qint64 to) const;
    /// The smallest value above zero; NaN if there is none.
    double smallestPositiveIn(qint64 from, qint64 to) const;
    SStatistics statisticsIn(qint64 from, qint64 to) const;

    /// The first index from `from` on whose value is at least `x`; end() if there is none. Gaps are passed over. For
    /// ascending values this is the usual lower bound. end() if `x` is NaN.
    qint64 lowerBound(double x, qint64 from) const;
    qint64 lowerBound(double x) const { return lowerBound(x, m_begin); }
    /// The first gap, or the first finite value, in [from, to); if there is none, `to`, cut to the snapshot.
    qint64 nextGap(qint64 from, qint64 to) const;
    qint64 nextValue(qint64 from, qint64 to) const;

private:
    friend class SeriesData;
    SeriesSnapshot(std::shared_ptr<const SeriesData> data, std::shared_ptr<const void> pin, qint64 begin, qint64 end);
    /// Cuts [from, to); false if nothing is left.
    bool cut(qint64 &from, qint64 &to) const;

    std::shared_ptr<const SeriesData> m_data; ///< null if empty from the start
    std::shared_ptr<const void> m_pin;        ///< keeps the values from `m_begin` on
    qint64 m_begin = 0;
    qint64 m_end = 0;
    double m_factor = 1.0;
};
