// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/Pinch.h"

#include <QElapsedTimer>
#include <QQuickItem>

class PlotMarks;
class PlotView;

/// What a mouse, a wheel and fingers do to a view. It covers the view, above the series and below what is declared in
/// the view, and draws the box of a zoom and the frame of the focus. Disabled, it lets everything through. GUI thread.
class PlotHands : public QQuickItem
{
    Q_OBJECT

public:
    explicit PlotHands(PlotView &view);

    /// Gives up a drag or a box; what a drag moved stays. False if there is none.
    bool cancel();

signals:
    /// The pointer is at a place of the plot area, or has left it.
    void pointed(const QPointF &position);
    void left();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void touchEvent(QTouchEvent *event) override;
    void touchUngrabEvent() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    enum class Part { Plot, XAxis, YAxis, Outside };
    enum class Drag { None, Waiting, Pan, Box, Mark };

    Part partAt(const QPointF &position) const;
    void beginPan();
    void pan(const QPointF &position);
    void begin(const QPointF &position, bool isBox);
    void move(const QPointF &position);
    void end();
    void zoomToBox();
    QRectF box() const;
    void point(const QPointF &position);
    void beginFingers(const QList<QTouchEvent::TouchPoint> &points);
    void moveFingers(const QList<QTouchEvent::TouchPoint> &points);
    bool isSecondTap(const QPointF &position);

    PlotView &m_view;
    Drag m_drag = Drag::None;
    Part m_part = Part::Outside; ///< where the drag began
    QPointF m_pressed;
    QPointF m_position;
    SAxisRange m_pressedX;
    SAxisRange m_pressedY;
    int m_gesture = 0;
    int m_fingers = 0;
    SFingers m_fingersX;
    SFingers m_fingersY;
    AxisMapping m_fingersMappingX;
    AxisMapping m_fingersMappingY;
    QElapsedTimer m_sinceTap;
    QPointF m_tap;
};
