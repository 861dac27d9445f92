// SPDX-License-Identifier: MIT
#include "plotters/BarPlotter.h"

#include "common/Index.h"
#include "geometry/BarShaderMode.h"
#include "geometry/Vertices.h"
#include "geometry/VisibleElements.h"
#include "gl/BarProgram.h"
#include "gl/OpaqueDrawing.h"
#include "gl/PixelRow.h"
#include "gl/Upload.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <algorithm>
#include <cmath>

namespace {

/// The bars' extent as far as a view can tell: a series without a positive value has an area of height 0, which a
/// rectangle test finds empty, and bars below it.
QRectF drawnExtent(const QRectF &modArea, const QRectF &view)
{
    if (modArea.height() != 0.0)
        return modArea;
    return {modArea.x(), view.y(), modArea.width(), view.height()};
}

void setPlace(QOpenGLShaderProgram &program, float start, float step)
{
    program.setUniformValue("screen_dx", step);
    program.setUniformValue("screen_x", start);
}

} // namespace

// called by the chart area: render thread, GUI thread blocked

void BarPlotter::sync_buffers()
{
    LinkedProgram &shared = barProgram();
    const bool linked = shared.isLinked() || constructBarProgram(shared);
    if (!m_glReady) {
        m_glReady = true;
        buildArrays();
        createBuffers();
    } else if (!wasSynchronizedHere() || !m_pointBuffer.isCreated()) {
        createBuffers();
    }
    if (!m_visible || !linked)
        return;
    shared.program().bind();
    if (m_barDirty & vertexDataDirty)
        uploadPoints();
    if (m_barDirty & indexDataDirty)
        uploadIndices();
}

void BarPlotter::createBuffers()
{
    m_barDirty |= vertexDataDirty | indexDataDirty;
    m_stream.restart();
    m_pointBuffer = QOpenGLBuffer(QOpenGLBuffer::VertexBuffer);
    m_pointBuffer.setUsagePattern(QOpenGLBuffer::DynamicDraw);
    m_pointBuffer.create();
    const int mode = barShaderMode;
    if (barModeHasIndices(mode)) {
        m_indexBuffer = QOpenGLBuffer(QOpenGLBuffer::IndexBuffer);
        m_indexBuffer.setUsagePattern(QOpenGLBuffer::StaticDraw);
        m_indexBuffer.create();
    }
    if (barModeHasVertexIds(mode)) {
        m_vertexIdBuffer = QOpenGLBuffer(QOpenGLBuffer::VertexBuffer);
        m_vertexIdBuffer.setUsagePattern(QOpenGLBuffer::StaticDraw);
        m_vertexIdBuffer.create();
    }
}

void BarPlotter::uploadPoints()
{
    m_barDirty &= ~vertexDataDirty;
    const QMutexLocker lock(&m_dataMutex);
    m_barCount = drawableBars();
    m_shownFinite = m_finite;
    m_shownSeries = isLong() ? m_data : QVector<double>();
    if (!isLong())
        m_stream.restart(); // it would keep the series that it drew last
    upload(m_pointBuffer, m_points);
}

void BarPlotter::uploadIndices()
{
    m_barDirty &= ~indexDataDirty;
    upload(m_indexBuffer, m_indices);
    if (barModeHasVertexIds(barShaderMode))
        upload(m_vertexIdBuffer, m_vertexIds);
}

// called by the chart area: render thread, GUI thread running

void BarPlotter::draw(const QRectF &viewArea)
{
    Q_ASSERT(QOpenGLContext::currentContext());
    const QRectF extent = drawnExtent(frame().modArea, viewArea);
    if (!frame().visible || m_barCount == 0 || !extent.intersects(viewArea))
        return;
    const double barWidth = extent.width() / m_barCount;
    const QRectF shown = extent.intersected(viewArea);
    const int first = std::max(toIndex(std::floor((shown.left() - extent.left()) / barWidth)), 0);
    const int last = std::min(m_barCount, toIndex(std::ceil((shown.right() - extent.left()) / barWidth)));
    LinkedProgram &shared = barProgram();
    if (last <= first || !shared.isLinked())
        return;

    QOpenGLShaderProgram &program = shared.program();
    program.bind();
    program.setUniformValue("bar_color", frame().color);
    const SEdgeRow edges{2.0 * ((extent.left() - viewArea.left()) / viewArea.width()) - 1.0,
                         2.0 * (barWidth / viewArea.width())};
    setPlace(program, float(edges.start), float(edges.step));
    program.setUniformValue("screen_dy", float(viewArea.height() * 0.5));

    QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
    const OpaqueDrawing opaque(gl, frame().color);
    if (m_shownSeries.isEmpty())
        drawWhole({first, last}, program, gl);
    else
        drawLong({first, last}, edges, program, gl);
}

void BarPlotter::drawWhole(const SIndexRange &bars, QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    const int mode = barShaderMode;
    const int count = bars.end - bars.first;
    bindAttributes(program, mode);
    if (barModeHasIndices(mode)) {
        constexpr int indicesPerBar = 6;
        m_indexBuffer.bind();
        gl.glDrawElements(GL_TRIANGLES, count * indicesPerBar, GL_UNSIGNED_INT,
                          reinterpret_cast<const void *>(quintptr(bars.first) * indicesPerBar * sizeof(uint)));
        m_indexBuffer.release();
    } else {
        gl.glDrawArrays(GL_POINTS, bars.first, count);
    }
    reportGLError(gl);
    releaseAttributes(program, mode);
}

void BarPlotter::drawLong(const SIndexRange &bars, const SEdgeRow &edges, QOpenGLShaderProgram &program,
                          QOpenGLFunctions &gl)
{
    const SPixelRow pixels = currentPixelRow(gl);
    const SPlacedEdges placed = placedEdges(edges, float(edges.start), float(edges.step), bars, pixels);
    setPlace(program, placed.start, placed.step);
    // Where a corner at infinity leaves marks is up to the rasteriser: draw them all.
    const QVector<SIndexRange> seen =
        m_shownFinite ? elementsOnPixelCentres(placed, bars, pixels) : QVector<SIndexRange>{bars};
    const double *values = m_shownSeries.constData();
    const auto write = [&](const SIndexRange &some, float *corners) { writeBars(values, some, placed, corners); };
    m_stream.draw({m_shownSeries, seen, {placed.origin, placed.unit}}, write, program, gl);
    reportGLError(gl);
}

void BarPlotter::bindAttributes(QOpenGLShaderProgram &program, int mode)
{
    m_pointBuffer.bind();
    program.enableAttributeArray("point");
    program.setAttributeBuffer("point", GL_FLOAT, 0, 1, 0);
    if (!barModeHasVertexIds(mode))
        return;
    m_vertexIdBuffer.bind();
    program.enableAttributeArray("vertexID");
    program.setAttributeBuffer("vertexID", GL_FLOAT, 0, 1, 0);
}

void BarPlotter::releaseAttributes(QOpenGLShaderProgram &program, int mode)
{
    program.disableAttributeArray("point");
    m_pointBuffer.release();
    if (!barModeHasVertexIds(mode))
        return;
    program.disableAttributeArray("vertexID");
    m_vertexIdBuffer.release();
}
