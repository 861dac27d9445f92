// SPDX-License-Identifier: MIT
#include "gl/CoreProfile.h"

#include <QOpenGLContext>
#include <QSurfaceFormat>

#include <algorithm>

namespace {

constexpr char vertexPreamble[] =
    "#version 150\n"
    "#define attribute in\n"
    "#define varying out\n";

constexpr char fragmentPreamble[] =
    "#version 150\n"
    "#define varying in\n"
    "#define gl_FragColor fragmentColor\n"
    "out vec4 fragmentColor;\n";

} // namespace

bool isCoreProfile()
{
    return QOpenGLContext::currentContext()->format().profile() == QSurfaceFormat::CoreProfile;
}

QString coreProfileSource(QOpenGLShader::ShaderType type, const QString &source)
{
    if (source.startsWith(QLatin1String("#version")))
        return source;
    return QLatin1String(type == QOpenGLShader::Vertex ? vertexPreamble : fragmentPreamble) + source;
}

QString sourceForContext(QOpenGLShader::ShaderType type, const QString &source)
{
    return isCoreProfile() ? coreProfileSource(type, source) : source;
}

float lineWidthForContext(float width)
{
    const bool hasWideLines =
        !isCoreProfile() || QOpenGLContext::currentContext()->format().testOption(QSurfaceFormat::DeprecatedFunctions);
    return hasWideLines ? width : std::min(width, 1.0f);
}
