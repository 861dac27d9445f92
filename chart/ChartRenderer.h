// SPDX-License-Identifier: MIT
#pragma once

#include "common/RenderHandle.h"

#include <QOpenGLVertexArrayObject>
#include <QQuickFramebufferObject>

#include <memory>

class IChartArea;

/// Draws a chart item into a framebuffer. Owned by the scene graph; render thread, in the item's OpenGL context.
class ChartRenderer : public QQuickFramebufferObject::Renderer
{
public:
    void render() override;
    /// Without depth, stencil or multisampling. Compiles the shared shader programs if this context has none.
    QOpenGLFramebufferObject *createFramebufferObject(const QSize &size) override;
    /// GUI thread blocked. The first item stays the renderer's.
    void synchronize(QQuickFramebufferObject *item) override;

private:
    void bindVertexArray();
    void releaseVertexArray();

    std::shared_ptr<RenderHandle<IChartArea>> m_item; ///< the item may go at any moment
    QOpenGLVertexArrayObject m_vertexArray;           ///< created in a core profile only, which needs one
};
