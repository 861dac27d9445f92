// SPDX-License-Identifier: MIT
#include "plotters/BarPlotter.h"

#include "common/BlockMaxima.h"
#include "plotters/BarPlotter_p.h"
#include "plotters/SlotVertices.h"

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

/// Appends the numbers of the corners of bars `present` to `count` - 1.
void appendBarNumbers(QVector<float> &numbers, int present, int count)
{
    numbers.reserve(4 * count);
    for (int done = present; done < count; done += seriesPortion) {
        const int end = std::min(done + seriesPortion, count);
        float *number = portionAt(numbers, 4 * done, 4 * (end - done));
        for (int i = done; i < end; ++i, number += 4) {
            number[0] = number[2] = float(i);
            number[1] = number[3] = float(i + 1);
        }
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
    const QMutexLocker lock(&m_dataMutex);
    m_barDirty |= vertexDataDirty;
    const int pointsPerBar = barModeHasIndices(barShaderMode()) ? 4 : 1;
    const QVector<double> series = drawableBars() > 0 ? m_data : QVector<double>();
    prepare(m_points, pointsPerBar * series.size());
    const BlockMaxima maxima = BlockMaxima::of(series, [&](int start, int count) {
        float *points = portionAt(m_points, pointsPerBar * start, pointsPerBar * count);
        writeBarPoints(series.constData() + start, count, points, pointsPerBar);
    });
    m_plotterArea.setHeight(maxima.maximum()); // Deliberate: without a signal.
    keepMaxima(maxima);
}

void BarPlotter::buildIndices()
{
    const int mode = barShaderMode();
    const int count = drawableBars();
    if (!barModeHasIndices(mode) || m_indices.size() > 6 * count)
        return;
    m_barDirty |= indexDataDirty; // Deliberate: at equal length too.
    const int present = m_indices.size() / 6;
    appendBarIndices(m_indices, present, count);
    if (barModeHasVertexIds(mode))
        appendBarNumbers(m_vertexIds, present, count);
}
