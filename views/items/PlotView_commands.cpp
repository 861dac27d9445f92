// SPDX-License-Identifier: MIT
#include "views/items/PlotView.h"

#include "common/Change.h"
#include "views/items/PlotHands.h"
#include "views/items/PlotKeys.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotZoom.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include <qqmlinfo.h>

namespace {

constexpr double zoomStep = 2.0;

double middleOf(const PlotAxis &axis)
{
    return axis.mapping(0.0, 1.0).toValue(0.5);
}

} // namespace

void PlotView::setFollowMode(FollowMode followMode)
{
    if (followMode < FollowNone || followMode > FollowAll || !change(m_followMode, followMode))
        return;
    emit followModeChanged();
    m_zoom->modeChanged();
}

bool PlotView::isFollowing() const
{
    return m_zoom->isFollowing();
}

void PlotView::setInteractive(bool interactive)
{
    if (!change(m_interactive, interactive))
        return;
    m_hands->setEnabled(interactive);
    emit interactiveChanged();
}

void PlotView::keyPressEvent(QKeyEvent *event)
{
    event->setAccepted(m_interactive && pressKey(*this, *event));
}

void PlotView::focusInEvent(QFocusEvent *event)
{
    QQuickItem::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    m_focusIsByKeys =
        reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
    m_hands->update();
}

PlotView *PlotView::linkedTo() const
{
    return m_zoom->linkedTo();
}

void PlotView::setLinkedTo(PlotView *view)
{
    if (view == m_zoom->linkedTo())
        return;
    if (m_zoom->linkTo(view))
        emit linkedToChanged();
    else
        qmlWarning(this) << "linkedTo would close a circle of views: it stays as it is";
}

void PlotView::zoomIn()
{
    const double peak = m_marks->peakInView();
    m_zoom->zoomX(1.0 / zoomStep, std::isnan(peak) ? middleOf(*m_axisX) : peak);
}

void PlotView::zoomOut()
{
    m_zoom->zoomX(zoomStep, middleOf(*m_axisX));
}

void PlotView::zoomReset()
{
    m_zoom->reset();
}

void PlotView::zoomTo(double from, double to)
{
    const bool log = m_axisX->isLog();
    if (canBeAnEnd(from, log) && canBeAnEnd(to, log))
        m_zoom->showX({std::min(from, to), std::max(from, to)});
}

void PlotView::panBy(double pixels)
{
    if (std::isfinite(pixels) && m_plotArea.width() > 0.0)
        m_zoom->panX(pixels / m_plotArea.width());
}

void PlotView::back()
{
    m_zoom->back();
}

bool PlotView::regionVisible() const
{
    return m_marks->isRegionShown();
}

void PlotView::setRegionVisible(bool regionVisible)
{
    m_marks->showRegion(regionVisible);
}

void PlotView::markPeak(int direction)
{
    m_marks->markPeak(direction);
}

void PlotView::unmarkPeak()
{
    m_marks->unmarkPeak();
}

QString PlotView::numbers(bool asTable) const
{
    return m_marks->numbers(asTable);
}

QPointF PlotView::mapToValue(const QPointF &position) const
{
    return {mappingX().toValue(position.x()), mappingY().toValue(position.y())};
}

QPointF PlotView::mapToPosition(const QPointF &value) const
{
    return {mappingX().toPixels(value.x()), mappingY().toPixels(value.y())};
}
