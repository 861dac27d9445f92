// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisRange.h"
#include "views/store/SeriesSnapshot.h"

class PlotSeries;

/// What ranges, read-outs, cursors and regions ask a series: where its values stand and what they are, at one moment. A
/// value for one question; GUI thread.
class SeriesProbe
{
public:
    explicit SeriesProbe(const PlotSeries &series);

    bool isEmpty() const { return m_values.isEmpty() || !m_hasPlaces; }
    const SeriesSnapshot &values() const { return m_values; }
    /// Whether a value reaches from its own place to the next one's, as a bar does.
    bool isBars() const { return m_isBars; }
    /// The moment of x = 0 in seconds since 1970; NaN if there is none.
    double startTime() const { return m_startTime; }

    /// Where a value stands, ascending in the index.
    double xOf(qint64 index) const;
    /// The same of the values [from, to); NaN where there is no number.
    void copyXs(qint64 from, qint64 to, double *target) const;
    /// Whether both are of the same series at the same places, at whatever moments: values that both have are the same.
    bool isOfSameSeries(const SeriesProbe &other) const;
    /// The type in which each x is held exactly.
    SampleType xType() const;
    /// Whether values with the same index stand at the same place.
    bool hasPlacesOf(const SeriesProbe &other) const;
    /// The first value at x or right of it, from begin() to end() of the values.
    qint64 firstFrom(double x) const;
    /// The first value right of x.
    qint64 firstAbove(double x) const;
    /// From the first value to the last, or to the end of the last bar; above 0 only, where the axis is a log scale.
    /// False if there is nothing.
    bool reach(bool log, SAxisRange &reach) const;
    /// The lowest and highest value that stand in a part of the axis, with the base line if there is one. On a log
    /// scale those above 0.
    SExtremes extremesIn(const SAxisRange &part, bool log) const;
    /// The value that is nearest to x, or the bar that x is in; -1 if there is none.
    qint64 nearest(double x) const;

private:
    bool isEven() const { return !m_hasOwnPlaces; }

    SeriesSnapshot m_values;
    SeriesSnapshot m_places;
    bool m_hasOwnPlaces = false;
    bool m_hasPlaces = false;
    bool m_isBars = false;
    double m_start = 0.0;
    double m_step = 1.0;
    double m_offset = 0.0;
    double m_baseline;
    double m_startTime;
};
