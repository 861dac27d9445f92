// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Columns of pixels that lie on the data: column g reaches from place g * step to place (g + 1) * step, and a view
/// shows `count` of them from column `first` on. So a pan moves whole columns, and those that stay keep what they hold.
/// Places are whatever the series counts in: indices, or x. A plain value: any thread.
struct ColumnGrid
{
    double step = 0.0; ///< places on a device pixel
    qint64 first = 0;
    int count = 0;

    /// The columns of a view from place `from` to place `to` on `count` device pixels; empty if that is no view. The
    /// left edge is rounded to a whole column. `previousStep` is the step of the frame before, 0 if there is none: it's
    /// kept where the difference is no more than what rounding makes of a pan.
    /// `doubt` is how far the ends may be off, because they come from larger numbers.
    static ColumnGrid over(double from, double to, int count, double previousStep, double doubt = 0.0);

    bool isEmpty() const { return count == 0; }
    /// The place of the left edge of a column, counted from the left edge of the view. The same for a column of the
    /// data wherever the view begins.
    double edge(int column) const { return double(first + column) * step; }
    double centre(int column) const { return (double(first + column) + 0.5) * step; }
    /// Where a place is, in device pixels from the left edge of the view.
    double pixelOf(double place) const { return (place - edge(0)) / step; }
};
