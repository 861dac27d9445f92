// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QSize>
#include <QSurfaceFormat>
#include <QVector>

#include <functional>
#include <memory>

/// An OpenGL context without a scene, current while it lives, with a framebuffer to draw into: what a renderer's
/// functions find when the scene graph calls them.
class OffscreenGL
{
public:
    explicit OffscreenGL(const QSize &size = QSize(100, 100),
                         const QSurfaceFormat &format = QSurfaceFormat::defaultFormat());
    ~OffscreenGL();

    bool isValid() const { return m_context.isValid() && m_target && m_target->isValid(); }
    QOpenGLContext &context() { return m_context; }
    QOpenGLFunctions &gl() { return *m_context.functions(); }
    void makeCurrent();

    /// Clears to black, draws with the blend state of a chart's frame and returns the picture as the chart would show
    /// it: the first line of the framebuffer is on top.
    QImage picture(const std::function<void()> &draw);
    /// How many triangles (or lines, or points) draw() hands to the rasteriser.
    int primitives(const std::function<void()> &draw);
    /// The sizes in bytes of all buffers of the context, ascending.
    QVector<int> bufferSizes();

private:
    QOffscreenSurface m_surface;
    QOpenGLContext m_context;
    std::unique_ptr<QOpenGLFramebufferObject> m_target;
};
