// SPDX-License-Identifier: MIT
#include "plotters/BarPlotterDx.h"

#include <QOpenGLShaderProgram>

// called by the chart area: render thread, GUI thread blocked

void BarPlotterDx::sync_buffers()
{
    IPlotter::sync_buffers();
    m_shownEdges = m_data.isEmpty() ? BarEdges() : m_edges;
}

const QVector<SAttributeDefinition> BarPlotterDx::declareArributeArray()
{
    return {
        {QStringLiteral("vertex"), vertexDataDirty, QOpenGLBuffer::DynamicDraw, QOpenGLBuffer::VertexBuffer, GL_FLOAT,
         0, 3, 0, &m_dataMutex},
        {QStringLiteral("index"), indexDataDirty, QOpenGLBuffer::StaticDraw, QOpenGLBuffer::IndexBuffer,
         GL_UNSIGNED_INT, 0, 1, 0, &m_dataMutex},
    };
}

const SAttributePointer BarPlotterDx::_fetch_attribute_data(const int &attribute) const
{
    switch (attribute) {
    case 0:
        return {m_vertexArray.constData(), int(m_vertexArray.size()) * int(sizeof(SHResVertex))};
    case 1:
        return {m_indexArray.constData(), int(m_indexArray.size()) * int(sizeof(uint))};
    default:
        return {};
    }
}

// called by draw(): render thread, GUI thread running

void BarPlotterDx::__update_draw_index()
{
    const QRectF &extent = frame().plotterArea;
    const QRectF shown = extent.intersected(m_shownView);
    // From the plotter's left edge, where the corners are exact too, however far that lies from the origin.
    const SIndexRange range = m_shownEdges.barsBetween(shown.left() - extent.left(), shown.right() - extent.left());
    m_drawStart = range.first;
    m_drawEnd = range.end;
}

void BarPlotterDx::_fetch_render_layers(QVector<SRenderLayerDefinition> &layers, const QRectF &viewArea)
{
    constexpr int indicesPerBar = 6;
    m_shownView = viewArea;
    __update_draw_index();
    if (layers.isEmpty()) {
        SRenderLayerDefinition bars;
        bars.programName = QStringLiteral("hresbar");
        bars.mode = GL_TRIANGLES | drawWithElements;
        bars.attributes = {0};
        bars.indexBuffer = 1;
        layers.append(bars);
    }
    layers[0].first = m_drawStart * indicesPerBar * int(sizeof(uint));
    layers[0].count = frame().attached ? (m_drawEnd - m_drawStart) * indicesPerBar : 0;
}

void BarPlotterDx::_update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &)
{
    const double left = m_shownView.left() - frame().plotterArea.left();
    const float leftMost = float(left);
    program.setUniformValue("x_msb", leftMost);
    program.setUniformValue("x_lsb", float(left - double(leftMost)));
    program.setUniformValue("screen_dx", float(2.0 / m_shownView.width()));
    program.setUniformValue("screen_dy", float(m_shownView.height() * 0.5));
    program.setUniformValue("color", frame().color);
}
