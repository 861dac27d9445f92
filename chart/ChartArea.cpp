// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"

#include "common/Change.h"
#include "common/Index.h"

#include <QPointer>
#include <QQuickWindow>

namespace {

/// Keeps a grab until it is ready or its window is gone: so long the render thread may be working on it.
class GrabKeeper : public QObject
{
public:
    GrabKeeper(const QSharedPointer<QQuickItemGrabResult> &grab, QQuickWindow *window) : QObject(window), m_grab(grab)
    {
        connect(grab.data(), &QQuickItemGrabResult::ready, this, &QObject::deleteLater);
    }

private:
    QSharedPointer<QQuickItemGrabResult> m_grab;
};

} // namespace

ChartArea::ChartArea(QQuickItem *parent) : IChartArea(parent) {}

ChartArea::~ChartArea()
{
    withdraw();
}

void ChartArea::setZoomRect(const QRectF &zoomRect)
{
    if (!change(m_zoomRect, zoomRect))
        return;
    const QPointer<ChartArea> alive(this);
    announce(static_cast<Signal>(&ChartArea::zoomRectChanged));
    if (alive)
        requestUpdate();
}

void ChartArea::setAdaptChartHeight(bool adapt)
{
    if (change(m_adaptChartHeight, adapt))
        emit adaptChartHeightChanged();
}

const QRectF &ChartArea::viewRect() const
{
    return m_zoomRect;
}

QPointF ChartArea::mapPointToChart(QPointF point)
{
    return mapPoint(point, m_zoomRect);
}

void ChartArea::resetZoomView()
{
    setZoomRect(chartRect());
}

double ChartArea::visibleMaximum() const
{
    double maximum = 1.0;
    for (const IPlotter *listed : plotter()) {
        if (!listed->visible())
            continue;
        const double largest = listed->max_in(m_zoomRect);
        if (largest > maximum) // never true for a NaN
            maximum = largest;
    }
    return maximum;
}

void ChartArea::updateChartRect()
{
    constexpr double headroom = 1.05; // of the height, at the high end of the values
    const QPointer<ChartArea> alive(this);
    IChartArea::updateChartRect();
    if (!alive)
        return;
    QRectF shown = m_zoomRect.intersected(chartRect());
    if (shown.isNull())
        shown = chartRect();
    if (m_adaptChartHeight) {
        shown.setHeight(visibleMaximum() * headroom);
    } else {
        shown.setHeight(chartRect().height());
        shown = shown.intersected(chartRect());
    }
    setZoomRect(shown);
}

void ChartArea::exportImage(QString path)
{
    m_pendingGrab = grabToImage(QSize(toIndex(width() * 2.0), toIndex(height() * 2.0)));
    if (!m_pendingGrab)
        return;
    new GrabKeeper(m_pendingGrab, window());
    // Deliberate: the path is accepted and held, and no file is written.
    connect(m_pendingGrab.data(), &QQuickItemGrabResult::ready, this, [path] { Q_UNUSED(path) });
}
