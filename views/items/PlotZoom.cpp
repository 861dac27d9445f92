// SPDX-License-Identifier: MIT
#include "views/items/PlotZoom.h"

#include "common/Change.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotFrame.h"
#include "views/items/PlotView.h"

#include <QScopedValueRollback>

namespace {

constexpr int wheelRest = 500; // milliseconds after which another gesture begins

} // namespace

PlotZoom::PlotZoom(PlotView &view) : m_view(view), m_keeper(view)
{
    connect(&view, &PlotView::rangesChanged, this, &PlotZoom::shareRange);
}

PlotZoom::~PlotZoom()
{
    unlink();
    for (PlotView *follower : qAsConst(m_linkedViews)) {
        follower->zoom()->m_linkedTo = nullptr;
        follower->zoom()->layOutGroup();
    }
}

int PlotZoom::wheelGesture()
{
    if (!m_sinceWheel.isValid() || m_sinceWheel.elapsed() > wheelRest)
        m_wheelGesture = newGesture();
    m_sinceWheel.start();
    return m_wheelGesture;
}

SShown PlotZoom::shown() const
{
    const PlotZoom &owner = xOwner();
    return {m_view.axisX()->range(), m_view.axisY()->range(), owner.m_isXByHand, m_isYByHand, owner.m_isPaused};
}

/// x never leaves the values, nor what the view began with: out there is nothing to find the way back by.
SAxisRange PlotZoom::boundedX(const SAxisRange &range) const
{
    const PlotAxis &axis = *m_view.axisX();
    SAxisRange data;
    if (!m_keeper.reach(data))
        return axis.allowed(range);
    const SAxisRange all = hull(data, m_keeper.homeX());
    return axis.allowed(withinLimits(showable(range, axis.isLog(), axis.range()), all.min, all.max, axis.isLog()));
}

void PlotZoom::takeX(const SAxisRange &range)
{
    m_isXByHand = true;
    m_keeper.disturb();
    m_view.axisX()->setRange(range.min, range.max);
}

void PlotZoom::takeY(const SAxisRange &range)
{
    m_isYByHand = true;
    m_view.axisY()->setRange(range.min, range.max);
}

void PlotZoom::zoomX(double factor, double anchor, int gesture)
{
    m_history.remember(shown(), gesture);
    PlotZoom &owner = xOwner();
    const PlotAxis &axis = *owner.m_view.axisX();
    const double kept = owner.isFollowing() ? axis.max() : anchor;
    owner.takeX(owner.boundedX(zoomed(axis.range(), factor, kept, axis.isLog())));
}

void PlotZoom::zoomY(double factor, double anchor, int gesture)
{
    m_history.remember(shown(), gesture);
    const PlotAxis &axis = *m_view.axisY();
    takeY(axis.allowed(zoomed(axis.range(), factor, anchor, axis.isLog())));
}

void PlotZoom::panX(double part, int gesture)
{
    m_history.remember(shown(), gesture);
    PlotZoom &owner = xOwner();
    const PlotAxis &axis = *owner.m_view.axisX();
    owner.moveX(panned(axis.range(), part, axis.isLog()));
}

/// Shows a range and says whether the view still follows: it does where the newest value is in view.
void PlotZoom::moveX(const SAxisRange &range)
{
    const SAxisRange bounded = boundedX(range);
    SAxisRange data;
    const bool isAtEnd = m_keeper.reach(data) && bounded.max >= data.max;
    setPaused(!isAtEnd);
    takeX(bounded);
}

void PlotZoom::panY(double part, int gesture)
{
    m_history.remember(shown(), gesture);
    const PlotAxis &axis = *m_view.axisY();
    takeY(axis.allowed(panned(axis.range(), part, axis.isLog())));
}

void PlotZoom::showX(const SAxisRange &range, int gesture)
{
    m_history.remember(shown(), gesture);
    xOwner().moveX(range);
}

void PlotZoom::showY(const SAxisRange &range, int gesture)
{
    m_history.remember(shown(), gesture);
    takeY(m_view.axisY()->allowed(range));
}

void PlotZoom::reset()
{
    m_history.remember(shown(), 0);
    PlotZoom &owner = xOwner();
    owner.m_isXByHand = false;
    owner.setPaused(false);
    m_isYByHand = false;
    const SAxisRange home = owner.m_keeper.homeX();
    owner.m_view.axisX()->setRange(home.min, home.max);
    const PlotAxis &y = *m_view.axisY();
    SAxisRange values;
    const SAxisRange homeY = y.home(owner.m_keeper.reach(values) ? y.range() : firstRange(y.isLog()));
    m_view.axisY()->setRange(homeY.min, homeY.max);
    m_keeper.fitY();
}

