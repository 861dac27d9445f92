// SPDX-License-Identifier: MIT
#include "plotters/AreaPlotter.h"

#include "geometry/Slots.h"
#include "geometry/Vertices.h"
#include "geometry/VisibleElements.h"
#include "gl/LinePixels.h"
#include "gl/PixelRow.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QVector3D>
#include <QVector4D>

#include <algorithm>

namespace {

enum Layer { FillLayer = 0, BorderLayer = 1 };

} // namespace

// called by the chart area: render thread, GUI thread blocked

void AreaPlotter::sync_buffers()
{
    if (!isLong() || !wasSynchronizedHere() || !m_buffers.value(0).isCreated()) {
        m_fillStream.restart();
        m_segmentStream.restart();
        m_columnStream.restart();
    }
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
    if (!m_shown.borderEnable)
        layers[BorderLayer].mode = 0;
    layers[FillLayer].draw = nullptr;
    layers[BorderLayer].draw = nullptr;
    if (m_shown.series.isEmpty())
        return;
    const SIndexRange points{start, start + count};
    placeLong(points);
    layers[FillLayer].draw = [this, points](auto &program, auto &gl) { drawFill(points, program, gl); };
    layers[BorderLayer].draw = [this, points](auto &program, auto &gl) { drawBorder(points, program, gl); };
}

// a long series: the layers say what they say of a short one, and only what is seen is uploaded

void AreaPlotter::placeLong(const SIndexRange &points)
{
    const QMatrix4x4 placed = matrix();
    const SPixelRow pixels = currentPixelRow(*QOpenGLContext::currentContext()->functions());
    m_placed = placedEdges(pointRow(), placed(0, 2) + placed(0, 3), placed(0, 0), points, pixels);
}

void AreaPlotter::drawFill(const SIndexRange &points, QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    const SIndexRange spans{points.first, std::max(points.end - 1, points.first)};
    // Where a corner at infinity leaves marks is up to the rasteriser: draw them all.
    const QVector<SIndexRange> seen =
        m_shown.finite ? elementsOnPixelCentres(m_placed, spans, currentPixelRow(gl)) : QVector<SIndexRange>{spans};
    const auto write = [this](const SIndexRange &some, float *corners) {
        writeSpans(m_shown.series.constData(), some, m_placed, corners);
    };
    m_fillStream.draw({m_shown.series, seen, {m_placed.origin, m_placed.unit}}, write, program, gl);
}

void AreaPlotter::drawBorder(const SIndexRange &points, QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    const QMatrix4x4 matrix = placedMatrix();
    const SLinePlace place{m_placed.row(), double(matrix(1, 2) + matrix(1, 3)), double(matrix(1, 1))};
    const SLinePixels pixels = currentLinePixels(gl);
    if (m_shown.finite && isDenseLine(points, place, pixels))
        drawColumns(points, place, pixels, program, gl);
    else
        drawSegments(points, program, gl);
}

/// Each column of pixels once, so that a half transparent border is as transparent everywhere.
void AreaPlotter::drawColumns(const SIndexRange &points, const SLinePlace &place, const SLinePixels &pixels,
                              QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    QVector<SRows> rows;
    const auto choose = [&](const ElementStream::Take &take) {
        rows = denseLineRows(m_shown.series.constData(), points, place, pixels);
        take({0, int(rows.size())});
    };
    const auto write = [&](const SIndexRange &columns, float *corners) {
        writeColumns(rows, columns, pixels, corners);
    };
    const QVector<double> decides{
        place.x.start,           place.x.step, place.yStart, place.yStep, double(pixels.width), double(pixels.height),
        double(pixels.lineWidth)};
    program.setUniformValue("matrix", QMatrix4x4());
    m_columnStream.draw({m_shown.series, {points}, decides}, choose, write, program, gl);
}

/// As single lines: every segment marks what it marks in a strip.
void AreaPlotter::drawSegments(const SIndexRange &points, QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    const SIndexRange segments{points.first, std::max(points.end - 1, points.first)};
    const auto write = [this](const SIndexRange &some, float *ends) {
        writeSegments(m_shown.series.constData(), some, m_placed, ends);
    };
    m_segmentStream.draw({m_shown.series, {segments}, {m_placed.origin, m_placed.unit}}, write, program, gl);
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
    program.setUniformValue("matrix", m_shown.series.isEmpty() ? matrix() : placedMatrix());
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

/// The same for the points' x alone, in exact arithmetic.
SEdgeRow AreaPlotter::pointRow() const
{
    const double left = frame().plotterArea.left() + frame().xOffset;
    const double slotWidth = frame().plotterArea.width() / m_shown.points;
    return {2.0 * ((left - m_shownView.left()) / m_shownView.width()) - 1.0, 2.0 * (slotWidth / m_shownView.width())};
}

/// From (corner, value) to normalised device coordinates.
QMatrix4x4 AreaPlotter::placedMatrix() const
{
    QMatrix4x4 projection;
    projection.ortho(QRectF(0.0, m_shownView.y(), 1.0, m_shownView.height()));
    projection.setRow(0, QVector4D(m_placed.step, 0.0f, 0.0f, m_placed.start));
    return projection;
}
