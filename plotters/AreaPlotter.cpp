// SPDX-License-Identifier: MIT
#include "plotters/AreaPlotter.h"

#include "common/BlockMaxima.h"
#include "common/Change.h"
#include "common/Series.h"
#include "common/Storage.h"
#include "geometry/Vertices.h"

#include <QDebug>

AreaPlotter::AreaPlotter(QObject *parent) : IPlotter1D(parent)
{
    m_color.setAlphaF(0.5);
    m_offsetSubtracts = false;
}

AreaPlotter::~AreaPlotter()
{
    withdraw();
}

void AreaPlotter::setBorderWidth(double borderWidth)
{
    if (change(m_borderWidth, borderWidth))
        emitAndRequestUpdate(static_cast<Signal>(&AreaPlotter::borderWidthChanged));
}

void AreaPlotter::setBorderColor(const QColor &borderColor)
{
    if (change(m_borderColor, borderColor))
        emitAndRequestUpdate(static_cast<Signal>(&AreaPlotter::borderColorChanged));
}

void AreaPlotter::setBorderEnable(bool borderEnable)
{
    if (change(m_borderEnable, borderEnable))
        emitAndRequestUpdate(static_cast<Signal>(&AreaPlotter::borderEnableChanged));
}

void AreaPlotter::setEnableGradient(bool enableGradient)
{
    if (change(m_enableGradient, enableGradient))
        emit enableGradientChanged(); // Deliberate: without a request for a frame.
}

void AreaPlotter::setGradientColor(const QColor &gradientColor)
{
    if (change(m_gradientColor, gradientColor))
        emit gradientColorChanged(); // Deliberate: without a request for a frame.
}

void AreaPlotter::setPlotterArea(const QRectF &area)
{
    QRectF adjusted = area;
    if (m_initialized)
        adjusted.setHeight(m_plotterArea.height());
    storePlotterArea(adjusted);
}

// arrays: GUI thread, or render thread while the GUI thread is blocked

bool AreaPlotter::isLong() const
{
    return m_data.size() > wholeSeries && m_data.size() <= maximumPoints;
}

bool AreaPlotter::__update_vertex()
{
    if (m_data.size() > maximumPoints)
        qWarning() << "AreaPlotter draws at most" << maximumPoints << "points, not" << m_data.size();
    const QVector<double> series = m_data.size() <= maximumPoints ? m_data : QVector<double>();
    const int whole = isLong() ? 0 : series.size();
    if (m_fillVertices.size() != 4 * whole)
        restart(m_fillVertices, 4 * whole);
    prepare(m_borderVertices, whole);
    m_finite = true;
    const BlockMaxima maxima = BlockMaxima::of(series, [&](int start, int count) {
        const double *values = series.constData() + start;
        m_finite &= finiteInSingle(values, count);
        if (whole == 0)
            return;
        writeFillVertices(values, start, count, portionAt(m_fillVertices, 2 * start, 2 * count));
        writeBorderVertices(values, start, count, portionAt(m_borderVertices, start, count));
    });
    m_fillVertices.resize(4 * whole);          // zeros; at equal length they are there
    m_plotterArea.setHeight(maxima.maximum()); // Deliberate: without a signal.
    keepMaxima(maxima);
    m_dirtyFlags |= borderDataDirty;
    return true;
}
