// SPDX-License-Identifier: MIT
#include "gl/LineTarget.h"

#include "gl/SBlendState.h"

#include <QByteArray>
#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <algorithm>

namespace {

constexpr GLenum lineSmooth = 0x0B20;
constexpr GLenum lineStipple = 0x0B24;
constexpr GLenum aliasedLineWidthRange = 0x846E;

GLint integerOf(QOpenGLFunctions &gl, GLenum name)
{
    GLint value = 0;
    gl.glGetIntegerv(name, &value);
    return value;
}

/// A driver may place the fragments of a line up to a pixel aside. Which it chooses is known of Mesa's renderers in
/// software, and those are the ones that need to be spared the work.
bool isKnownRenderer(QOpenGLFunctions &gl)
{
    const QByteArray name(reinterpret_cast<const char *>(gl.glGetString(GL_RENDERER)));
    return name.contains("llvmpipe") || name.contains("softpipe");
}

/// Whether state that only the desktop has changes what a line is.
bool isPlainLine(QOpenGLFunctions &gl)
{
    const QOpenGLContext &context = *QOpenGLContext::currentContext();
    if (context.isOpenGLES())
        return true;
    if (gl.glIsEnabled(lineSmooth))
        return false;
    const QSurfaceFormat format = context.format();
    const bool hasStipple =
        format.profile() == QSurfaceFormat::CompatibilityProfile || format.version() < qMakePair(3, 1);
    return !hasStipple || !gl.glIsEnabled(lineStipple);
}

/// Whether the second of two equal fragments leaves the pixel as it is.
bool isRepeatable(const SBlendState &state, double alpha)
{
    return !state.enabled || (alpha == 1.0 && state.replacesColor() && (state.keepsAlpha() || state.fillsAlpha()));
}

} // namespace

SLineTarget currentLineTarget(QOpenGLFunctions &gl, double alpha)
{
    if (!isKnownRenderer(gl) || integerOf(gl, GL_SAMPLES) > 1 || !isPlainLine(gl))
        return {};
    GLint viewport[4] = {};
    GLfloat width = 1.0f;
    GLfloat widths[2] = {1.0f, 1.0f};
    gl.glGetIntegerv(GL_VIEWPORT, viewport);
    gl.glGetFloatv(GL_LINE_WIDTH, &width);
    gl.glGetFloatv(aliasedLineWidthRange, widths);
    const double drawn = double(std::max(std::min(width, widths[1]), 1.0f)); // a thinner line is drawn as one pixel
    return {viewport[2], viewport[3], integerOf(gl, GL_SUBPIXEL_BITS), drawn,
            isRepeatable(SBlendState::current(gl), alpha)};
}
