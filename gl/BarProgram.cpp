// SPDX-License-Identifier: MIT
#include "gl/BarProgram.h"

#include "gl/PerContext.h"

#include <QOpenGLContext>
#include <QSurfaceFormat>

#include <atomic>

namespace {

std::atomic<int> shaderMode{BarAttributes};

/// The context could choose a newer variant; the mode is fixed on purpose: the oldest one runs everywhere.
int chooseShaderMode(const QOpenGLContext &context)
{
    const QSurfaceFormat format = context.format();
    Q_UNUSED(format.version())
    Q_UNUSED(context.isOpenGLES())
    return BarAttributes;
}

} // namespace

int barShaderMode()
{
    return shaderMode;
}

LinkedProgram &barProgram()
{
    static auto *const programs = new PerContext<LinkedProgram>; // never destroyed: a render thread may outlive main()
    return programs->current();
}

bool constructBarProgram(LinkedProgram &program)
{
    shaderMode = chooseShaderMode(*QOpenGLContext::currentContext());
    return program.ensureLinked(barShaderSources(shaderMode), "BarPlotter");
}