void PlotZoom::back()
{
    if (m_history.isEmpty())
        return;
    const SShown before = m_history.take();
    PlotZoom &owner = xOwner();
    owner.m_isXByHand = before.isXByHand;
    owner.setPaused(before.isPaused);
    m_isYByHand = before.isYByHand;
    owner.m_view.axisX()->setRange(before.x.min, before.x.max);
    m_view.axisY()->setRange(before.y.min, before.y.max);
    m_keeper.look(); // values that came since then
}

void PlotZoom::toBegin()
{
    SAxisRange data;
    PlotZoom &owner = xOwner();
    const SAxisRange range = owner.m_view.axisX()->range();
    if (!owner.m_keeper.reach(data))
        return;
    m_history.remember(shown(), 0);
    const bool log = owner.m_view.axisX()->isLog();
    owner.moveX(log ? SAxisRange{data.min, range.max * (data.min / range.min)}
                    : SAxisRange{data.min, data.min + (range.max - range.min)});
}

void PlotZoom::toEnd()
{
    SAxisRange data;
    PlotZoom &owner = xOwner();
    if (!owner.m_keeper.reach(data))
        return;
    m_history.remember(shown(), 0);
    const PlotAxis &axis = *owner.m_view.axisX();
    owner.moveX(slidTo(axis.range(), data.max, axis.isLog()));
}

void PlotZoom::pause()
{
    xOwner().setPaused(true);
    xOwner().m_isXByHand = true;
}

void PlotZoom::switchScale()
{
    PlotAxis &axis = *m_view.axisY();
    m_isYByHand = false;
    axis.setLog(!axis.isLog());
    m_keeper.fitY();
}

bool PlotZoom::isFollowing() const
{
    const PlotZoom &owner = xOwner();
    return owner.m_view.followMode() != PlotView::FollowNone && !owner.m_isPaused;
}

void PlotZoom::setPaused(bool isPaused)
{
    const bool before = isFollowing();
    m_isPaused = isPaused;
    if (before == isFollowing())
        return;
    emit followingChanged();
    for (PlotView *follower : qAsConst(m_linkedViews))
        emit follower->zoom()->followingChanged();
}

void PlotZoom::modeChanged()
{
    m_isPaused = false;
    emit followingChanged();
    m_keeper.look();
}

PlotView *PlotZoom::leader() const
{
    PlotView *leader = m_linkedTo;
    while (leader && leader->zoom()->m_linkedTo)
        leader = leader->zoom()->m_linkedTo;
    return leader;
}

PlotZoom &PlotZoom::xOwner()
{
    PlotView *const view = leader();
    return view ? *view->zoom() : *this;
}

const PlotZoom &PlotZoom::xOwner() const
{
    const PlotView *const view = leader();
    return view ? *view->zoom() : *this;
}

bool PlotZoom::linkTo(PlotView *view)
{
    if (view == m_linkedTo)
        return true;
    for (PlotView *next = view; next; next = next->zoom()->m_linkedTo) {
        if (next == &m_view)
            return false;
    }
    unlink();
    m_linkedTo = view;
    if (view) {
        view->zoom()->m_linkedViews.append(&m_view);
        connect(view, &PlotView::rangesChanged, this, &PlotZoom::takeSharedRange);
        takeSharedRange();
    }
    layOutGroup();
    m_keeper.look();
    return true;
}

QVector<PlotView *> PlotZoom::linkedGroup() const
{
    QVector<PlotView *> group{&xOwner().m_view};
    for (int i = 0; i < group.size(); ++i)
        group += group.at(i)->zoom()->m_linkedViews;
    return group;
}

/// Who shares x shares the places where plots begin and end.
void PlotZoom::layOutGroup()
{
    for (const PlotView *view : linkedGroup())
        view->frame()->polish();
}

void PlotZoom::unlink()
{
    if (!m_linkedTo)
        return;
    disconnect(m_linkedTo, nullptr, this, nullptr);
    m_linkedTo->zoom()->m_linkedViews.removeAll(&m_view);
    m_linkedTo->zoom()->layOutGroup();
    m_linkedTo = nullptr;
}

/// The range that somebody gave to this view's axis is the other's as well.
void PlotZoom::shareRange()
{
    if (!m_linkedTo || m_isSharing)
        return;
    const QScopedValueRollback<bool> sharing(m_isSharing, true);
    const SAxisRange range = m_view.axisX()->range();
    m_linkedTo->axisX()->setRange(range.min, range.max);
}

void PlotZoom::takeSharedRange()
{
    const QScopedValueRollback<bool> sharing(m_isSharing, true);
    const SAxisRange range = m_linkedTo->axisX()->range();
    m_view.axisX()->setRange(range.min, range.max);
}
