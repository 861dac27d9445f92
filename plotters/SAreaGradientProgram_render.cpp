// SPDX-License-Identifier: MIT
#include "plotters/SAreaGradientProgram.h"

#include "gl/FragmentSources.h"

namespace {

constexpr char gradientVertexSource[] =
    "attribute vec2 vertex;\n"
    "uniform mat4 matrix;\n"
    "uniform vec4 color_top;\n"
    "uniform vec4 color_bot;\n"
    "varying vec4 vColor;\n"
    "void main()\n"
    "{\n"
    "   vec4 pos = matrix * vec4( vertex.xy, 1.0, 1.0);\n"
    "   float middle = (-pos.y+1.0)/2.0;\n"
    "   vColor = mix(color_bot, color_top, middle);\n"
    "   gl_Position = pos;\n"
    "}\n";

} // namespace

QString SAreaGradientProgram::vertexSource() const
{
    return gradientVertexSource;
}

QString SAreaGradientProgram::fragmentSource() const
{
    return vertexColorFragmentSource;
}
