// SPDX-License-Identifier: MIT
#include "views/items/PlotFrame.h"

#include "common/Change.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/RectsNode.h"

#include <algorithm>

namespace {

constexpr double edge = 8.0; // of the view, free of everything
constexpr double tickLength = 4.0;
constexpr double labelGap = 3.0; // from a tick to its label
constexpr double rowGap = 2.0;
constexpr int labelDigits = 9; // what most labels take at most: "-12345.6k"
constexpr double rowsPerLabel = 2.6;

/// The parts of the frame in the order in which they're drawn.
class FrameNode : public QSGNode
{
public:
    FrameNode()
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

QStringList PlotFrame::texts() const
{
    QStringList texts;
    for (const SLabel &label : m_texts)
        texts.append(label.text);
    return texts;
}

void PlotFrame::updatePolish()
{
    setSize(m_view.size());
    const PlotTheme &theme = *m_view.theme();
    if (change(m_font, theme.font()))
        m_labelWidth = 0.0;
    const QFontMetricsF metrics(m_font);
    layOutRoom(metrics);
    m_texts.clear();
    m_lines = {};
    if (!m_view.plotArea().isEmpty()) {
        lookAtX(metrics);
        lookAtY();
        addTitles(metrics);
    }
    m_labels.show(m_texts, m_font, theme.labelTextColor(), m_view.pixelRatio());
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
    for (const STickLabel &label : axisLook(axis, mapping, metrics.height() * rowsPerLabel, space).labels)
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
    const PlotAxis &x = *m_view.axisX();
    const PlotAxis &y = *m_view.axisY();
    QMarginsF room(edge, edge, edge, edge + m_roomBelow);
    if (y.labelsVisible())
        room += QMarginsF(tickLength + labelGap, row * 0.5, 0.0, 0.0);
    room.setLeft(room.left() + widthOfLabels(metrics) + (y.heading().isEmpty() ? 0.0 : row + rowGap));
    if (x.labelsVisible()) {
        const double digit = metrics.horizontalAdvance(QLatin1Char('0'));
        room += QMarginsF(0.0, 0.0, digit * labelDigits * 0.3, tickLength + labelGap + row);
    }
    // A base has the title's row. It comes and goes with the zoom, so the row is there whenever labels are.
    if (!x.heading().isEmpty() || x.labelsVisible())
        room.setBottom(room.bottom() + row);
    if (!m_view.title().isEmpty())
        room.setTop(room.top() + row * 1.25);
    m_view.setPlotMargins(room);
}

/// A line one device pixel wide on whole device pixels.
QRectF PlotFrame::upright(double x, double top, double bottom) const
{
    const double ratio = m_view.pixelRatio();
    const double right = m_view.plotArea().right() - 1.0 / ratio;
    return {std::min(std::floor(x * ratio + 1e-6) / ratio, right), top, 1.0 / ratio, bottom - top};
}

QRectF PlotFrame::level(double y, double left, double right) const
{
    const double ratio = m_view.pixelRatio();
    const double bottom = m_view.plotArea().bottom() - 1.0 / ratio;
    return {left, std::min(std::floor(y * ratio + 1e-6) / ratio, bottom), right - left, 1.0 / ratio};
}

void PlotFrame::lookAtX(const QFontMetricsF &metrics)
{
    const QRectF area = m_view.plotArea();
    const PlotAxis &axis = *m_view.axisX();
    const double digit = metrics.horizontalAdvance(QLatin1Char('0'));
    const SLabelSpace space{digit, digit * 2.0};
    const SAxisLook look = axisLook(axis, axis.mapping(area.left(), area.right()), digit * (labelDigits + 2), space);
    double free = -1e9; // a format by hand may give longer labels: then some are left out
    for (const STickLabel &tick : look.labels) {
        if (axis.gridVisible())
            m_lines.grid.append(upright(tick.pixels, area.top(), area.bottom()));
        const double half = metrics.horizontalAdvance(tick.text) * 0.5;
        if (!axis.labelsVisible() || tick.pixels - half < free)
            continue;
        free = tick.pixels + half + digit;
        m_lines.axes.append(upright(tick.pixels, area.bottom(), area.bottom() + tickLength));
        m_texts.append({tick.text, {tick.pixels, area.bottom() + tickLength + labelGap}, SLabel::Top});
    }
    for (const double pixels : look.minor) {
        if (axis.gridVisible() && axis.isLog())
            m_lines.minorGrid.append(upright(pixels, area.top(), area.bottom()));
        if (axis.labelsVisible())
            m_lines.axes.append(upright(pixels, area.bottom(), area.bottom() + tickLength * 0.5));
    }
    const double titleTop = area.bottom() + tickLength + labelGap + std::ceil(metrics.height()) + rowGap;
    if (axis.labelsVisible() && !look.base.isEmpty())
        m_texts.append({look.base, {area.right(), titleTop + metrics.height() * 0.5}, SLabel::Right});
    m_lines.axes.append(level(area.bottom() - 1.0 / m_view.pixelRatio(), area.left(), area.right()));
}

void PlotFrame::lookAtY()
{
    const QRectF area = m_view.plotArea();
    const PlotAxis &axis = *m_view.axisY();
    const QFontMetricsF metrics(m_font);
    const SLabelSpace space{metrics.height(), metrics.height()};
    const AxisMapping mapping = axis.mapping(area.bottom(), area.top());
    const SAxisLook look = axisLook(axis, mapping, metrics.height() * rowsPerLabel, space);
    for (const STickLabel &tick : look.labels) {
        if (axis.gridVisible())
            m_lines.grid.append(level(tick.pixels, area.left(), area.right()));
        if (!axis.labelsVisible())
            continue;
        m_lines.axes.append(level(tick.pixels, area.left() - tickLength, area.left()));
        m_texts.append({tick.text, {area.left() - tickLength - labelGap, tick.pixels}, SLabel::Right});
    }
    for (const double pixels : look.minor) {
        if (axis.gridVisible() && axis.isLog())
            m_lines.minorGrid.append(level(pixels, area.left(), area.right()));
        if (axis.labelsVisible())
            m_lines.axes.append(level(pixels, area.left() - tickLength * 0.5, area.left()));
    }
    if (axis.labelsVisible() && !look.base.isEmpty()) {
        const double y = area.top() - metrics.height() * 0.5 - rowGap;
        m_texts.append({look.base, {std::min(edge, area.left()), y}, SLabel::Left});
    }
    m_lines.axes.append(upright(area.left(), area.top(), area.bottom()));
}

void PlotFrame::addTitles(const QFontMetricsF &metrics)
{
    const QRectF area = m_view.plotArea();
    const double row = std::ceil(metrics.height()) + rowGap;
    const QString below = m_view.axisX()->heading();
    if (!below.isEmpty()) {
        const double labels = m_view.axisX()->labelsVisible() ? tickLength + labelGap + row : rowGap;
        m_texts.append({below, {area.center().x(), area.bottom() + labels}, SLabel::Top});
    }
    const QString beside = m_view.axisY()->heading();
    if (!beside.isEmpty())
        m_texts.append({beside, {edge + row * 0.5, area.center().y()}, SLabel::CentreUpwards});
    if (!m_view.title().isEmpty())
        m_texts.append({m_view.title(), {area.center().x(), edge + row * 0.5}, SLabel::Centre});
}

QSGNode *PlotFrame::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *frame = static_cast<FrameNode *>(node);
    if (!frame)
        frame = new FrameNode;
    const PlotTheme &theme = *m_view.theme();
    QColor faint = theme.gridColor();
    faint.setAlphaF(faint.alphaF() * 0.5);
    frame->background.show({QRectF(QPointF(), size())}, theme.backgroundColor());
    frame->plotArea.show({m_view.plotArea()}, theme.plotAreaBackgroundColor());
    frame->minorGrid.show(m_lines.minorGrid, faint);
    frame->grid.show(m_lines.grid, theme.gridColor());
    frame->axes.show(m_lines.axes, theme.axisColor());
    return frame;
}
