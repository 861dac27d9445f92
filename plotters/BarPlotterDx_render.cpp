// SPDX-License-Identifier: MIT
#include "plotters/BarPlotterDx.h"

#include "geometry/PlacedEdges.h"
#include "geometry/Vertices.h"
#include "geometry/VisibleElements.h"
#include "gl/PixelRow.h"
#include "plotters/HResBars.h"

#include <QOpenGLContext>
#include <QOpenGLShaderProgram>

// called by the chart area: render thread, GUI thread blocked

void BarPlotterDx::sync_buffers()
{
    if (!wasSynchronizedHere() || !m_bars->shownLong)
        m_bars->stream.restart();
    IPlotter::sync_buffers();
    m_bars->shownEdges = m_data.isEmpty() ? BarEdges() : m_bars->edges;
    m_bars->shownLong = isLong();
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
        return {m_bars->vertexArray.constData(), int(m_bars->vertexArray.size()) * int(sizeof(SHResVertex))};
    case 1:
        return {m_bars->indexArray.constData(), int(m_bars->indexArray.size()) * int(sizeof(uint))};
    default:
        return {};
    }
}

// called by draw(): render thread, GUI thread running

void BarPlotterDx::__update_draw_index()
{
    const QRectF &extent = frame().plotterArea;
    const QRectF shown = extent.intersected(m_bars->shownView);
    // From the plotter's left edge, where the corners are exact too, however far that lies from the origin.
    const SIndexRange range =
        m_bars->shownEdges.barsBetween(shown.left() - extent.left(), shown.right() - extent.left());
    m_bars->drawStart = range.first;
    m_bars->drawEnd = range.end;
}

void BarPlotterDx::_fetch_render_layers(QVector<SRenderLayerDefinition> &layers, const QRectF &viewArea)
{
    constexpr int indicesPerBar = 6;
    m_bars->shownView = viewArea;
    __update_draw_index();
    if (layers.isEmpty()) {
        SRenderLayerDefinition bars;
        bars.programName = QStringLiteral("hresbar");
        bars.mode = GL_TRIANGLES | drawWithElements;
        bars.attributes = {0};
        bars.indexBuffer = 1;
        layers.append(bars);
    }
    layers[0].first = m_bars->drawStart * indicesPerBar * int(sizeof(uint));
    layers[0].count = frame().attached ? (m_bars->drawEnd - m_bars->drawStart) * indicesPerBar : 0;
    layers[0].draw = nullptr;
    m_bars->origin = 0.0;
    if (!m_bars->shownLong)
        return;
    const SShownPart shown{viewArea.left() - frame().plotterArea.left(), viewArea.width()};
    m_bars->origin = originOfParts(shown, currentPixelRow(*QOpenGLContext::currentContext()->functions()));
    layers[0].draw = [this](auto &program, auto &gl) { drawLong(program, gl); };
}

void BarPlotterDx::drawLong(QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    const BarEdges &edges = m_bars->shownEdges;
    const SIndexRange bars{m_bars->drawStart, m_bars->drawEnd};
    const SShownPart shown{m_bars->shownView.left() - frame().plotterArea.left(), m_bars->shownView.width()};
    // Where a corner at infinity leaves marks is up to the rasteriser: draw them all.
    const QVector<SIndexRange> seen = edges.areValuesFinite()
        ? elementsOnPixelCentres(edges, bars, shown, currentPixelRow(gl))
        : QVector<SIndexRange>{bars};
    const auto write = [&](const SIndexRange &some, float *corners) {
        writeHResVertices(edges.pairs().constData() + 2 * some.first, edges.edge(some.first), m_bars->origin,
                          some.end - some.first, reinterpret_cast<SHResVertex *>(corners));
    };
    m_bars->stream.draw({edges.pairs(), seen, {m_bars->origin}}, write, program, gl);
}

void BarPlotterDx::_update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &)
{
    const double left = m_bars->shownView.left() - frame().plotterArea.left();
    const double distance = left - m_bars->origin;
    const float leftMost = float(distance);
    program.setUniformValue("x_msb", leftMost);
    program.setUniformValue("x_lsb", float(distance - double(leftMost)));
    program.setUniformValue("screen_dx", float(2.0 / m_bars->shownView.width()));
    program.setUniformValue("screen_dy", float(m_bars->shownView.height() * 0.5));
    program.setUniformValue("color", frame().color);
}
