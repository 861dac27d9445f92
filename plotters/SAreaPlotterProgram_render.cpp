// SPDX-License-Identifier: MIT
#include "plotters/SAreaPlotterProgram.h"

#include "gl/FragmentSources.h"

namespace {

constexpr char areaVertexSource[] =
    "attribute vec2 vertex;\n"
    "uniform mat4 matrix;\n"
    "void main()\n"
    "{\n"
    "   gl_Position = matrix * vec4( vertex.xy, 1.0, 1.0);\n"
    "}\n";

} // namespace

QVector<QPair<QOpenGLShader::ShaderType, QString>> SAreaPlotterProgram::sources() const
{
    return {{QOpenGLShader::Vertex, vertexSource()}, {QOpenGLShader::Fragment, fragmentSource()}};
}

QString SAreaPlotterProgram::vertexSource() const
{
    return areaVertexSource;
}

QString SAreaPlotterProgram::fragmentSource() const
{
    return flatColorFragmentSource;
}
