// SPDX-License-Identifier: MIT
#include "gl/OpaqueDrawing.h"

#include "gl/SBlendState.h"

#include <QColor>
#include <QOpenGLFunctions>

namespace {

bool changesNoPixel(const SBlendState &state)
{
    return state.enabled && state.replacesColor() && state.keepsAlpha();
}

} // namespace

OpaqueDrawing::OpaqueDrawing(QOpenGLFunctions &gl, const QColor &color)
    : m_gl(gl),
      m_withoutBlending(color.alphaF() == 1.0 && changesNoPixel(SBlendState::current(gl)))
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
