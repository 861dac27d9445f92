// SPDX-License-Identifier: MIT
#include "views/items/PlotHands.h"

#include "views/items/PlotAxis.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/PlotZoom.h"
#include "views/items/RectsNode.h"

#include <QCursor>
#include <QGuiApplication>
#include <QStyleHints>

namespace {

constexpr double notchFactor = 0.8;     // of what is shown, for one notch of a wheel
constexpr double notchPan = 0.1;        // of what is shown
constexpr double notch = 120.0;         // what a wheel tells
constexpr double leastBox = 4.0;        // pixels: less doesn't make a box
constexpr double leastBoxHeight = 12.0; // less is meant for x alone

} // namespace

PlotHands::PlotHands(PlotView &view) : QQuickItem(&view), m_view(view)
{
    setFlag(ItemHasContents);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setAcceptTouchEvents(true);
    const auto cover = [this] { setSize(m_view.size()); };
    connect(&view, &QQuickItem::widthChanged, this, cover);
    connect(&view, &QQuickItem::heightChanged, this, cover);
    connect(&view, &QQuickItem::activeFocusChanged, this, &QQuickItem::update);
    connect(&view, &PlotView::plotAreaChanged, this, &QQuickItem::update);
    connect(&view, &PlotView::themeChanged, this, &QQuickItem::update);
}

PlotHands::Part PlotHands::partAt(const QPointF &position) const
{
    const QRectF area = m_view.plotArea();
    if (area.contains(position))
        return Part::Plot;
    const bool isInWidth = position.x() >= area.left() && position.x() <= area.right();
    const bool isInHeight = position.y() >= area.top() && position.y() <= area.bottom();
    if (isInWidth && position.y() > area.bottom())
        return Part::XAxis;
    return isInHeight && position.x() < area.left() ? Part::YAxis : Part::Outside;
}

void PlotHands::mousePressEvent(QMouseEvent *event)
{
    m_view.forceActiveFocus(Qt::MouseFocusReason);
    begin(event->localPos(), event->modifiers() & Qt::ShiftModifier);
}

void PlotHands::begin(const QPointF &position, bool isBox)
{
    m_part = partAt(position);
    m_pressed = position;
    m_position = position;
    m_gesture = m_view.zoom()->newGesture();
    if (m_part == Part::Plot && m_view.marks()->take(position))
        m_drag = Drag::Mark;
    else
        m_drag = m_part == Part::Outside ? Drag::None : isBox && m_part == Part::Plot ? Drag::Box : Drag::Waiting;
    if (m_drag == Drag::Box || m_drag == Drag::Mark)
        setKeepMouseGrab(true);
}

void PlotHands::mouseMoveEvent(QMouseEvent *event)
{
    move(event->localPos());
}

void PlotHands::move(const QPointF &position)
{
    m_position = position;
    const double moved = (position - m_pressed).manhattanLength();
    if (m_drag == Drag::Waiting && moved >= QGuiApplication::styleHints()->startDragDistance())
        beginPan();
    if (m_drag == Drag::Pan)
        pan(position);
    else if (m_drag == Drag::Box)
        update();
    else if (m_drag == Drag::Mark)
        m_view.marks()->drag(position);
    point(position);
}

/// What was under the hand when it came down stays under it.
void PlotHands::beginPan()
{
    m_drag = Drag::Pan;
    m_pressedX = m_view.axisX()->range();
    m_pressedY = m_view.axisY()->range();
    setKeepMouseGrab(true); // no flickable around takes it now
    setCursor(Qt::ClosedHandCursor);
}

/// x always, y only where a hand has it: an unsteady hand shouldn't end the following of y.
void PlotHands::pan(const QPointF &position)
{
    const QRectF area = m_view.plotArea();
    const QPointF moved = position - m_pressed;
    PlotZoom &zoom = *m_view.zoom();
    if (m_part != Part::YAxis && moved.x() != 0.0)
        zoom.showX(panned(m_pressedX, -moved.x() / area.width(), m_view.axisX()->isLog()), m_gesture);
    if (m_part == Part::YAxis || (m_part == Part::Plot && zoom.isYByHand()))
        zoom.showY(panned(m_pressedY, moved.y() / area.height(), m_view.axisY()->isLog()), m_gesture);
}

void PlotHands::mouseReleaseEvent(QMouseEvent *)
{
    if (m_drag == Drag::Box)
        zoomToBox();
    end();
}

void PlotHands::mouseUngrabEvent()
{
    end();
}

void PlotHands::end()
{
    m_drag = Drag::None;
    m_view.marks()->drop();
    setKeepMouseGrab(false);
    unsetCursor();
    update();
}

bool PlotHands::cancel()
{
    if (m_drag == Drag::None)
        return false;
    end();
    return true;
}

QRectF PlotHands::box() const
{
    return m_drag == Drag::Box ? QRectF(m_pressed, m_position).normalized().intersected(m_view.plotArea()) : QRectF();
}

void PlotHands::zoomToBox()
{
    const QRectF wanted = box();
    if (wanted.width() < leastBox)
        return;
    const AxisMapping x = m_view.mappingX();
    const AxisMapping y = m_view.mappingY();
    m_view.zoom()->showX({x.toValue(wanted.left()), x.toValue(wanted.right())}, m_gesture);
    if (wanted.height() >= leastBoxHeight)
        m_view.zoom()->showY({y.toValue(wanted.bottom()), y.toValue(wanted.top())}, m_gesture);
}

void PlotHands::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (partAt(event->localPos()) != Part::Outside)
        m_view.zoom()->reset();
}

void PlotHands::hoverEnterEvent(QHoverEvent *event)
{
    point(event->posF());
}

void PlotHands::hoverMoveEvent(QHoverEvent *event)
{
    point(event->posF());
}

void PlotHands::hoverLeaveEvent(QHoverEvent *)
{
    emit left();
}

void PlotHands::point(const QPointF &position)
{
    if (partAt(position) == Part::Plot)
        emit pointed(position);
    else
        emit left();
}

void PlotHands::wheelEvent(QWheelEvent *event)
{
    const QPointF position = event->position();
    const Part part = partAt(position);
    const QPointF notches = QPointF(event->angleDelta()) / notch;
    if (part == Part::Outside || notches.isNull()) {
        event->ignore();
        return;
    }
    PlotZoom &zoom = *m_view.zoom();
    const int gesture = zoom.wheelGesture();
    const double factor = std::pow(notchFactor, notches.y());
    if (part == Part::YAxis)
        zoom.zoomY(factor, m_view.mappingY().toValue(position.y()), gesture);
    else if (notches.y() != 0.0)
        zoom.zoomX(factor, m_view.mappingX().toValue(position.x()), gesture);
    if (notches.x() != 0.0 && part != Part::YAxis)
        zoom.panX(-notches.x() * notchPan, gesture);
    point(position);
}

QSGNode *PlotHands::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *rects = static_cast<FramedRectsNode *>(node);
    if (!rects)
        rects = new FramedRectsNode(*window());
    const QColor accent = m_view.theme()->accentColor();
    QColor faint = accent;
    faint.setAlphaF(0.15);
    const QRectF inside = box();
    rects->fills.show(inside.isEmpty() ? QVector<QRectF>() : QVector<QRectF>{inside}, faint);
    QVector<QRectF> lines;
    if (!inside.isEmpty())
        lines += frameOf(inside, 1.0);
    if (m_view.hasActiveFocus() && m_view.focusIsByKeys())
        lines += frameOf(m_view.plotArea(), 2.0);
    rects->lines.show(lines, accent);
    return rects;
}
