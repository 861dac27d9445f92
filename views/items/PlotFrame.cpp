// SPDX-License-Identifier: MIT
#include "views/items/PlotFrame.h"

#include "common/Change.h"
#include "views/items/AxisLook.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/PlotZoom.h"
#include "views/items/RectsNode.h"

#include <algorithm>

namespace {

/// The parts of the frame in the order in which they're drawn.
class FrameNode : public QSGNode
{
public:
    explicit FrameNode(const QQuickWindow &window)
        : background(window),
          plotArea(window),
          minorGrid(window),
          grid(window),
          axes(window)
    {
        for (RectsNode *node : {&background, &plotArea, &minorGrid, &grid, &axes}) {
            node->setFlag(OwnedByParent, false);
            appendChildNode(node);
        }
    }
    ~FrameNode() override { removeAllChildNodes(); }

    RectsNode background;
    RectsNode plotArea;
    RectsNode minorGrid;
    RectsNode grid;
    RectsNode axes;
};

/// What of `all` lies around a part of it.
QVector<QRectF> around(const QRectF &part, const QRectF &all)
{
    return {{all.left(), all.top(), all.width(), part.top() - all.top()},
            {all.left(), part.top(), part.left() - all.left(), part.height()},
            {part.right(), part.top(), all.right() - part.right(), part.height()},
            {all.left(), part.bottom(), all.width(), all.bottom() - part.bottom()}};
}

} // namespace

PlotFrame::PlotFrame(PlotView &view) : QQuickItem(&view), m_view(view), m_labels(this)
{
    setFlag(ItemHasContents);
    connect(&view, &PlotView::rangesChanged, this, &QQuickItem::polish);
    connect(&view, &PlotView::plotAreaChanged, this, &QQuickItem::polish);
    connect(&view, &PlotView::pixelRatioChanged, this, &QQuickItem::polish);
    connect(&view, &PlotView::titleChanged, this, &QQuickItem::polish);
    connect(&view, &PlotView::themeChanged, this, &QQuickItem::polish);
    connect(&view, &PlotView::axisXChanged, this, &PlotFrame::watchAxes);
    connect(&view, &PlotView::axisYChanged, this, &PlotFrame::watchAxes);
    connect(&view, &QQuickItem::widthChanged, this, &QQuickItem::polish);
    connect(&view, &QQuickItem::heightChanged, this, &QQuickItem::polish);
    watchAxes();
}

void PlotFrame::watchAxes()
{
    for (PlotAxis *axis : {m_view.axisX(), m_view.axisY()})
        connect(axis, &PlotAxis::lookChanged, this, &QQuickItem::polish, Qt::UniqueConnection);
    polish();
}

void PlotFrame::setRoomBelow(double room)
{
    if (change(m_roomBelow, room))
        polish();
}

void PlotFrame::setBare(bool isBare)
{
    if (change(m_isBare, isBare))
        polish();
}

void PlotFrame::setTellsX(bool tellsX)
{
    if (change(m_tellsX, tellsX))
        polish();
}

bool PlotFrame::hasLabelsOfX() const
{
    return m_tellsX && m_view.axisX()->labelsVisible();
}

QString PlotFrame::headingOfX() const
{
    return m_tellsX ? m_view.axisX()->heading() : QString();
}

QStringList PlotFrame::texts() const
{
    QStringList texts;
    for (const SLabel &label : m_look.texts)
        texts.append(label.text);
    return texts;
}

/// The width of labels depends on the plot area, and that on the width of labels: they settle at once, or nearly.
void PlotFrame::layOutNow()
{
    for (int i = 0; i < 2; ++i)
        updatePolish();
}

void PlotFrame::updatePolish()
{
    setSize(m_view.layoutSize());
    const PlotTheme &theme = *m_view.theme();
    if (change(m_font, theme.font()))
        m_labelWidth = 0.0;
    const QFontMetricsF metrics(m_font);
    layOutRoom(metrics);
    const double ratio = m_view.pixelRatio();
    m_look = frameLook(m_view, {m_view.plotArea(), ratio, 1.0 / ratio});
    m_labels.show(m_look.texts, m_font, theme.labelTextColor(), ratio);
    update();
}

