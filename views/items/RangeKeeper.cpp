// SPDX-License-Identifier: MIT
#include "views/items/RangeKeeper.h"

#include "common/Change.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"
#include "views/items/PlotZoom.h"
#include "views/items/SeriesProbe.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace {

constexpr int restMilliseconds = 1000;

} // namespace

RangeKeeper::RangeKeeper(PlotView &view) : m_view(view)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(restMilliseconds);
    connect(&m_rest, &QTimer::timeout, this, &RangeKeeper::shrinkAfterRest);
    connect(&view, &PlotView::seriesListChanged, this, &RangeKeeper::watchSeries);
    connect(&view, &PlotView::axisXChanged, this, &RangeKeeper::watchAxes);
    connect(&view, &PlotView::axisYChanged, this, &RangeKeeper::watchAxes);
    connect(&view, &PlotView::rangesChanged, this, &RangeKeeper::look);
    watchRules();
}

void RangeKeeper::watchSeries()
{
    for (PlotSeries *series : m_view.series()) {
        connect(series, &PlotSeries::redrawNeeded, this, &RangeKeeper::look, Qt::UniqueConnection);
        connect(series, &PlotSeries::dataChanged, this, &RangeKeeper::look, Qt::UniqueConnection);
        connect(series, &PlotSeries::visibleChanged, this, &RangeKeeper::look, Qt::UniqueConnection);
    }
    look();
}

void RangeKeeper::watchRules()
{
    for (PlotAxis *axis : {m_view.axisX(), m_view.axisY()})
        connect(axis, &PlotAxis::rulesChanged, this, &RangeKeeper::look, Qt::UniqueConnection);
}

void RangeKeeper::watchAxes()
{
    watchRules();
    fitY();
}

bool RangeKeeper::reach(SAxisRange &reach) const
{
    bool found = false;
    const auto include = [&](const SAxisRange &other) {
        reach = found ? hull(reach, other) : other;
        found = true;
    };
    const bool log = m_view.axisX()->isLog();
    for (const PlotSeries *series : m_view.series()) {
        SAxisRange own;
        if (series->isVisible() && SeriesProbe(*series).reach(log, own))
            include(own);
    }
    for (const PlotView *follower : m_view.zoom()->linkedViews()) {
        SAxisRange linked;
        if (follower->zoom()->keeper().reach(linked))
            include(linked);
    }
    return found;
}

SAxisRange RangeKeeper::homeX() const
{
    const PlotAxis &axis = *m_view.axisX();
    SAxisRange data = firstRange(axis.isLog());
    if (reach(data) && data.min == data.max)
        data = rangeAround(data.min, data.max, axis.isLog());
    return axis.home(data);
}

void RangeKeeper::look()
{
    if (m_isLooking)
        return;
    const QScopedValueRollback<bool> looking(m_isLooking, true);
    tellStartTime();
    if (PlotView *const leader = m_view.zoom()->leader())
        leader->zoom()->keeper().look(); // x is its business
    else
        keepX();
    keepY();
}

void RangeKeeper::tellStartTime()
{
    double startTime = std::numeric_limits<double>::quiet_NaN();
    for (const PlotSeries *series : m_view.series()) {
        const double own = SeriesProbe(*series).startTime();
        if (std::isnan(startTime))
            startTime = own;
    }
    m_view.axisX()->setStoreStartTime(startTime);
}

void RangeKeeper::keepX()
{
    PlotAxis &axis = *m_view.axisX();
    const PlotZoom &zoom = *m_view.zoom();
    SAxisRange data;
    if (!reach(data))
        return;
    SAxisRange wanted = axis.range();
    const bool isGivenWidth = !axis.followsMin() && !axis.followsMax();
    if (zoom.isFollowing() && (zoom.isXByHand() || isGivenWidth)) {
        const bool keepsLeft = m_view.followMode() == PlotView::FollowAll;
        const bool isFilling = !keepsLeft && !zoom.isXByHand() && data.max <= homeX().max;
        if (isFilling) // what was set is filled from the left before it moves
            wanted = homeX();
        else
            wanted = keepsLeft ? stretchedTo(wanted, data.max, axis.isLog()) : slidTo(wanted, data.max, axis.isLog());
    } else if (!zoom.isXByHand() && !isGivenWidth) {
        wanted = homeX();
    }
    axis.setRange(wanted.min, wanted.max);
}

bool RangeKeeper::wantedY(SAxisRange &wanted) const
{
    const PlotAxis &axis = *m_view.axisY();
    const SAxisRange part = m_view.axisX()->range();
    SExtremes extremes;
    for (const PlotSeries *series : m_view.series()) {
        if (!series->isVisible())
            continue;
        const SExtremes own = SeriesProbe(*series).extremesIn(part, axis.isLog());
        if (!own.isEmpty())
            extremes.include(own);
    }
    if (extremes.isEmpty())
        return false;
    wanted = axis.home(rangeAround(extremes.lowest, extremes.highest, axis.isLog()));
    return true;
}

int RangeKeeper::filledSeries() const
{
    const QVector<PlotSeries *> &all = m_view.series();
    return int(std::count_if(all.begin(), all.end(), [](const PlotSeries *series) {
        return series->isVisible() && !SeriesProbe(*series).isEmpty();
    }));
}

void RangeKeeper::keepY()
{
    PlotAxis &axis = *m_view.axisY();
    SAxisRange wanted;
    if (change(m_filledSeries, filledSeries())) // a series that comes or goes is no breath
        m_hasFitted = false;
    const bool follows = axis.followsMin() || axis.followsMax();
    if (m_view.zoom()->isYByHand() || !follows || !wantedY(wanted))
        return;
    if (!m_hasFitted) {
        m_hasFitted = true;
        m_resting = {};
        axis.setRange(wanted.min, wanted.max);
        return;
    }
    const SAxisRange grown = axis.home(m_resting.grown(axis.range(), wanted, axis.isLog()));
    axis.setRange(grown.min, grown.max);
    if (!m_resting.isWaiting())
        m_rest.stop();
    else if (!m_rest.isActive())
        m_rest.start();
}

void RangeKeeper::disturb()
{
    if (m_rest.isActive())
        m_rest.start();
}

void RangeKeeper::fitY()
{
    m_hasFitted = false;
    look();
}

void RangeKeeper::shrinkAfterRest()
{
    PlotAxis &axis = *m_view.axisY();
    if (m_view.zoom()->isYByHand() || !m_resting.isWaiting())
        return;
    const QScopedValueRollback<bool> looking(m_isLooking, true);
    const SAxisRange rested = axis.home(m_resting.rested());
    axis.setRange(rested.min, rested.max);
}
