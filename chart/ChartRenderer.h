// SPDX-License-Identifier: MIT
#pragma once

#include "chart/PictureFrame.h"
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
    /// To be called after each synchronize(), GUI thread blocked: `node` shows what this draws, and if `size` is larger
    /// than the framebuffer, pictures of the next frame show the chart drawn at that size.
    void prepareForPicture(QQuickWindow *window, QSGSimpleTextureNode *node, const QSize &size);

private:
    void drawForPicture(double lineScale);
    void bindVertexArray();
    void releaseVertexArray();

    std::shared_ptr<RenderHandle<IChartArea>> m_item; ///< the item may go at any moment
    QOpenGLVertexArrayObject m_vertexArray;           ///< created in a core profile only, which needs one
    std::unique_ptr<PictureFrame> m_picture;          ///< while a picture is taken
    float m_blendColor[4] = {};                       ///< that of the last frame, while a picture is taken
};
