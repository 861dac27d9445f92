// SPDX-License-Identifier: MIT
#include "plotters/BarDecorator.h"

#include "gl/DecoratorShaders.h"
#include "gl/LinkedProgram.h"
#include "gl/PerContext.h"
#include "gl/Upload.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QSurfaceFormat>

namespace {

/// The highlight program of a context, shared by all decorators.
struct SDecoratorProgram
{
    LinkedProgram linked;
    DecoratorDialect dialect = DecoratorDialect::NotDrawn;

    bool construct()
    {
        const QOpenGLContext &context = *QOpenGLContext::currentContext();
        const QSurfaceFormat format = context.format();
        dialect = decoratorDialect(format.majorVersion(), format.minorVersion(), context.isOpenGLES());
        return linked.ensureLinked(decoratorShaderSources(dialect), "BarDecorator");
    }
};

SDecoratorProgram &decoratorProgram()
{
    static auto *const programs = new PerContext<SDecoratorProgram>;
    return programs->current();
}

constexpr int pointLocation = 0;
constexpr int timeLocation = 1;

} // namespace

// called by the chart area: render thread, GUI thread blocked

void BarDecorator::sync_buffers()
{
    Q_ASSERT(QOpenGLContext::currentContext());
    SDecoratorProgram &shared = decoratorProgram();
    const bool linked = shared.linked.isLinked() || shared.construct();
    if (!m_buffersCreated || !wasSynchronizedHere() || !m_pointBuffer.isCreated())
        createBuffers();
    if (!m_visible || !linked)
        return;
    shared.linked.program().bind();
    uploadArrays();
    m_shownRects.clear();
    for (const SHighlight &highlight : m_trail.highlights())
        m_shownRects.append(highlight.rect);
    if (!m_trail.isFading())
        m_settling.invalidate();
}

void BarDecorator::createBuffers()
{
    m_buffersCreated = true;
    m_uploadFlags |= vertexDataDirty | indexDataDirty;
    m_pointBuffer = QOpenGLBuffer(QOpenGLBuffer::VertexBuffer);
    m_timeBuffer = QOpenGLBuffer(QOpenGLBuffer::VertexBuffer);
    m_indexBuffer = QOpenGLBuffer(QOpenGLBuffer::IndexBuffer);
    m_pointBuffer.setUsagePattern(QOpenGLBuffer::DynamicDraw);
    m_timeBuffer.setUsagePattern(QOpenGLBuffer::DynamicDraw);
    m_indexBuffer.setUsagePattern(QOpenGLBuffer::StaticDraw);
    m_pointBuffer.create();
    m_timeBuffer.create();
    m_indexBuffer.create();
    m_points.clear();
}

void BarDecorator::uploadArrays()
{
    if (m_uploadFlags & vertexDataDirty) {
        m_uploadFlags &= ~vertexDataDirty;
        upload(m_timeBuffer, m_trail.fadeTimes());
    }
    if (m_uploadFlags & indexDataDirty) {
        m_uploadFlags &= ~indexDataDirty;
        upload(m_indexBuffer, m_indices);
    }
}

// called by the chart area: render thread, GUI thread running

void BarDecorator::uploadPoints(const QRectF &viewArea)
{
    // Here and not with the other arrays: corners are in clip space, and the view is fitted after the upload.
    const auto clipX = [&](double x) { return float(2.0 * ((x - viewArea.left()) / viewArea.width()) - 1.0); };
    QVector<QVector2D> points;
    for (const QRectF &rect : qAsConst(m_shownRects)) {
        points << QVector2D(clipX(rect.left()), float(rect.top())) << QVector2D(clipX(rect.right()), float(rect.top()))
               << QVector2D(clipX(rect.left()), float(rect.bottom()))
               << QVector2D(clipX(rect.right()), float(rect.bottom()));
    }
    if (points != m_points) {
        m_points = points;
        upload(m_pointBuffer, m_points);
    }
    m_pointBuffer.bind();
}

void BarDecorator::draw(const QRectF &viewArea)
{
    Q_ASSERT(QOpenGLContext::currentContext());
    SDecoratorProgram &shared = decoratorProgram();
    const bool isDrawn = shared.linked.isLinked() && shared.dialect != DecoratorDialect::NotDrawn;
    if (!frame().visible || !frame().attached || m_shownRects.isEmpty() || !isDrawn)
        return;
    QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
    gl.glBlendFunc(GL_SRC_ALPHA, GL_DST_ALPHA); // Deliberate: stays for what is drawn later in this frame.

    QOpenGLShaderProgram &program = shared.linked.program();
    program.bind();
    program.setUniformValue("screen_dy", float(2.0 / viewArea.height()));
    program.setUniformValue("color", frame().color);
    program.setUniformValue("curr_time", HighlightTrail::clock(QTime::currentTime()));

    const bool byLocation = shared.dialect == DecoratorDialect::ByLocation;
    const int point = byLocation ? pointLocation : program.attributeLocation("point");
    const int time = byLocation ? timeLocation : program.attributeLocation("time");
    uploadPoints(viewArea);
    program.enableAttributeArray(point);
    program.setAttributeBuffer(point, GL_FLOAT, 0, 2, 0);
    m_timeBuffer.bind();
    program.enableAttributeArray(time);
    program.setAttributeBuffer(time, GL_FLOAT, 0, 1, 0);

    m_indexBuffer.bind();
    gl.glDrawElements(GL_TRIANGLES, m_shownRects.size() * 6, GL_UNSIGNED_INT, nullptr);
    m_indexBuffer.release();
    reportGLError(gl);
    program.disableAttributeArray("point"); // Deliberate: "time" stays enabled.
    m_pointBuffer.release();
}
