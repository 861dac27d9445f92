// SPDX-License-Identifier: MIT
#include "gl/SBlendState.h"

#include <QOpenGLFunctions>

SBlendState SBlendState::current(QOpenGLFunctions &gl)
{
    const auto get = [&gl](GLenum name) {
        GLint value = 0;
        gl.glGetIntegerv(name, &value);
        return value;
    };
    GLfloat constant[4] = {};
    gl.glGetFloatv(GL_BLEND_COLOR, constant);
    return {gl.glIsEnabled(GL_BLEND) == GL_TRUE,
            get(GL_BLEND_SRC_RGB),
            get(GL_BLEND_DST_RGB),
            get(GL_BLEND_EQUATION_RGB),
            get(GL_BLEND_SRC_ALPHA),
            get(GL_BLEND_DST_ALPHA),
            get(GL_BLEND_EQUATION_ALPHA),
            constant[3]};
}

bool SBlendState::replacesColor() const
{
    return !enabled
        || (sourceColor == GL_SRC_ALPHA && pixelColor == GL_ONE_MINUS_SRC_ALPHA && colorEquation == GL_FUNC_ADD);
}

bool SBlendState::keepsAlpha() const
{
    const bool addsNothing = sourceAlpha == GL_ZERO || (sourceAlpha == GL_CONSTANT_ALPHA && constantAlpha == 0.0f);
    return enabled && addsNothing && pixelAlpha == GL_ONE && alphaEquation == GL_FUNC_ADD;
}
