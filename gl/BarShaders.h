// SPDX-License-Identifier: MIT
#pragma once

#include <QOpenGLShader>
#include <QPair>
#include <QString>
#include <QVector>

// The source variants of the bar program. Each mode number selects stages, attributes and a draw call.

/// The variants by number; 3 and 4 draw like 0 and 1.
enum BarShaderMode {
    BarAttributes = 0,     ///< bar number as an attribute, indexed triangles
    BarVertexId = 1,       ///< bar number from gl_VertexID, indexed triangles
    BarGeometryShader = 2, ///< one point per bar, expanded by a geometry shader
    BarAttributesAlias = 3,
    BarVertexIdAlias = 4,
};

constexpr bool barModeHasVertexIds(int mode)
{
    return mode == BarAttributes || mode == BarAttributesAlias;
}

constexpr bool barModeHasIndices(int mode)
{
    return mode != BarGeometryShader;
}

/// The stages of a mode in the order in which they are added to the program.
QVector<QPair<QOpenGLShader::ShaderType, QString>> barShaderSources(int mode);
