// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"

#include "chart/ChartRenderer.h"
#include "common/Change.h"

#include <QDebug>
#include <QMetaObject>
#include <QPointer>
#include <QThread>

IChartArea::IChartArea(QQuickItem *parent)
    : QQuickFramebufferObject(parent),
      m_renderHandle(std::make_shared<RenderHandle<IChartArea>>(this))
{
}

IChartArea::~IChartArea()
{
    withdraw();
}

void IChartArea::withdraw()
{
    m_renderHandle->revoke();
    m_anchor.cut();
}

QQuickFramebufferObject::Renderer *IChartArea::createRenderer() const
{
    m_renderer = new ChartRenderer;
    return m_renderer;
}

void IChartArea::announce(Signal changed)
{
    if (m_synchronizing)
        QMetaObject::invokeMethod(
            this, [this, changed] { (this->*changed)(); }, Qt::QueuedConnection);
    else
        (this->*changed)();
}

// properties

void IChartArea::setChartRect(const QRectF &chartRect)
{
    if (change(m_chartRect, chartRect))
        announce(&IChartArea::chartRectChanged);
}

void IChartArea::setAdaptAreaToPlotters(bool adapt)
{
    if (change(m_adaptAreaToPlotters, adapt))
        emit adaptAreaToPlottersChanged();
}

void IChartArea::setPlotter(const QList<IPlotter *> &plotters)
{
    if (plotters == m_plotters.items())
        return;
    const QList<IPlotter *> before = m_plotters.items();
    m_plotters.assign(plotters);
    if (m_plotters.items() == before) // only null entries differed
        return;
    const QPointer<IChartArea> alive(this);
    emit plotterChanged();
    if (alive)
        requestUpdate();
}

void IChartArea::setShouldUpdate(bool shouldUpdate)
{
    if (change(m_shouldUpdate, shouldUpdate))
        emit shouldUpdateChanged();
}

void IChartArea::setUpdateIntervalMs(uint milliseconds)
{
    m_updateIntervalMs = milliseconds;
}

// plotters

void IChartArea::addPlotter(IPlotter *plotter)
{
    if (!m_plotters.append(plotter))
        return;
    const QPointer<IChartArea> alive(this);
    plotter->setChartArea(this);
    if (alive)
        emit plotterChanged();
    if (alive)
        requestUpdate();
}

void IChartArea::removePlotter(IPlotter *plotter)
{
    if (!plotter)
        return;
    m_plotters.remove(plotter); // Deliberate: the plotter's chartArea stays, and an unlisted plotter is announced too.
    const QPointer<IChartArea> alive(this);
    emit plotterChanged();
    if (alive)
        requestUpdate();
}

// frames

void IChartArea::requestUpdate()
{
    constexpr int deepestRequest = 8; // a fit requests again, and so do its handlers: this much may go on the stack
    if (dropsRequest())
        return;
    if (m_requestDepth == deepestRequest) {
        m_fitAgain = true; // when the handlers of the deepest one have returned
        return;
    }
    if (m_requestDepth == 0)
        m_fits = 0;
    const QPointer<IChartArea> alive(this);
    ++m_requestDepth;
    do {
        m_fitAgain = false;
        if (mayFit())
            updateChartRect();
        if (!alive)
            return;
    } while (m_fitAgain);
    --m_requestDepth;
    scheduleFrame();
}

bool IChartArea::mayFit()
{
    constexpr int mostFits = 100; // of the same plotters, in one request
    if (m_fits == 0 || m_plotters.items().size() > m_fittedPlotters) {
        m_fits = 0;
        m_fittedPlotters = int(m_plotters.items().size());
    }
    if (++m_fits <= mostFits)
        return true;
    m_fits = mostFits;
    if (change(m_unsettledReported, true))
        qWarning() << "IChartArea: chartRect never settles: each fit makes something change the plotters or the zoom";
    return false;
}

bool IChartArea::dropsRequest()
{
    if (m_updateLocked || !m_shouldUpdate)
        return true;
    if (m_updateIntervalMs == 0) {
        if (!m_updateTimer.isValid())
            m_updateTimer.start();
        return false;
    }
    if (m_updateTimer.isValid() && m_updateTimer.elapsed() < qint64(m_updateIntervalMs))
        return true;
    m_updateTimer.start();
    return false;
}

void IChartArea::scheduleFrame()
{
    // Qt refuses an update off the GUI thread and the item would never be updated again.
    if (!m_synchronizing && QThread::currentThread() == thread())
        update();
    else
        QMetaObject::invokeMethod(this, &QQuickItem::update, Qt::QueuedConnection);
}

QRectF IChartArea::unitedPlotterAreas() const
{
    QRectF united;
    for (const IPlotter *plotter : m_plotters.items())
        united |= plotter->plotterArea();
    return united;
}

void IChartArea::updateChartRect()
{
    constexpr double headroom = 1.05; // of the height, at the high end of the values
    if (!m_adaptAreaToPlotters)
        return;
    QRectF fitted = unitedPlotterAreas();
    if (fitted.isNull())
        fitted = QRectF(0.0, 0.0, 1.0, 1.0);
    if (fitted.height() == 0.0)
        fitted.setHeight(1.0);
    fitted.setHeight(fitted.height() * headroom);
    setChartRect(fitted);
}

// coordinates

const QRectF &IChartArea::viewRect() const
{
    return m_chartRect;
}

QPointF IChartArea::mapPointToChart(QPointF point)
{
    return mapPoint(point, m_chartRect);
}

QPointF IChartArea::mapPoint(const QPointF &point, const QRectF &rect) const
{
    const double x = width() * (point.x() - rect.x()) / rect.width();
    const double y = height() - height() * (point.y() - rect.y()) / rect.height();
    if (x < 0.0 || x > width() || y < 0.0 || y > height()) // Deliberate: written so that a NaN counts as inside.
        return {-1.0, -1.0};
    return {x, y};
}
