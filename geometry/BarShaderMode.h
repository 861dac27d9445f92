// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

// The variants of the bar program and the arrays that each of them reads. Thread-safe.

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

/// The process-wide variant; written when the program is constructed.
inline std::atomic<int> barShaderMode{BarAttributes};
