// SPDX-License-Identifier: MIT
#include "plotters/IPlotter.h"

#include "chart/IChartArea.h"
#include "common/Change.h"
#include "common/Series.h"

#include <QDebug>
#include <QPointer>

IPlotter::IPlotter(QObject *parent) : QObject(parent), m_renderHandle(std::make_shared<RenderHandle<IPlotter>>(this)) {}

IPlotter::~IPlotter()
{
    withdraw();
}

void IPlotter::withdraw()
{
    m_renderHandle->revoke();
    m_anchor.cut();
}

void IPlotter::requestUpdate()
{
    if (m_chartArea)
        m_chartArea->requestUpdate();
}

void IPlotter::emitAndRequestUpdate(Signal changed)
{
    const QPointer<IPlotter> alive(this);
    (this->*changed)();
    if (alive)
        requestUpdate();
}

void IPlotter::setName(const QString &name)
{
    if (change(m_name, name))
        emit nameChanged();
}

void IPlotter::setColor(const QColor &color)
{
    if (change(m_color, color))
        emitAndRequestUpdate(&IPlotter::colorChanged);
}

void IPlotter::setVisible(bool visible)
{
    if (change(m_visible, visible))
        emitAndRequestUpdate(&IPlotter::visibleChanged);
}

void IPlotter::setZOrder(double zOrder)
{
    if (change(m_zOrder, zOrder))
        emitAndRequestUpdate(&IPlotter::zOrderChanged);
}

void IPlotter::setVectorDim(uchar vectorDim)
{
    if (change(m_vectorDim, vectorDim))
        emit vectorDimChanged();
}

QRectF IPlotter::modArea() const
{
    const double offset = m_offsetSubtracts ? -m_xOffset : m_xOffset;
    return m_plotterArea.translated(offset, 0.0);
}

void IPlotter::setDrawLayer(uint drawLayer)
{
    if (change(m_drawLayer, drawLayer))
        emitAndRequestUpdate(&IPlotter::drawLayerChanged);
}

void IPlotter::setShowLegend(bool showLegend)
{
    if (change(m_showLegend, showLegend))
        emit drawLayerChanged(); // Deliberate: showLegend shares this signal; showLegendChanged is never emitted.
}

void IPlotter::setXOffset(double xOffset)
{
    if (change(m_xOffset, xOffset))
        emitAndRequestUpdate(&IPlotter::xOffsetChanged); // Deliberate: modAreaChanged is never emitted.
}

void IPlotter::setPlotterArea(const QRectF &area)
{
    storePlotterArea(area);
}

void IPlotter::storePlotterArea(const QRectF &area)
{
    if (change(m_plotterArea, area))
        emitAndRequestUpdate(&IPlotter::plotterAreaChanged);
}

void IPlotter::setChartArea(IChartArea *chartArea)
{
    if (m_chartArea.get() == chartArea)
        return;
    const QPointer<IPlotter> alive(this);
    const QPointer<IChartArea> target(chartArea);
    if (m_chartArea) {
        const IChartArea *left = m_chartArea.get();
        m_chartArea->removePlotter(this);
        if (!alive || (m_chartArea && m_chartArea.get() != left))
            return; // a handler moved the plotter elsewhere: the newer wish counts
    }
    m_chartArea.set(target);
    if (target)
        target->addPlotter(this);
    if (alive)
        emit chartAreaChanged();
}

const QVector<double> &IPlotter::data() const
{
    return m_data;
}

bool IPlotter::isSameData(const QVector<double> &data) const
{
    return sameSeries(m_data, data);
}

void IPlotter::setData(const QVector<double> &data)
{
    if (isSameData(data) || !m_chartArea)
        return;
    replaceData(data);
    emitAndRequestUpdate(&IPlotter::dataChanged);
}

void IPlotter::replaceData(const QVector<double> &data)
{
    const RenderLocker areaLock(*m_chartArea.get());
    m_data = data;
    if (!m_initialized)
        return;
    const QMutexLocker dataLock(&m_dataMutex);
    if (__update_vertex())
        m_dirtyFlags |= vertexDataDirty;
    if (__update_index())
        m_dirtyFlags |= indexDataDirty;
}

double IPlotter::max_in(const QRectF &) const
{
    return 0.0;
}

double IPlotter::query_in(const QRectF &) const
{
    return 0.0;
}

const QRectF IPlotter::area_at(const QPointF &) const
{
    return {};
}

SInfoPoint IPlotter::mouse_hovering(const QPointF &) const
{
    return {};
}

void IPlotter::report_no_attributes()
{
    qInfo() << "None Attribute define for " << m_programName << " shader program";
}

bool IPlotter::__update_vertex()
{
    return false;
}

bool IPlotter::__update_index()
{
    return false;
}
