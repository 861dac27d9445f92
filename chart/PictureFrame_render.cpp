// SPDX-License-Identifier: MIT
#include "chart/PictureFrame.h"

#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QQuickWindow>
#include <QSGSimpleTextureNode>

PictureFrame::PictureFrame(QQuickWindow *window, QSGSimpleTextureNode *node,
                           std::unique_ptr<QOpenGLFramebufferObject> framebuffer, Draw draw)
    : m_window(window),
      m_node(node),
      m_framebuffer(std::move(framebuffer)),
      m_draw(std::move(draw))
{
    // Qt takes pictures of items right after this signal.
    QObject::connect(
        window, &QQuickWindow::afterRenderPassRecording, &m_connections, [this] { drawOnce(); }, Qt::DirectConnection);
    // A frame may be drawn without being synchronised first.
    for (const auto next : {&QQuickWindow::beforeSynchronizing, &QQuickWindow::beforeRendering})
        QObject::connect(
            window, next, &m_connections, [this] { putBack(); }, Qt::DirectConnection);
}

PictureFrame::~PictureFrame()
{
    // The node deletes the texture that it shows right after the renderer, so it may not be left with ours.
    putBack();
}

void PictureFrame::drawOnce()
{
    if (!m_framebuffer || m_usual)
        return;
    QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
    GLint framebuffer = 0;
    GLint viewport[4] = {};
    gl.glGetIntegerv(GL_FRAMEBUFFER_BINDING, &framebuffer);
    gl.glGetIntegerv(GL_VIEWPORT, viewport);

    m_framebuffer->bind();
    gl.glViewport(0, 0, m_framebuffer->width(), m_framebuffer->height());
    m_draw();

    gl.glBindFramebuffer(GL_FRAMEBUFFER, GLuint(framebuffer));
    gl.glViewport(viewport[0], viewport[1], viewport[2], viewport[3]);
    m_window->resetOpenGLState();
    show();
}

void PictureFrame::show()
{
    const GLuint name = m_framebuffer->texture();
    m_texture.reset(m_window->createTextureFromNativeObject(
        QQuickWindow::NativeObjectTexture, &name, 0, m_framebuffer->size(), QQuickWindow::TextureHasAlphaChannel));
    m_usual = m_node->texture();
    m_node->setTexture(m_texture.get());
}

void PictureFrame::putBack()
{
    if (!m_usual)
        return;
    m_node->setTexture(m_usual);
    m_usual = nullptr;
    m_texture.reset();
    m_framebuffer.reset();
}
