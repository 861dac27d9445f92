// SPDX-License-Identifier: MIT
#include "plotters/AreaPlotter.h"

#include "plotters/SlotRange.h"

#include <QMatrix4x4>
#include <QOpenGLShaderProgram>
#include <QVector3D>

namespace {

enum Layer { FillLayer = 0, BorderLayer = 1 };

} // namespace

// called by the chart area: render thread, GUI thread blocked

void AreaPlotter::sync_buffers()
{
    IPlotter::sync_buffers();
    m_shown = {m_borderVertices.size(), m_borderWidth, m_borderColor, m_borderEnable,
               m_enableGradient ? m_gradientColor : m_color};
}

// called by draw(): render thread, GUI thread running

void AreaPlotter::_fetch_render_layers(QVector<SRenderLayerDefinition> &layers, const QRectF &viewArea)
{
    m_shownView = viewArea;
    if (layers.isEmpty() && frame().attached)
        appendLayers(layers);
    if (layers.isEmpty())
        return;
    // Deliberate: updated in place and never rebuilt, so the border keeps its first width, and mode 0 once it has it.
    const int start = firstSlot(frame().modArea, m_shown.points, viewArea);
    const int count = frame().attached ? endSlot(frame().modArea, m_shown.points, viewArea) - start : 0;
    layers[FillLayer].first = 2 * start;
    layers[FillLayer].count = 2 * count;
    layers[BorderLayer].first = start;
    layers[BorderLayer].count = count;
    if (!m_shown.borderEnable)
        layers[BorderLayer].mode = 0;
}

void AreaPlotter::appendLayers(QVector<SRenderLayerDefinition> &layers) const
{
    SRenderLayerDefinition fill;
    fill.order = FillLayer;
    fill.programName = QStringLiteral("area_gradient"); // Deliberate: for a flat fill too, with two equal colours.
    fill.mode = GL_TRIANGLE_STRIP | drawWithArrays;
    fill.attributes = {0};

    SRenderLayerDefinition border;
    border.order = BorderLayer;
    border.lineWidth = float(m_shown.borderWidth);
    border.programName = QStringLiteral("area");
    border.mode = GL_LINE_STRIP | drawWithArrays;
    border.attributes = {1};

    layers = {fill, border};
}

void AreaPlotter::_update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer)
{
    const double slotWidth = frame().plotterArea.width() / m_shown.points;
    QMatrix4x4 projection;
    projection.ortho(m_shownView);
    QMatrix4x4 model;
    model.translate(QVector3D(float(frame().plotterArea.left() + frame().xOffset), 0.0f, 0.0f));
    model.scale(QVector3D(float(slotWidth), 1.0f, 1.0f));
    program.setUniformValue("matrix", projection * model);
    if (layer.order != FillLayer) {
        program.setUniformValue("color", m_shown.borderColor);
    } else {
        program.setUniformValue("color_top", frame().color);
        program.setUniformValue("color_bot", m_shown.bottomColor);
    }
}
