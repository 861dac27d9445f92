// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSize>

#include <functional>
#include <memory>

class QOpenGLFramebufferObject;
class QQuickWindow;
class QSGSimpleTextureNode;
class QSGTexture;

/// Draws a chart larger than its item, once, for a picture that is taken of the window's next frame. That happens after
/// the frame itself was drawn, and is undone before the next one, so that the screen keeps what it shows.
///
/// Owned by the chart's renderer. Render thread, in the window's OpenGL context.
class PictureFrame
{
public:
    /// Draws the chart into the framebuffer that is bound.
    using Draw = std::function<void()>;

    /// GUI thread blocked. `framebuffer` is of the size wanted.
    PictureFrame(QQuickWindow *window, QSGSimpleTextureNode *node,
                 std::unique_ptr<QOpenGLFramebufferObject> framebuffer, Draw draw);
    ~PictureFrame();
    PictureFrame(const PictureFrame &) = delete;
    PictureFrame &operator=(const PictureFrame &) = delete;

private:
    void drawOnce();
    void show();
    void putBack();

    QQuickWindow *m_window;
    QSGSimpleTextureNode *m_node;
    std::unique_ptr<QOpenGLFramebufferObject> m_framebuffer;
    Draw m_draw;
    std::unique_ptr<QSGTexture> m_texture; ///< of the framebuffer
    QSGTexture *m_usual = nullptr;         ///< what the node shows on the screen, while it shows the other one
    QObject m_connections;
};
