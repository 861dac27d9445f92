// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/SeriesProbe.h"

class PlotView;

/// Finds the peaks of a series as a view shows it: what is narrower than a column of pixels is one peak. A value for
/// one question; GUI thread.
class PeakSearch
{
public:
    PeakSearch(const PlotView &view, const PlotSeries &series);

    /// Where the highest value in view stands: the middle of its bar, or its point. NaN if there is none.
    double highest() const;
    /// Where the next peak stands from x on to the right (1) or to the left (-1), as far as the view reaches: the first
    /// value that rises from what is before it, and falls behind it, by a fiftieth of the view's height. NaN if there
    /// is none.
    double next(double x, int direction) const;

private:
    /// The first highest value at from <= x < to; -1 if there is none.
    qint64 highestIn(double from, double to) const;
    qint64 highestOf(qint64 first, qint64 end) const;
    double placeOf(qint64 index) const;

    const PlotSeries &m_series;
    SeriesProbe m_probe;
    double m_from;
    double m_to;
    double m_pixel; ///< in values of x
    double m_depth; ///< in values of y
};
