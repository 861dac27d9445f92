// SPDX-License-Identifier: MIT
#include "plotters/OpaqueDrawing.h"

#include <QColor>
#include <QOpenGLFunctions>

namespace {

bool blendsLikeAChart(QOpenGLFunctions &gl)
{
    const auto is = [&gl](GLenum name, GLint wanted) {
        GLint value = 0;
        gl.glGetIntegerv(name, &value);
        return value == wanted;
    };
    return gl.glIsEnabled(GL_BLEND) && is(GL_BLEND_SRC_RGB, GL_SRC_ALPHA)
        && is(GL_BLEND_DST_RGB, GL_ONE_MINUS_SRC_ALPHA) && is(GL_BLEND_EQUATION_RGB, GL_FUNC_ADD)
        && is(GL_BLEND_SRC_ALPHA, GL_CONSTANT_ALPHA) && is(GL_BLEND_DST_ALPHA, GL_ONE)
        && is(GL_BLEND_EQUATION_ALPHA, GL_FUNC_ADD);
}

bool hasConstantAlphaZero(QOpenGLFunctions &gl)
{
    GLfloat constant[4] = {};
    gl.glGetFloatv(GL_BLEND_COLOR, constant);
    return constant[3] == 0.0f;
}

} // namespace

OpaqueDrawing::OpaqueDrawing(QOpenGLFunctions &gl, const QColor &color)
    : m_gl(gl),
      m_withoutBlending(color.alphaF() == 1.0 && blendsLikeAChart(gl) && hasConstantAlphaZero(gl))
{
    if (!m_withoutBlending)
        return;
    gl.glGetBooleanv(GL_COLOR_WRITEMASK, m_writtenChannels);
    gl.glDisable(GL_BLEND);
    gl.glColorMask(m_writtenChannels[0], m_writtenChannels[1], m_writtenChannels[2], GL_FALSE);
}

OpaqueDrawing::~OpaqueDrawing()
{
    if (!m_withoutBlending)
        return;
    m_gl.glEnable(GL_BLEND);
    m_gl.glColorMask(m_writtenChannels[0], m_writtenChannels[1], m_writtenChannels[2], m_writtenChannels[3]);
}
