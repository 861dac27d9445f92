// SPDX-License-Identifier: MIT
#include "plotters/AreaPlotter.h"

#include "common/Storage.h"
#include "geometry/Slots.h"
#include "geometry/Vertices.h"
#include "geometry/VisibleBars.h"
#include "gl/LineTarget.h"
#include "gl/PixelRow.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QVector3D>

#include <algorithm>

namespace {

enum Layer { FillLayer = 0, BorderLayer = 1 };

/// Segments of the border per draw call: their ends stay in the second-level cache on their way to the driver.
constexpr int portionOfSegments = 16'384;

void upload(QOpenGLBuffer &buffer, const QVector<SPointVertex> &vertices)
{
    buffer.bind();
    buffer.allocate(vertices.constData(), vertices.size() * int(sizeof(SPointVertex)));
    buffer.release();
}

} // namespace

// called by the chart area: render thread, GUI thread blocked

void AreaPlotter::sync_buffers()
{
    const bool kept = m_dirtyFlags == 0 && wasSynchronizedHere() && m_buffers.value(0).isCreated();
    if (!kept)
        m_uploaded = {}; // what the base uploads takes its place
    IPlotter::sync_buffers();
    m_shown = {int(isLong() ? m_data.size() : m_borderVertices.size()),
               m_borderWidth,
               m_borderColor,
               m_borderEnable,
               m_enableGradient ? m_gradientColor : m_color,
               isLong() ? m_data : QVector<double>(),
               m_finite};
}

const QVector<SAttributeDefinition> AreaPlotter::declareArributeArray()
{
    // Deliberate: the same name twice. Each layer binds one of the two, and both programs call their input so.
    const QString name = QStringLiteral("vertex");
    return {
        {name, vertexDataDirty, QOpenGLBuffer::DynamicDraw, QOpenGLBuffer::VertexBuffer, GL_FLOAT, 0, 2, 0,
         &m_dataMutex},
        {name, borderDataDirty, QOpenGLBuffer::DynamicDraw, QOpenGLBuffer::VertexBuffer, GL_FLOAT, 0, 2, 0,
         &m_dataMutex},
    };
}

const SAttributePointer AreaPlotter::_fetch_attribute_data(const int &attribute) const
{
    switch (attribute) {
    case 0:
        return {m_fillVertices.constData(), int(m_fillVertices.size()) * int(sizeof(SPointVertex))};
    case 1:
        return {m_borderVertices.constData(), int(m_borderVertices.size()) * int(sizeof(SPointVertex))};
    default:
        return {};
    }
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
    layers[BorderLayer].draw = nullptr;
    if (!m_shown.borderEnable)
        layers[BorderLayer].mode = 0;
    if (!m_shown.series.isEmpty() && count > 0)
        uploadParts(layers, {start, start + count});
}

// a long series: the buffers hold what the frame shows

void AreaPlotter::uploadParts(QVector<SRenderLayerDefinition> &layers, const SIndexRange &points)
{
    if (m_uploaded.series.constData() != m_shown.series.constData()) {
        m_uploaded = {};
        m_uploaded.series = m_shown.series;
    }
    const QVector<SIndexRange> spans = visibleSpans(points);
    if (spans != m_uploaded.spans) {
        m_uploaded.spans = spans;
        uploadFill(spans);
    }
    layers[FillLayer].first = 0;
    layers[FillLayer].count = m_fillCount;
    layers[BorderLayer].draw = [this, points](QOpenGLFunctions &gl) { drawBorder(borderView(points, gl), gl); };
}

QVector<SIndexRange> AreaPlotter::visibleSpans(const SIndexRange &points) const
{
    const SIndexRange all{points.first, std::max(points.end - 1, points.first)};
    if (!m_shown.finite) // where a corner at infinity leaves marks is up to the rasteriser
        return {all};
    const QMatrix4x4 placed = matrix();
    const SBarRow row{placed(0, 2) + placed(0, 3), placed(0, 0), all.first, all.end};
    const QVector<SIndexRange> visible =
        barsOnPixelCentres(row, currentPixelRow(*QOpenGLContext::currentContext()->functions()));
    return visible.isEmpty() ? QVector<SIndexRange>{all} : visible;
}

/// Strips with an even number of vertices each, tied by triangles without area: every other triangle keeps its order.
void AreaPlotter::uploadFill(const QVector<SIndexRange> &spans)
{
    int count = 0;
    for (const SIndexRange &span : spans)
        count += 2 * (span.end - span.first + 1) + 2;
    restart(m_partVertices, count);
    for (const SIndexRange &span : spans) {
        const int points = span.end - span.first + 1;
        const int tie = m_partVertices.isEmpty() ? 0 : 2;
        SPointVertex *vertex = portionAt(m_partVertices, m_partVertices.size(), 2 * points + tie);
        writeFillVertices(m_shown.series.constData() + span.first, span.first, points, vertex + tie);
        if (tie != 0) {
            vertex[0] = vertex[-1];
            vertex[1] = vertex[2];
        }
    }
    m_fillCount = m_partVertices.size();
    upload(m_buffers[0], m_partVertices);
}

AreaPlotter::SBorderView AreaPlotter::borderView(const SIndexRange &points, QOpenGLFunctions &gl) const
{
    const QMatrix4x4 placed = matrix();
    const SLinePlace place{placed(0, 2) + placed(0, 3), placed(0, 0), placed(1, 2) + placed(1, 3), placed(1, 1)};
    return {points, place, currentLineTarget(gl, m_shown.borderColor.alphaF())};
}

/// As single lines: every segment marks what it marks in a strip.
void AreaPlotter::drawBorder(const SBorderView &border, QOpenGLFunctions &gl)
{
    if (m_uploaded.border == border) {
        gl.glDrawArrays(GL_LINES, 0, m_borderCount);
        return;
    }
    m_borderCount = 0;
    int portions = 0;
    restart(m_partVertices, 2 * portionOfSegments);
    const auto drawPortion = [&] {
        m_borderCount = m_partVertices.size();
        if (m_borderCount == 0)
            return;
        upload(m_buffers[BorderLayer], m_partVertices);
        gl.glDrawArrays(GL_LINES, 0, m_borderCount);
        m_partVertices.resize(0);
        ++portions;
    };
    const double *values = m_shown.series.constData();
    visitMarkingSegments(values, border.points, border.place, border.target, [&](SIndexRange run) {
        while (run.end - run.first > 1) {
            const int room = portionOfSegments - m_partVertices.size() / 2;
            const int segments = std::min(run.end - run.first - 1, room);
            writeSegments(values + run.first, run.first, segments,
                          portionAt(m_partVertices, m_partVertices.size(), 2 * segments));
            run.first += segments;
            if (segments == room)
                drawPortion();
        }
    });
    drawPortion();
    m_uploaded.border = portions <= 1 ? border : SBorderView();
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
    program.setUniformValue("matrix", matrix());
    if (layer.order != FillLayer) {
        program.setUniformValue("color", m_shown.borderColor);
    } else {
        program.setUniformValue("color_top", frame().color);
        program.setUniformValue("color_bot", m_shown.bottomColor);
    }
}

/// From (number of the point, value) to normalised device coordinates.
QMatrix4x4 AreaPlotter::matrix() const
{
    const double slotWidth = frame().plotterArea.width() / m_shown.points;
    QMatrix4x4 projection;
    projection.ortho(m_shownView);
    QMatrix4x4 model;
    model.translate(QVector3D(float(frame().plotterArea.left() + frame().xOffset), 0.0f, 0.0f));
    model.scale(QVector3D(float(slotWidth), 1.0f, 1.0f));
    return projection * model;
}
