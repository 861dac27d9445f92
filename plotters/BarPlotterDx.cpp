// SPDX-License-Identifier: MIT
#include "plotters/BarPlotterDx.h"

#include "common/Compare.h"
#include "common/Index.h"
#include "plotters/SlotVertices.h"

#include <QDebug>

#include <algorithm>

namespace {

/// How much of a series has room in the vertex array: all of it or nothing.
int drawableNumbers(const QVector<double> &data)
{
    return data.size() <= BarPlotterDx::maximumNumbers ? data.size() : 0;
}

} // namespace

BarPlotterDx::BarPlotterDx(QObject *parent) : IPlotter1D(parent) {}

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
    int index = -1;
    double rightEdge = m_plotterArea.left();
    while (x > rightEdge && index < count - 1) // widths may not add up to the width, or be no numbers at all
        rightEdge += m_data.at(2 * ++index);
    return index;
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
    double maximum = 0.0;
    const int end = __end_index(shared);
    for (int bar = __start_index(shared); bar < end; ++bar) {
        if (m_data.at(2 * bar + 1) > maximum)
            maximum = m_data.at(2 * bar + 1);
    }
    return maximum;
}

const QRectF BarPlotterDx::area_at(const QPointF &point) const
{
    const int index = _index_at(point.x());
    if (index < 0 || index >= barCount())
        return {};
    const double width = m_plotterArea.width() / m_data.size();
    return {m_plotterArea.left() + index * width, 0.0, width, m_data.at(2 * index + 1)};
}

SInfoPoint BarPlotterDx::mouse_hovering(const QPointF &point) const
{
    SInfoPoint info;
    info.plotter = const_cast<BarPlotterDx *>(this);
    const int index = _index_at(point.x());
    if (index < 0 || index >= barCount())
        return info;
    info.index = index;
    const double value = m_data.at(2 * index + 1);
    if (!(point.y() <= value)) // above the value; a NaN on either side is a miss
        return info;
    const double left = m_plotterArea.left() + __dx_from_to(0, index - 1);
    info.area = QRectF(left, 0.0, m_data.at(2 * index), value);
    info.valid = true;
    return info;
}

double BarPlotterDx::__dx_from_to(int from, int to) const
{
    double sum = 0.0;
    for (int bar = from; bar <= to; ++bar)
        sum += m_data.at(2 * bar);
    return sum;
}

// arrays: GUI thread, or render thread while the GUI thread is blocked

const QVector<SAttributeDefinition> BarPlotterDx::declareArributeArray()
{
    return {
        {QStringLiteral("vertex"), vertexDataDirty, QOpenGLBuffer::DynamicDraw, QOpenGLBuffer::VertexBuffer, GL_FLOAT,
         0, 3, 0, &m_dataMutex},
        {QStringLiteral("index"), indexDataDirty, QOpenGLBuffer::StaticDraw, QOpenGLBuffer::IndexBuffer,
         GL_UNSIGNED_INT, 0, 1, 0, &m_dataMutex},
    };
}

bool BarPlotterDx::__update_vertex()
{
    if (m_data.isEmpty())
        return false;
    if (m_data.size() > maximumNumbers)
        qWarning() << "BarPlotterDx draws at most" << maximumNumbers << "numbers, not" << m_data.size();
    const int count = drawableNumbers(m_data);
    if (m_vertexArray.size() != 4 * count) {
        m_vertexArray.clear();
        m_vertexArray.resize(4 * count);
    } // at equal length the half that is never drawn is zero already

    double maximum = count > 1 ? m_data.at(1) : 0.0; // the first value, not 0: all may be negative
    SHResVertex *corner = m_vertexArray.data();
    float most = 0.0f; // the parts of the left edge, which is the right edge of the bar before
    float least = 0.0f;
    m_edges = BarEdges::of(count > 0 ? m_data : QVector<double>(), [&](double right, double value) {
        const float rightMost = float(right);
        const float rightLeast = float(right - double(rightMost));
        corner[0] = {most, least, 0.0f};
        corner[1] = {rightMost, rightLeast, 0.0f};
        corner[2] = {most, least, float(value)};
        corner[3] = {rightMost, rightLeast, float(value)};
        corner += 4;
        most = rightMost;
        least = rightLeast;
        maximum = value > maximum ? value : maximum; // a NaN never is
    });
    m_plotterArea.setHeight(maximum); // Deliberate: without signals.
    m_plotterArea.setWidth(m_edges.total());
    return true;
}

bool BarPlotterDx::__update_index()
{
    const int count = drawableNumbers(m_data);
    if (m_indexArray.size() > 6 * count)
        return false;
    appendBarIndices(m_indexArray, m_indexArray.size() / 6, count); // those present do not depend on the values
    return true; // Deliberate: at equal length too.
}

const SAttributePointer BarPlotterDx::_fetch_attribute_data(const int &attribute) const
{
    switch (attribute) {
    case 0:
        return {m_vertexArray.constData(), m_vertexArray.size() * int(sizeof(SHResVertex))};
    case 1:
        return {m_indexArray.constData(), m_indexArray.size() * int(sizeof(uint))};
    default:
        return {};
    }
}
