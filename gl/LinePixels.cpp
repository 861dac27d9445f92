// SPDX-License-Identifier: MIT
#include "gl/LinePixels.h"

#include <QOpenGLFunctions>

#include <algorithm>
#include <cmath>

namespace {

constexpr GLenum aliasedLineWidthRange = 0x846E;

} // namespace

SLinePixels currentLinePixels(QOpenGLFunctions &gl)
{
    GLint samples = 0;
    GLint viewport[4] = {};
    GLfloat width = 1.0f;
    GLfloat widths[2] = {1.0f, 1.0f};
    gl.glGetIntegerv(GL_SAMPLES, &samples);
    gl.glGetIntegerv(GL_VIEWPORT, viewport);
    gl.glGetFloatv(GL_LINE_WIDTH, &width);
    gl.glGetFloatv(aliasedLineWidthRange, widths);
    if (samples > 1)
        return {};
    return {viewport[2], viewport[3], int(std::lround(std::clamp(width, 1.0f, std::max(widths[1], 1.0f))))};
}
