// SPDX-License-Identifier: MIT
#include "views/items/PlotHands.h"

#include "views/items/PlotAxis.h"
#include "views/items/PlotView.h"
#include "views/items/PlotZoom.h"

#include <QGuiApplication>
#include <QStyleHints>

namespace {

constexpr double tapDistance = 24.0; // pixels between two taps that are one double tap

QList<QTouchEvent::TouchPoint> downPoints(const QTouchEvent &event)
{
    QList<QTouchEvent::TouchPoint> down;
    for (const QTouchEvent::TouchPoint &point : event.touchPoints()) {
        if (point.state() != Qt::TouchPointReleased)
            down.append(point);
    }
    return down;
}

} // namespace

/// One finger pans, two pinch; whenever one comes or goes, the movement begins anew from where the fingers are.
void PlotHands::touchEvent(QTouchEvent *event)
{
    const QList<QTouchEvent::TouchPoint> points = downPoints(*event);
    if (event->type() == QEvent::TouchBegin && (points.isEmpty() || partAt(points.first().pos()) == Part::Outside)) {
        event->ignore();
        return;
    }
    if (event->type() == QEvent::TouchCancel || points.isEmpty()) {
        m_fingers = 0;
        end();
        return;
    }
    if (points.size() != m_fingers)
        beginFingers(points);
    else
        moveFingers(points);
}

void PlotHands::touchUngrabEvent()
{
    m_fingers = 0;
    end();
}

void PlotHands::beginFingers(const QList<QTouchEvent::TouchPoint> &points)
{
    const bool isFirst = m_fingers == 0;
    m_fingers = int(points.size());
    const QPointF first = points.first().pos();
    if (m_fingers == 1) {
        m_view.forceActiveFocus(Qt::MouseFocusReason);
        if (isFirst && isSecondTap(first)) {
            m_view.zoom()->reset();
            return;
        }
        begin(first, false);
        point(first);
        return;
    }
    end();
    setKeepTouchGrab(true);
    const QPointF second = points.at(1).pos();
    m_gesture = m_view.zoom()->newGesture();
    m_fingersX = {first.x(), second.x()};
    m_fingersY = {first.y(), second.y()};
    m_fingersMappingX = m_view.mappingX();
    m_fingersMappingY = m_view.mappingY();
}

bool PlotHands::isSecondTap(const QPointF &position)
{
    const bool isSoon =
        m_sinceTap.isValid() && m_sinceTap.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval();
    const bool isNear = (position - m_tap).manhattanLength() < tapDistance;
    m_sinceTap.start();
    m_tap = position;
    if (isSoon && isNear)
        m_sinceTap.invalidate(); // a third tap is a first one again
    return isSoon && isNear;
}

/// Fingers beside each other zoom x, above each other y; both always pan.
void PlotHands::moveFingers(const QList<QTouchEvent::TouchPoint> &points)
{
    const QPointF first = points.first().pos();
    if (m_fingers == 1) {
        move(first);
        return;
    }
    const QPointF second = points.at(1).pos();
    const bool isX = m_fingersX.distance() >= m_fingersY.distance();
    PlotZoom &zoom = *m_view.zoom();
    zoom.showX(pinched(m_fingersMappingX, m_fingersX, {first.x(), second.x()}, isX), m_gesture);
    if (!isX || zoom.isYByHand())
        zoom.showY(pinched(m_fingersMappingY, m_fingersY, {first.y(), second.y()}, !isX), m_gesture);
}
