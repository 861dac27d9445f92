// SPDX-License-Identifier: MIT
#include "plotters/BarPlotter.h"

#include "common/BlockMaxima.h"
#include "common/Series.h"
#include "common/Storage.h"
#include "geometry/BarShaderMode.h"
#include "geometry/Vertices.h"

#include <QDebug>

#include <algorithm>

namespace {

/// Per value the heights of a bar's four corners, or the value alone where a shader expands it.
void writeBarPoints(const double *values, int count, float *points, int pointsPerBar)
{
    if (pointsPerBar == 1)
        std::transform(values, values + count, points, [](double value) { return float(value); });
    else
        writeBarHeights(values, count, points);
}

} // namespace

BarPlotter::BarPlotter(QObject *parent) : IPlotter1D(parent) {}

BarPlotter::~BarPlotter()
{
    withdraw();
}

void BarPlotter::setData(const QVector<double> &data)
{
    if (isSameData(data))
        return;
    m_data = data; // Deliberate: without a chart area too, and without its lock.
    if (m_glReady)
        buildArrays();
    emitAndRequestUpdate(&IPlotter::dataChanged);
}

void BarPlotter::setPlotterArea(const QRectF &area)
{
    QRectF adjusted = area;
    if (m_glReady)
        adjusted.setHeight(m_plotterArea.height());
    storePlotterArea(adjusted);
}

const QRectF BarPlotter::area_at(const QPointF &point) const
{
    const int index = _index_at(point.x());
    if (index < 0 || index >= m_data.size())
        return {};
    return slotRect(index);
}

// arrays: GUI thread, or render thread while the GUI thread is blocked

int BarPlotter::drawableBars() const
{
    return m_data.size() <= maximumBars ? m_data.size() : 0;
}

void BarPlotter::buildArrays()
{
    if (m_data.size() > maximumBars)
        qWarning() << "BarPlotter draws at most" << maximumBars << "bars, not" << m_data.size();
    buildVertices();
    buildIndices();
}

bool BarPlotter::isLong() const
{
    return drawableBars() > wholeSeries && barModeHasVertexIds(barShaderMode);
}

void BarPlotter::buildVertices()
{
    const QMutexLocker lock(&m_dataMutex);
    m_barDirty |= vertexDataDirty;
    const int pointsPerBar = barModeHasIndices(barShaderMode) ? 4 : 1;
    const QVector<double> series = drawableBars() > 0 ? m_data : QVector<double>();
    const bool whole = !isLong();
    m_finite = true;
    prepare(m_points, whole ? pointsPerBar * series.size() : 0);
    const BlockMaxima maxima = BlockMaxima::of(series, [&](int start, int count) {
        const double *values = series.constData() + start;
        m_finite &= finiteInSingle(values, count);
        if (whole)
            writeBarPoints(values, count, portionAt(m_points, pointsPerBar * start, pointsPerBar * count),
                           pointsPerBar);
    });
    m_plotterArea.setHeight(maxima.maximum()); // Deliberate: without a signal.
    keepMaxima(maxima);
}

void BarPlotter::buildIndices()
{
    const int mode = barShaderMode;
    const int count = drawableBars();
    if (!barModeHasIndices(mode) || isLong() || m_indices.size() > 6 * count)
        return;
    m_barDirty |= indexDataDirty; // Deliberate: at equal length too.
    const int present = m_indices.size() / 6;
    m_indices.reserve(6 * count);
    appendBarIndices(m_indices, present, count);
    if (!barModeHasVertexIds(mode))
        return;
    m_vertexIds.reserve(4 * count);
    appendBarNumbers(m_vertexIds, present, count);
}
