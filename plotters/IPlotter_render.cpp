// SPDX-License-Identifier: MIT
#include "plotters/IPlotter.h"

#include "gl/CoreProfile.h"
#include "gl/Upload.h"
#include "plotters/ShaderProgramRegistry.h"

#include <QDebug>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <algorithm>

namespace {

/// A buffer goes with its context, even if another context gets the same address.
bool allCreated(const QVector<QOpenGLBuffer> &buffers)
{
    return std::all_of(buffers.cbegin(), buffers.cend(),
                       [](const QOpenGLBuffer &buffer) { return buffer.isCreated(); });
}

} // namespace

// called by the chart area: render thread, GUI thread blocked

void IPlotter::synchronize()
{
    sync_buffers();
    m_frame = {QOpenGLContext::currentContext(),
               m_visible,
               bool(m_chartArea),
               m_color,
               m_plotterArea,
               modArea(),
               m_xOffset,
               int(m_data.size())};
}

void IPlotter::sync_buffers()
{
    Q_ASSERT(QOpenGLContext::currentContext());
    if (!m_initialized)
        initialize();
    else if (!wasSynchronizedHere() || !allCreated(m_buffers))
        createBuffers();
    if (!m_visible)
        return;
    for (int number = 0; number < m_buffers.size(); ++number)
        uploadAttribute(number);
}

void IPlotter::initialize()
{
    m_initialized = true;
    m_attributes += declareArributeArray();
    __update_vertex();
    __update_index();
    createBuffers();
}

bool IPlotter::wasSynchronizedHere() const
{
    return m_frame.context == QOpenGLContext::currentContext();
}

void IPlotter::createBuffers()
{
    m_buffers.clear();
    for (const SAttributeDefinition &attribute : qAsConst(m_attributes)) {
        m_buffers.append(QOpenGLBuffer(attribute.bufferType));
        m_buffers.last().create();
        m_buffers.last().setUsagePattern(attribute.usagePattern);
        m_dirtyFlags |= attribute.updateFlag;
    }
}

void IPlotter::uploadAttribute(int number)
{
    const SAttributeDefinition &attribute = m_attributes.at(number);
    if (!(m_dirtyFlags & attribute.updateFlag))
        return;
    m_dirtyFlags &= ~attribute.updateFlag;
    QMutexLocker lock(attribute.mutex); // a null mutex locks nothing
    const SAttributePointer bytes = _fetch_attribute_data(number);
    upload(m_buffers[number], bytes.data, bytes.size);
}

const QVector<SAttributeDefinition> IPlotter::declareArributeArray()
{
    qWarning() << "None Attribute define for " << m_programName << " shader program";
    return {};
}

const SAttributePointer IPlotter::_fetch_attribute_data(const int &attribute) const
{
    qCritical() << "Fetch attribute data for " << attribute << " not implemented!";
    return {};
}

// called by the chart area: render thread, GUI thread running

void IPlotter::drawFrame(const QRectF &viewArea, double lineScale)
{
    m_lineScale = lineScale;
    if (m_frame.context && m_frame.context == QOpenGLContext::currentContext())
        draw(viewArea);
}

void IPlotter::draw(const QRectF &viewArea)
{
    Q_ASSERT(QOpenGLContext::currentContext());
    if (!m_frame.visible || !viewArea.intersects(m_frame.plotterArea))
        return;
    _fetch_render_layers(m_renderLayers, viewArea);
    std::sort(m_renderLayers.begin(), m_renderLayers.end(),
              [](const SRenderLayerDefinition &a, const SRenderLayerDefinition &b) { return a.order < b.order; });
    QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
    for (const SRenderLayerDefinition &layer : qAsConst(m_renderLayers))
        drawLayerDefinition(layer, gl);
    reportGLError(gl);
}

void IPlotter::drawLayerDefinition(const SRenderLayerDefinition &layer, QOpenGLFunctions &gl)
{
    if (layer.count < 1 || layer.mode == 0)
        return;
    const bool withElements = !(layer.mode & drawWithArrays) && (layer.mode & drawWithElements);
    if (withElements && !hasBuffer(layer.indexBuffer))
        return; // an element layer without indices has no index type
    QOpenGLShaderProgram *program = ShaderProgramRegistry::instance().program(layer.programName);
    if (!program)
        return;
    program->bind();
    _update_uniforms(*program, layer);
    if (layer.lineWidth > 0.0f)
        gl.glLineWidth(lineWidthForContext(float(layer.lineWidth * m_lineScale)));
    if (layer.draw)
        layer.draw(*program, gl);
    else
        drawBuffers(layer, *program, gl);
}

void IPlotter::drawBuffers(const SRenderLayerDefinition &layer, QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    bindAttributes(program, layer.attributes);
    const bool hasIndexBuffer = hasBuffer(layer.indexBuffer);
    if (hasIndexBuffer)
        m_buffers[layer.indexBuffer].bind();
    if (layer.mode & drawWithArrays)
        gl.glDrawArrays(layer.mode ^ drawWithArrays, layer.first, layer.count);
    else if (layer.mode & drawWithElements)
        gl.glDrawElements(layer.mode ^ drawWithElements, layer.count, m_attributes.at(layer.indexBuffer).dataType,
                          reinterpret_cast<const void *>(quintptr(layer.first)));
    if (hasIndexBuffer)
        m_buffers[layer.indexBuffer].release();
    releaseAttributes(program, layer.attributes);
}

bool IPlotter::hasBuffer(int number) const
{
    return number >= 0 && number < m_buffers.size();
}

void IPlotter::bindAttributes(QOpenGLShaderProgram &program, const QVector<int> &numbers)
{
    for (const int number : numbers) {
        if (!hasBuffer(number))
            continue;
        const SAttributeDefinition &attribute = m_attributes.at(number);
        const QByteArray name = attribute.name.toUtf8();
        m_buffers[number].bind();
        program.enableAttributeArray(name.constData());
        program.setAttributeBuffer(name.constData(), attribute.dataType, attribute.offset, attribute.tupleSize,
                                   attribute.stride);
    }
}

void IPlotter::releaseAttributes(QOpenGLShaderProgram &program, const QVector<int> &numbers)
{
    for (const int number : numbers) {
        if (!hasBuffer(number))
            continue;
        program.disableAttributeArray(m_attributes.at(number).name.toUtf8().constData());
        m_buffers[number].release();
    }
}

void IPlotter::reportGLError(QOpenGLFunctions &gl)
{
    const GLenum error = gl.glGetError();
    if (error != GL_NO_ERROR && error != m_reportedGLError)
        qWarning() << "WE GOT AN OPENGL ERROR CODE: " << error;
    m_reportedGLError = error;
}

void IPlotter::render_hook() {}

void IPlotter::_update_uniforms(QOpenGLShaderProgram &, const SRenderLayerDefinition &) {}

void IPlotter::_fetch_render_layers(QVector<SRenderLayerDefinition> &, const QRectF &) {}
