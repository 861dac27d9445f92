// SPDX-License-Identifier: MIT
#include "gl/BarProgram.h"

#include "gl/BarShaders.h"
#include "gl/PerContext.h"

#include <QOpenGLContext>
#include <QSurfaceFormat>

namespace {

/// The context could choose a newer variant; the mode is fixed on purpose: the oldest one runs everywhere.
int chooseShaderMode(const QOpenGLContext &context)
{
    const QSurfaceFormat format = context.format();
    Q_UNUSED(format.version())
    Q_UNUSED(context.isOpenGLES())
    return BarAttributes;
}

} // namespace

LinkedProgram &barProgram()
{
    static auto *const programs = new PerContext<LinkedProgram>;
    return programs->current();
}

bool constructBarProgram(LinkedProgram &program)
{
    barShaderMode = chooseShaderMode(*QOpenGLContext::currentContext());
    return program.ensureLinked(barShaderSources(barShaderMode), "BarPlotter");
}
