// SPDX-License-Identifier: MIT
#include "views/items/SeriesItem.h"

#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"
#include "views/items/RectsNode.h"
#include "views/items/SeriesNode.h"
#include "views/items/ShapePainter.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace {

/// A window that is 241 wide has 301 pixels at a ratio of 1.25, over which the scene is stretched.
double exactRatio(int length, double ratio)
{
    return length > 0 ? double(qRound(length * ratio)) / length : ratio;
}

} // namespace

SeriesItem::SeriesItem(PlotView &view, PlotSeries &series, QQuickItem *layer)
    : QQuickItem(layer),
      m_view(view),
      m_layer(*layer),
      m_series(&series)
{
    setFlag(ItemHasContents);
    connect(&series, &PlotSeries::visibleChanged, this, &SeriesItem::followLook);
    connect(&series, &PlotSeries::opacityChanged, this, &SeriesItem::followLook);
    connect(&series, &PlotSeries::redrawNeeded, this, &SeriesItem::redraw);
    connect(&series, &PlotSeries::dataChanged, this, &SeriesItem::followData);
    connect(&view, &PlotView::rangesChanged, this, &SeriesItem::redraw);
    connect(&view, &PlotView::pixelRatioChanged, this, &SeriesItem::redraw);
    connect(layer, &QQuickItem::widthChanged, this, &SeriesItem::cover);
    connect(layer, &QQuickItem::heightChanged, this, &SeriesItem::cover);
    followLook();
    cover();
}

void SeriesItem::followLook()
{
    if (!m_series)
        return;
    setVisible(m_series->isVisible());
    setOpacity(m_series->opacity());
}

void SeriesItem::cover()
{
    setSize(m_layer.size());
    redraw();
}

void SeriesItem::redraw()
{
    if (m_series && m_series->isVisible())
        update();
}

/// Values that come behind the right edge, while nothing else is different, can't be seen and ask for no frame.
void SeriesItem::followData()
{
    const auto snapshotOf = [](const SeriesStore *store) { return store ? store->frameSnapshot() : SeriesSnapshot(); };
    const SeriesSnapshot values = snapshotOf(m_series->valueStore());
    const SeriesSnapshot places = snapshotOf(m_series->placeStore());
    const auto hasGrownBehind = [this](const SeriesSnapshot &now, const SeriesSnapshot &before) {
        return now == before
            || (now.isOfSameSeries(before) && now.begin() == before.begin() && before.isExact()
                && m_shape.shownEnd < before.end());
    };
    const bool isSeen = !hasGrownBehind(values, m_seenValues) || !hasGrownBehind(places, m_seenPlaces);
    m_seenValues = values;
    m_seenPlaces = places;
    if (isSeen || m_shape.grid.isEmpty())
        redraw();
}

SSeriesFrame SeriesItem::frame() const
{
    SSeriesFrame frame;
    frame.ratio = m_view.pixelRatio();
    frame.columns = int(std::lround(width() * frame.ratio));
    frame.rows = int(std::lround(height() * frame.ratio));
    frame.ratioX = exactRatio(window()->width(), frame.ratio);
    frame.ratioY = exactRatio(window()->height(), frame.ratio);
    frame.x = m_view.axisX()->mapping(0.0, frame.columns);
    frame.y = m_view.axisY()->mapping(frame.rows, 0.0);
    frame.previousStep = m_shape.grid.step;
    return frame;
}

QSGNode *SeriesItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (!m_series) {
        delete node;
        return nullptr;
    }
    const SSeriesFrame now = frame();
    m_series->draw(now, m_shape);
    if (!drawsGeometry(*window()) || hasTranslucentPath()) {
        delete node;
        return pixelsOf(now);
    }
    auto *own = dynamic_cast<SeriesNode *>(node); // it may have been pixels before
    if (!own) {
        delete node;
        own = new SeriesNode;
    }
    own->show(m_shape, now.ratioX, now.ratioY);
    return own;
}

/// The triangles of a line lie over each other, and a graphics card would blend them one by one.
bool SeriesItem::hasTranslucentPath() const
{
    return !m_shape.path.points.empty() && (m_shape.pathColor.alpha() < 255 || m_series->opacity() < 1.0);
}

/// The shape as a picture, for what geometry can't show.
QSGNode *SeriesItem::pixelsOf(const SSeriesFrame &now) const
{
    if (now.columns <= 0 || now.rows <= 0)
        return nullptr;
    QSGImageNode *image = window()->createImageNode();
    image->setTexture(window()->createTextureFromImage(paintedShape(m_shape, now.columns, now.rows)));
    image->setOwnsTexture(true);
    image->setRect(QRectF(0.0, 0.0, now.columns / now.ratioX, now.rows / now.ratioY));
    return image;
}
