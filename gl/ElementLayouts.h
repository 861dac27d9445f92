// SPDX-License-Identifier: MIT
#pragma once

#include "gl/ElementStream.h"

#include <qopengl.h>

// How the corners of each plotter's elements lie in a stream. geometry/Vertices.h writes them.

inline SElementLayout barLayout()
{
    return {4, 2, GL_TRIANGLES, {1, 2, 0, 1, 2, 3}, {{"vertexID", 0, 1}, {"point", 1, 1}}};
}

/// With the triangles of a strip, in its order.
inline SElementLayout spanLayout()
{
    return {4, 2, GL_TRIANGLES, {0, 1, 2, 2, 1, 3}, {{"vertex", 0, 2}}};
}

inline SElementLayout segmentLayout()
{
    return {2, 2, GL_LINES, {}, {{"vertex", 0, 2}}};
}

/// Columns of pixels that a line marks.
inline SElementLayout columnLayout()
{
    return spanLayout();
}

/// Bars of individual widths.
inline SElementLayout hresBarLayout()
{
    return {4, 3, GL_TRIANGLES, {1, 2, 0, 1, 2, 3}, {{"vertex", 0, 3}}};
}
