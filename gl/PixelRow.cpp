// SPDX-License-Identifier: MIT
#include "gl/PixelRow.h"

#include <QOpenGLFunctions>

SPixelRow currentPixelRow(QOpenGLFunctions &gl)
{
    GLint viewport[4] = {};
    GLint samples = 0;
    GLint subPixelBits = 0;
    gl.glGetIntegerv(GL_VIEWPORT, viewport);
    gl.glGetIntegerv(GL_SAMPLES, &samples);
    gl.glGetIntegerv(GL_SUBPIXEL_BITS, &subPixelBits);
    return {viewport[2], subPixelBits, samples <= 1};
}
