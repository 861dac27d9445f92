// SPDX-License-Identifier: MIT
#include "gl/BarShaders.h"

namespace {

constexpr char attributeVertexSource[] =
    "attribute float point;\n"
    "attribute float vertexID;\n"
    "uniform float screen_x;\n"
    "uniform float screen_dx;\n"
    "uniform float screen_dy;\n"
    "void main()\n"
    "{\n"
    "   float x\t\t= vertexID * screen_dx + screen_x;\n"
    "   gl_Position\t= vec4( x, -point/screen_dy + 1.0, 1.0, 1.0);\n"
    "}\n";

constexpr char vertexIdVertexSource[] =
    "#version 130\n"
    "in float point;\n"
    "uniform float screen_x;\n"
    "uniform float screen_dx;\n"
    "uniform float screen_dy;\n"
    "void main()\n"
    "{\n"
    "   float index\t= trunc( gl_VertexID / 4 ) + mod( gl_VertexID, 2 );\n"
    "   float x\t\t= index * screen_dx + screen_x;\n"
    "   gl_Position\t= vec4( x, -point/screen_dy + 1, 1.0, 1.0);\n"
    "}\n";

constexpr char pointVertexSource[] =
    "#version 150\n"
    "in float point;\n"
    "uniform float screen_x;\n"
    "uniform float screen_dx;\n"
    "uniform float screen_dy;\n"
    "void main()\n"
    "{\n"
    "   float x1    = gl_VertexID * screen_dx + screen_x;"
    "   float x2    = (gl_VertexID+1) * screen_dx + screen_x;"
    "   gl_Position = vec4(x1, -point/screen_dy + 1, x2, 1.0);\n"
    "}\n";

constexpr char barGeometrySource[] =
    "#version 150\n"
    "layout (points) in;\n"
    "layout (triangle_strip, max_vertices = 4) out;\n"
    "void main()\n"
    "{\n"
    "   gl_Position = vec4(gl_in[0].gl_Position.x, 1.0, 0.0, 1.0);\n"
    "    EmitVertex();\n"
    "   gl_Position = vec4(gl_in[0].gl_Position.z, 1.0, 0.0, 1.0);\n"
    "   EmitVertex();\n"
    "   gl_Position = vec4(gl_in[0].gl_Position.x, gl_in[0].gl_Position.y, 0.0, 1.0);\n"
    "   EmitVertex();\n"
    "   gl_Position = vec4(gl_in[0].gl_Position.z, gl_in[0].gl_Position.y, 0.0, 1.0);\n"
    "   EmitVertex();\n"
    "   EndPrimitive();\n"
    "}\n";

constexpr char guardedFragmentSource[] =
    "#ifdef GL_ES\n"
    "precision mediump float;\n"
    "#endif\n"
    "uniform vec4 bar_color;\n"
    "void main()\n"
    "{\n"
    "    gl_FragColor = bar_color;\n"
    "}";

constexpr char version130FragmentSource[] =
    "#version 130\n"
    "out vec4 FragColor;\n"
    "uniform vec4 bar_color;\n"
    "void main()\n"
    "{\n"
    "    FragColor = bar_color;\n"
    "}";

} // namespace

QVector<QPair<QOpenGLShader::ShaderType, QString>> barShaderSources(int mode)
{
    switch (mode) {
    case BarVertexId:
    case BarVertexIdAlias:
        return {{QOpenGLShader::Vertex, vertexIdVertexSource}, {QOpenGLShader::Fragment, version130FragmentSource}};
    case BarGeometryShader:
        return {{QOpenGLShader::Vertex, pointVertexSource},
                {QOpenGLShader::Geometry, barGeometrySource},
                {QOpenGLShader::Fragment, version130FragmentSource}};
    default:
        return {{QOpenGLShader::Vertex, attributeVertexSource}, {QOpenGLShader::Fragment, guardedFragmentSource}};
    }
}
