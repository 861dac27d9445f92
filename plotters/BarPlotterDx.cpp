// SPDX-License-Identifier: MIT
#include "plotters/BarPlotterDx.h"

#include "common/Compare.h"
#include "common/Index.h"
#include "common/Storage.h"
#include "geometry/Vertices.h"
#include "plotters/HResBars.h"

#include <QDebug>

#include <algorithm>

namespace {

/// How much of a series has room in the vertex array: all of it or nothing.
int drawableNumbers(const QVector<double> &data)
{
    return data.size() <= BarPlotterDx::maximumNumbers ? data.size() : 0;
}

} // namespace

BarPlotterDx::BarPlotterDx(QObject *parent) : IPlotter1D(parent), m_bars(std::make_unique<HResBars>()) {}

BarPlotterDx::~BarPlotterDx()
{
    withdraw();
}

void BarPlotterDx::setPlotterArea(const QRectF &area)
{
    storePlotterArea(QRectF(area.topLeft(), m_plotterArea.size()));
}

// queries

int BarPlotterDx::_index_at(double x) const
{
    const int count = barCount();
    if (count == 0 || !containsOnAxis(m_plotterArea, x))
        return -1;
    if (fuzzyEqual(x, m_plotterArea.left()))
        return 0;
    if (fuzzyEqual(x, m_plotterArea.right()))
        return count;
    return edgesFrom(m_plotterArea.left()).edgeAtOrBeyond(x) - 1;
}

const BarEdges &BarPlotterDx::edgesFrom(double start) const
{
    const double position = start + 0.0; // one zero of the two
    if (m_bars->edges.isOf(m_data, position))
        return m_bars->edges;
    if (!m_bars->queryEdges.isOf(m_data, position))
        m_bars->queryEdges = BarEdges::of(m_data, position);
    return m_bars->queryEdges;
}

int BarPlotterDx::__start_index(const QRectF &area) const
{
    return std::max(_index_at(area.left()) - 1, 0);
}

int BarPlotterDx::__end_index(const QRectF &area) const
{
    return _index_at(area.right());
}

double BarPlotterDx::max_in(const QRectF &area) const
{
    const QRectF shared = area.intersected(m_plotterArea);
    if (shared.isEmpty() || m_data.isEmpty())
        return 0.0;
    const int start = __start_index(shared);
    const int end = std::min(__end_index(shared), barCount());
    return start < end ? edgesFrom(m_plotterArea.left()).maximumIn(start, end) : 0.0;
}

const QRectF BarPlotterDx::area_at(const QPointF &point) const
{
    const int index = _index_at(point.x());
    if (index < 0 || index >= barCount())
        return {};
    const double width = m_plotterArea.width() / m_data.size();
    return {m_plotterArea.left() + index * width, 0.0, width, barValue(index)};
}

SInfoPoint BarPlotterDx::mouse_hovering(const QPointF &point) const
{
    SInfoPoint info;
    info.plotter = const_cast<BarPlotterDx *>(this);
    const int index = _index_at(point.x());
    if (index < 0 || index >= barCount())
        return info;
    info.index = index;
    const double value = barValue(index);
    if (point.y() > value) // Deliberate: a hit on a NaN, which nothing is greater than.
        return info;
    const double left = m_plotterArea.left() + __dx_from_to(0, index - 1);
    info.area = QRectF(left, 0.0, barWidth(index), value);
    info.valid = true;
    return info;
}

double BarPlotterDx::__dx_from_to(int from, int to) const
{
    if (from == 0)
        return edgesFrom(0.0).edge(to + 1);
    double sum = 0.0;
    for (int bar = from; bar <= to; ++bar)
        sum += barWidth(bar);
    return sum;
}

// arrays: GUI thread, or render thread while the GUI thread is blocked

bool BarPlotterDx::isLong() const
{
    return drawableNumbers(m_data) > wholeSeries;
}

bool BarPlotterDx::__update_vertex()
{
    if (m_data.isEmpty())
        return false;
    if (m_data.size() > maximumNumbers)
        qWarning() << "BarPlotterDx draws at most" << maximumNumbers << "numbers, not" << m_data.size();
    m_bars->queryEdges = BarEdges(); // would keep the old series
    m_bars->edges = BarEdges::of(drawableNumbers(m_data) > 0 ? m_data : QVector<double>(), 0.0);
    m_plotterArea.setHeight(m_bars->edges.maximum()); // Deliberate: without signals.
    m_plotterArea.setWidth(m_bars->edges.total());
    const int count = isLong() ? 0 : drawableNumbers(m_data);
    QVector<SHResVertex> &corners = m_bars->vertexArray;
    if (corners.size() != 4 * count)
        restart(corners, 4 * count);
    writeHResVertices(m_data.constData(), 0.0, 0.0, count / 2, portionAt(corners, 0, 4 * (count / 2)));
    corners.resize(4 * count); // zeros; at equal length they are there
    return true;
}

bool BarPlotterDx::__update_index()
{
    const int count = drawableNumbers(m_data);
    QVector<uint> &indices = m_bars->indexArray;
    if (!isLong() && indices.size() < 6 * count) {
        indices.reserve(6 * count);
        appendBarIndices(indices, indices.size() / 6, count); // those present do not depend on the values
        m_dirtyFlags |= indexDataDirty; // also where a longer series, which needed none, was there before
    }
    if (m_bars->indexedNumbers > count)
        return false;
    m_bars->indexedNumbers = count;
    return true; // Deliberate: at equal length too.
}
