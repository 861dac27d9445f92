// SPDX-License-Identifier: MIT
#include "chart/ChartRenderer.h"

#include "chart/IChartArea.h"
#include "plotters/ShaderProgramRegistry.h"

#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

void ChartRenderer::synchronize(QQuickFramebufferObject *item)
{
    Q_ASSERT(QOpenGLContext::currentContext());
    if (!m_item)
        m_item = static_cast<IChartArea *>(item)->renderHandle();
    IChartArea *stored = nullptr;
    m_item->use([&](IChartArea &area) { stored = &area; });
    if (!stored)
        return;
    bindVertexArray();
    stored->syncPlotters(); // not inside use(), for it emits signals; the blocked GUI thread keeps the item alive
    releaseVertexArray();
}

QOpenGLFramebufferObject *ChartRenderer::createFramebufferObject(const QSize &size)
{
    QOpenGLFramebufferObjectFormat format;
    format.setAttachment(QOpenGLFramebufferObject::NoAttachment);
    format.setSamples(0);
    ShaderProgramRegistry &registry = ShaderProgramRegistry::instance();
    if (!registry.hasPrograms())
        registry.compileAllPrograms();
    return new QOpenGLFramebufferObject(size, format);
}

void ChartRenderer::render()
{
    QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
    gl.glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    gl.glClear(GL_COLOR_BUFFER_BIT);
    gl.glEnable(GL_BLEND);
    // Deliberate: the alpha channel follows the context's constant blend alpha, which nothing here sets.
    gl.glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_CONSTANT_ALPHA, GL_ONE);
    gl.glBlendEquation(GL_FUNC_ADD);
    if (!m_item)
        return;
    bindVertexArray();
    m_item->use([](IChartArea &area) { area.renderPlotters(); });
    releaseVertexArray();
}

void ChartRenderer::bindVertexArray()
{
    if (QOpenGLContext::currentContext()->format().profile() != QSurfaceFormat::CoreProfile)
        return;
    if (!m_vertexArray.isCreated())
        m_vertexArray.create();
    m_vertexArray.bind();
}

void ChartRenderer::releaseVertexArray()
{
    if (m_vertexArray.isCreated())
        m_vertexArray.release();
}