/// The labels' width follows what is shown, so that none is cut off; it shrinks only where much would be left, so that
/// the plot doesn't shiver in a pan.
double PlotFrame::widthOfLabels(const QFontMetricsF &metrics)
{
    const PlotAxis &axis = *m_view.axisY();
    if (!axis.labelsVisible())
        return 0.0;
    const double digit = metrics.horizontalAdvance(QLatin1Char('0'));
    const QRectF area = m_view.plotArea();
    const AxisMapping mapping = axis.mapping(std::max(area.bottom(), 1.0), area.top());
    const SLabelSpace space{metrics.height(), metrics.height()};
    double widest = 4.0 * digit;
    for (const STickLabel &label :
         axisLook(axis, mapping, labelDistance(axis, area.height(), metrics.height()), space).labels)
        widest = std::max(widest, metrics.horizontalAdvance(label.text));
    if (widest > m_labelWidth || widest < m_labelWidth - 4.0 * digit)
        m_labelWidth = std::ceil(widest);
    return m_labelWidth;
}

void PlotFrame::layOutRoom(const QFontMetricsF &metrics)
{
    if (m_isBare) {
        m_view.setPlotMargins({});
        return;
    }
    const double row = std::ceil(metrics.height()) + rowGap;
    const PlotAxis &y = *m_view.axisY();
    QMarginsF room(frameEdge, frameEdge, frameEdge, frameEdge + m_roomBelow);
    if (y.labelsVisible())
        room += QMarginsF(tickLength + labelGap, row * 0.5, 0.0, 0.0);
    room.setLeft(room.left() + widthOfLabels(metrics) + (y.heading().isEmpty() ? 0.0 : row + rowGap));
    if (hasLabelsOfX()) {
        const double digit = metrics.horizontalAdvance(QLatin1Char('0'));
        room += QMarginsF(0.0, 0.0, digit * labelDigits * 0.3, tickLength + labelGap + row);
    }
    // A base has the title's row. It comes and goes with the zoom, so the row is there whenever labels are.
    if (!headingOfX().isEmpty() || hasLabelsOfX())
        room.setBottom(room.bottom() + row);
    if (!m_view.title().isEmpty())
        room.setTop(room.top() + row * 1.25);
    m_view.setPlotMargins(alignedWithLinked(room));
}

/// The plots of linked views begin and end at the same places, so that what stands over each other happened at once.
QMarginsF PlotFrame::alignedWithLinked(QMarginsF room)
{
    const bool isLeftOther = change(m_ownLeft, room.left());
    const bool isRightOther = change(m_ownRight, room.right());
    for (const PlotView *view : m_view.zoom()->linkedGroup()) {
        PlotFrame &frame = *view->frame();
        if (&frame != this && (isLeftOther || isRightOther))
            frame.polish();
        room.setLeft(std::max(room.left(), frame.m_ownLeft));
        room.setRight(std::max(room.right(), frame.m_ownRight));
    }
    return room;
}

QSGNode *PlotFrame::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *frame = static_cast<FrameNode *>(node);
    if (!frame)
        frame = new FrameNode(*window());
    const PlotTheme &theme = *m_view.theme();
    QColor faint = theme.gridColor();
    faint.setAlphaF(faint.alphaF() * 0.5);
    const QRectF all(QPointF(), size());
    const QRectF area = m_view.plotArea() & all;
    const QColor ground = theme.plotAreaBackgroundColor();
    const bool isOpaque = ground.alpha() == 255;
    const bool isOneGround = isOpaque && ground == theme.backgroundColor();
    frame->background.show(isOpaque && !isOneGround ? around(area, all) : QVector<QRectF>{all},
                           theme.backgroundColor());
    frame->plotArea.show(isOneGround ? QVector<QRectF>() : QVector<QRectF>{area}, ground);
    frame->minorGrid.show(m_look.minorGrid, faint);
    frame->grid.show(m_look.grid, theme.gridColor());
    frame->axes.show(m_look.axes, theme.axisColor());
    return frame;
}
