// SPDX-License-Identifier: MIT
#include "gl/DecoratorShaders.h"

#include "gl/FragmentSources.h"

namespace {

constexpr char legacyInputs[] =
    "attribute vec2 point;\n"
    "attribute float time;\n"
    "varying vec4 vColor;\n";

constexpr char version330Inputs[] =
    "#version 330\n"
    "layout (location = 0) in vec2 point;\n"
    "layout (location = 1) in float time;\n"
    "out vec4 vColor;\n";

constexpr char fadingSource[] =
    "uniform vec4 color;\n"
    "uniform float curr_time;\n"
    "uniform float screen_dy;\n"
    "void main()\n"
    "{\n"
    "   float alpha = min ( max( time - curr_time, 0.0 ), color.w );\n"
    "   vColor      = vec4(color.xyz, alpha );\n"
    "   float y\t\t= -point.y*screen_dy + 1.0;"
    "   gl_Position = vec4( point.x, y, 1.0, 1.0);\n"
    "}\n";

constexpr char version330FragmentSource[] =
    "#version 330\n"
    "out vec4 FragColor;\n"
    "in vec4 vColor;\n"
    "void main()\n"
    "{\n"
    "    FragColor = vColor;\n"
    "}\n";

} // namespace

DecoratorDialect decoratorDialect(int majorVersion, int minorVersion, bool isOpenGLES)
{
    if (isOpenGLES) {
        const bool isLegacy = majorVersion < 4 && (majorVersion < 3 || minorVersion < 3);
        return isLegacy ? DecoratorDialect::Legacy : DecoratorDialect::ByLocation;
    }
    return majorVersion > 3 ? DecoratorDialect::NotDrawn : DecoratorDialect::Legacy;
}

QVector<QPair<QOpenGLShader::ShaderType, QString>> decoratorShaderSources(DecoratorDialect dialect)
{
    const QString fading = QString::fromLatin1(fadingSource);
    if (dialect == DecoratorDialect::Legacy)
        return {{QOpenGLShader::Vertex, legacyInputs + fading}, {QOpenGLShader::Fragment, vertexColorFragmentSource}};
    return {{QOpenGLShader::Vertex, version330Inputs + fading}, {QOpenGLShader::Fragment, version330FragmentSource}};
}
