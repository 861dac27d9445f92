// SPDX-License-Identifier: MIT
#include "plotters/BarPlotter.h"

#include "common/Series.h"
#include "plotters/BarPlotter_p.h"

#include <QDebug>

#include <algorithm>

namespace {

/// Per value v the heights 0, 0, v, v of a bar's corners, or v alone where a shader expands it.
void writeBarPoints(const double *values, int count, float *points, int pointsPerBar)
{
    if (pointsPerBar == 1) {
        std::transform(values, values + count, points, [](double value) { return float(value); });
        return;
    }
    for (int i = 0; i < count; ++i, points += 4) {
        const float height = float(values[i]);
        points[0] = 0.0f;
        points[1] = 0.0f;
        points[2] = height;
        points[3] = height;
    }
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
    const QRectF extent = modArea();
    const double width = extent.width() / m_data.size();
    return {extent.left() + index * width, 0.0, width, m_data.at(index)};
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

void BarPlotter::buildVertices()
{
    constexpr int block = 2048; // values: still in the first-level cache when their maximum is taken
    const QMutexLocker lock(&m_dataMutex);
    m_barDirty |= vertexDataDirty;
    const int pointsPerBar = barModeHasIndices(barShaderMode()) ? 4 : 1;
    const int count = drawableBars();
    m_points.resize(pointsPerBar * count); // at equal length this touches nothing
    const double *values = m_data.constData();
    float *points = m_points.data();
    double maximum = 0.0;
    for (int start = 0; start < count; start += block) {
        const int length = std::min(block, count - start);
        writeBarPoints(values + start, length, points + qptrdiff(pointsPerBar) * start, pointsPerBar);
        maximum = std::max(maximum, maximumFromZero(values + start, length));
    }
    m_plotterArea.setHeight(maximum); // Deliberate: without a signal.
}

void BarPlotter::buildIndices()
{
    const int mode = barShaderMode();
    const int count = drawableBars();
    if (!barModeHasIndices(mode) || m_indices.size() > 6 * count)
        return;
    m_barDirty |= indexDataDirty; // Deliberate: at equal length too.
    const int present = m_indices.size() / 6;
    m_indices.resize(6 * count);
    uint *index = m_indices.data() + 6 * present;
    for (int i = present; i < count; ++i, index += 6) {
        const uint corner = 4u * uint(i);
        index[0] = corner + 1;
        index[1] = corner + 2;
        index[2] = corner;
        index[3] = corner + 1;
        index[4] = corner + 2;
        index[5] = corner + 3;
    }
    if (!barModeHasVertexIds(mode))
        return;
    m_vertexIds.resize(4 * count);
    float *vertexId = m_vertexIds.data() + 4 * present;
    for (int i = present; i < count; ++i, vertexId += 4) {
        vertexId[0] = vertexId[2] = float(i);
        vertexId[1] = vertexId[3] = float(i + 1);
    }
}
