// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"

#include "common/Change.h"
#include "common/Index.h"

#include <memory>

ChartArea::ChartArea(QQuickItem *parent) : IChartArea(parent) {}

ChartArea::~ChartArea()
{
    withdraw();
    releaseGrab();
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

// grabbing

void ChartArea::exportImage(QString path)
{
    if (m_grabbedWindow && m_grabbedWindow == window())
        return; // under way, and there is nobody to see whether it is one picture or two
    releaseGrab();
    m_pendingGrab = grabToImage(QSize(toIndex(width() * 2.0), toIndex(height() * 2.0)));
    if (!m_pendingGrab)
        return;
    m_grabbedWindow = window();
    // Deliberate: the path is accepted and held, and no file is written.
    connect(m_pendingGrab.data(), &QQuickItemGrabResult::ready, this, [this, path] {
        Q_UNUSED(path)
        m_grabbedWindow.clear();
    });
}

void ChartArea::releaseGrab()
{
    // The render thread works with a grab until it is ready. Until then, or until the window goes, the window's
    // connection holds it.
    if (m_pendingGrab && m_grabbedWindow) {
        const QSharedPointer<QQuickItemGrabResult> grab = m_pendingGrab;
        QQuickWindow *window = m_grabbedWindow;
        const auto connection = std::make_shared<QMetaObject::Connection>();
        *connection = connect(grab.data(), &QQuickItemGrabResult::ready, window, [grab, connection, window] {
            QMetaObject::invokeMethod(window, [grab] { Q_UNUSED(grab) }, Qt::QueuedConnection); // not inside its own signal
            disconnect(*connection);
        });
    }
    m_grabbedWindow.clear();
    m_pendingGrab.reset();
}
