// SPDX-License-Identifier: MIT
#include "chart/ChartRenderer.h"

#include "chart/IChartArea.h"
#include "plotters/ShaderProgramRegistry.h"

#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

#include <algorithm>

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

void ChartRenderer::prepareForPicture(QQuickWindow *window, QSGSimpleTextureNode *node, const QSize &size)
{
    m_picture.reset();
    const QOpenGLFramebufferObject *usual = framebufferObject();
    if (!usual || size.width() <= usual->width() || size.height() <= usual->height())
        return;
    GLint most = 0;
    QOpenGLContext::currentContext()->functions()->glGetIntegerv(GL_MAX_TEXTURE_SIZE, &most);
    if (std::max(size.width(), size.height()) > most)
        return; // the picture enlarges the usual one
    std::unique_ptr<QOpenGLFramebufferObject> larger(createFramebufferObject(size));
    if (!larger->isValid())
        return;
    const double lineScale = double(larger->width()) / usual->width();
    m_picture = std::make_unique<PictureFrame>(window, node, std::move(larger),
                                               [this, lineScale] { drawForPicture(lineScale); });
}

void ChartRenderer::drawForPicture(double lineScale)
{
    if (!m_item)
        return;
    QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
    GLfloat blendColor[4] = {};
    gl.glGetFloatv(GL_BLEND_COLOR, blendColor);
    gl.glBlendColor(m_blendColor[0], m_blendColor[1], m_blendColor[2], m_blendColor[3]); // as on the screen
    m_item->use([=](IChartArea &area) { area.setLineScale(lineScale); });
    render();
    m_item->use([](IChartArea &area) { area.setLineScale(1.0); });
    gl.glBlendColor(blendColor[0], blendColor[1], blendColor[2], blendColor[3]);
}

void ChartRenderer::render()
{
    QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
    if (m_picture)
        gl.glGetFloatv(GL_BLEND_COLOR, m_blendColor);
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
