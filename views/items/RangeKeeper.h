// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/Following.h"

#include <QObject>
#include <QTimer>

class PlotAxis;
class PlotSeries;
class PlotView;

/// Keeps the ranges of a view around its values: all of x, or its newest part, unless a hand chose another; and of y
/// what the values in view need. It looks whenever a series, an axis or a range tells of a change, and changes nothing
/// if nothing must be. GUI thread.
class RangeKeeper : public QObject
{
    Q_OBJECT

public:
    explicit RangeKeeper(PlotView &view);

    /// From the first value of all visible series to the last, with those of linked views. False if there is none.
    bool reach(SAxisRange &reach) const;
    /// What a reset shows of x.
    SAxisRange homeX() const;
    /// Fits y to what is in view, without a rest.
    void fitY();
    /// A hand moves: the rest begins anew.
    void disturb();
    /// Looks anew.
    void look();

private:
    void watchSeries();
    void watchAxes();
    void watchRules();
    void keepX();
    void keepY();
    bool wantedY(SAxisRange &wanted) const;
    int filledSeries() const;
    void tellStartTime();
    void shrinkAfterRest();

    PlotView &m_view;
    RestingRange m_resting;
    QTimer m_rest;
    bool m_isLooking = false;
    bool m_hasFitted = false;
    int m_filledSeries = 0; ///< when y was looked at last
};
