// SPDX-License-Identifier: MIT
#include "views/items/OverviewStrip.h"

#include "views/items/PlotAxis.h"
#include "views/items/PlotFrame.h"
#include "views/items/PlotKeys.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/PlotZoom.h"
#include "views/items/RectsNode.h"

#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr double edgeGrip = 7.0;    // pixels at which a hand takes an edge
constexpr double leastWindow = 6.0; // pixels
constexpr double notchFactor = 0.8; // as in the view
constexpr double notch = 120.0;

/// Dims what the view doesn't show and frames what it does.
class Veil : public QQuickItem
{
public:
    explicit Veil(OverviewStrip &strip) : QQuickItem(&strip), m_strip(strip) { setFlag(ItemHasContents); }

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override
    {
        auto *rects = static_cast<FramedRectsNode *>(node);
        if (!rects)
            rects = new FramedRectsNode(*window());
        const PlotView *const view = m_strip.view();
        rects->fills.show(m_strip.dimmed(), m_strip.dimColor());
        const double line = m_strip.hasActiveFocus() ? 2.0 : 1.0;
        rects->lines.show(view ? frameOf(m_strip.shownPart(), line) : QVector<QRectF>(),
                          view ? view->theme()->accentColor() : QColor(Qt::transparent));
        return rects;
    }

private:
    OverviewStrip &m_strip;
};

} // namespace

OverviewStrip::OverviewStrip(QQuickItem *parent)
    : QQuickItem(parent),
      m_small(new PlotView(this)),
      m_veil(new Veil(*this))
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setActiveFocusOnTab(true);
    connect(this, &QQuickItem::activeFocusChanged, m_veil, &QQuickItem::update);
    setImplicitHeight(48.0);
    m_small->setInteractive(false);
    m_small->setActiveFocusOnTab(false);
    m_small->frame()->setBare(true);
    for (PlotAxis *axis : {m_small->axisX(), m_small->axisY()}) {
        axis->setLabelsVisible(false);
        axis->setGridVisible(false);
    }
    connect(m_small, &PlotView::rangesChanged, m_veil, &QQuickItem::update);
    connect(m_small, &PlotView::plotAreaChanged, m_veil, &QQuickItem::update);
    connect(m_small, &PlotView::rangesChanged, this, &OverviewStrip::tellValue);
}

OverviewStrip::~OverviewStrip()
{
    letGo();
}

void OverviewStrip::letGo()
{
    if (m_view)
        disconnect(m_view, nullptr, this, nullptr);
    m_small->removeAllSeries();
    m_small->setTheme(nullptr);
}

void OverviewStrip::setView(PlotView *view)
{
    if (view == m_view)
        return;
    letGo();
    m_view = view;
    watch();
    emit viewChanged();
}

void OverviewStrip::keyPressEvent(QKeyEvent *event)
{
    event->setAccepted(m_view && m_view->isInteractive() && pressKey(*m_view, *event));
}

void OverviewStrip::watch()
{
    makeEars();
    if (m_view) {
        connect(m_view, &PlotView::seriesListChanged, this, &OverviewStrip::takeSeries);
        connect(m_view, &PlotView::rangesChanged, m_veil, &QQuickItem::update);
        connect(m_view, &PlotView::rangesChanged, this, &OverviewStrip::tellValue);
        connect(m_view, &PlotView::themeChanged, this, [this] {
            m_small->setTheme(m_view->theme());
            m_veil->update();
        });
        m_small->setTheme(m_view->theme());
        takeSeries();
    }
    tellValue();
    m_veil->update();
}

void OverviewStrip::takeSeries()
{
    m_small->removeAllSeries();
    for (PlotSeries *series : m_view->series())
        m_small->addSeries(series);
}

QRectF OverviewStrip::shownPart() const
{
    const AxisMapping mapping = m_small->mappingX();
    if (!m_view || !mapping.isValid())
        return {};
    const double from = qBound(0.0, mapping.toPixels(m_view->axisX()->min()), width());
    const double to = qBound(0.0, mapping.toPixels(m_view->axisX()->max()), width());
    const double left = std::min(from, std::max(0.0, width() - leastWindow));
    return {left, 0.0, std::max(to - left, leastWindow), height()};
}

QVector<QRectF> OverviewStrip::dimmed() const
{
    const QRectF shown = shownPart();
    return {{0.0, 0.0, shown.left(), height()}, {shown.right(), 0.0, width() - shown.right(), height()}};
}

QColor OverviewStrip::dimColor() const
{
    QColor ground = m_view ? m_view->theme()->backgroundColor() : QColor(Qt::transparent);
    ground.setAlphaF(0.65 * ground.alphaF());
    return ground;
}

void OverviewStrip::geometryChanged(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChanged(now, before);
    m_small->setSize(now.size());
    m_veil->setSize(now.size());
    m_veil->update();
}

void OverviewStrip::mousePressEvent(QMouseEvent *event)
{
    if (!m_view || !m_view->isInteractive()) {
        event->ignore();
        return;
    }
    const double x = event->localPos().x();
    const QRectF part = shownPart();
    const bool isNearFrom = std::abs(x - part.left()) <= std::min(edgeGrip, part.width() * 0.4);
    const bool isNearTo = std::abs(x - part.right()) <= std::min(edgeGrip, part.width() * 0.4);
    m_hold = isNearFrom ? Hold::From : isNearTo ? Hold::To : Hold::All;
    m_grip = (isNearTo ? part.right() : part.left()) - x;
    m_gesture = m_view->zoom()->newGesture();
    setKeepMouseGrab(true);
    if (m_hold == Hold::All && !part.contains(event->localPos())) {
        m_grip = -part.width() * 0.5; // the middle comes to the hand
        drag(x);
    }
}

void OverviewStrip::mouseMoveEvent(QMouseEvent *event)
{
    if (m_view && m_hold != Hold::None)
        drag(event->localPos().x());
}

void OverviewStrip::drag(double x)
{
    const AxisMapping mapping = m_small->mappingX();
    if (!mapping.isValid())
        return;
    const SAxisRange range = m_view->axisX()->range();
    const double there = mapping.toValue(qBound(0.0, x + m_grip, width()));
    SAxisRange wanted = range;
    if (m_hold == Hold::From)
        wanted.min = std::min(there, range.max);
    else if (m_hold == Hold::To)
        wanted.max = std::max(there, range.min);
    else if (mapping.log)
        wanted = {mapping.toValue(x + m_grip), mapping.toValue(x + m_grip) * (range.max / range.min)};
    else
        wanted = {mapping.toValue(x + m_grip), mapping.toValue(x + m_grip) + (range.max - range.min)};
    m_view->zoom()->showX(wanted, m_gesture);
}

void OverviewStrip::mouseReleaseEvent(QMouseEvent *)
{
    mouseUngrabEvent();
}

void OverviewStrip::mouseUngrabEvent()
{
    m_hold = Hold::None;
    setKeepMouseGrab(false);
}

void OverviewStrip::wheelEvent(QWheelEvent *event)
{
    if (!m_view || !m_view->isInteractive() || event->angleDelta().y() == 0) {
        event->ignore();
        return;
    }
    const SAxisRange range = m_view->axisX()->range();
    const double pointer = m_small->mappingX().toValue(event->position().x());
    const double anchor = qBound(range.min, pointer, range.max);
    m_view->zoom()->zoomX(std::pow(notchFactor, event->angleDelta().y() / notch), anchor,
                          m_view->zoom()->wheelGesture());
}
