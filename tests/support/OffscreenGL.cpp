// SPDX-License-Identifier: MIT
#include "tests/support/OffscreenGL.h"

#include <QOpenGLExtraFunctions>

#include <algorithm>

OffscreenGL::OffscreenGL(const QSize &size, const QSurfaceFormat &format)
{
    m_context.setFormat(format);
    m_context.create();
    m_surface.setFormat(m_context.format());
    m_surface.create();
    makeCurrent();
    m_target = std::make_unique<QOpenGLFramebufferObject>(size);
    m_target->bind();
    gl().glViewport(0, 0, size.width(), size.height());
}

OffscreenGL::~OffscreenGL()
{
    makeCurrent();
    m_target.reset();
}

void OffscreenGL::makeCurrent()
{
    m_context.makeCurrent(&m_surface);
    if (m_target)
        m_target->bind();
}

QImage OffscreenGL::picture(const std::function<void()> &draw)
{
    gl().glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    gl().glClear(GL_COLOR_BUFFER_BIT);
    gl().glEnable(GL_BLEND);
    gl().glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE); // stays opaque
    draw();
    return m_target->toImage(false);
}

int OffscreenGL::primitives(const std::function<void()> &draw)
{
    constexpr GLenum primitivesGenerated = 0x8C87;
    QOpenGLExtraFunctions &extra = *m_context.extraFunctions();
    GLuint query = 0;
    GLuint count = 0;
    extra.glGenQueries(1, &query);
    extra.glBeginQuery(primitivesGenerated, query);
    draw();
    extra.glEndQuery(primitivesGenerated);
    extra.glGetQueryObjectuiv(query, GL_QUERY_RESULT, &count);
    extra.glDeleteQueries(1, &query);
    return int(count);
}

QVector<int> OffscreenGL::bufferSizes()
{
    constexpr GLuint moreThanAnyTestMakes = 1000;
    QVector<int> sizes;
    for (GLuint name = 1; name < moreThanAnyTestMakes; ++name) {
        if (!gl().glIsBuffer(name))
            continue;
        GLint size = 0;
        gl().glBindBuffer(GL_ARRAY_BUFFER, name);
        gl().glGetBufferParameteriv(GL_ARRAY_BUFFER, GL_BUFFER_SIZE, &size);
        gl().glBindBuffer(GL_ARRAY_BUFFER, 0);
        sizes.append(size);
    }
    std::sort(sizes.begin(), sizes.end());
    return sizes;
}
