// SPDX-License-Identifier: MIT
#pragma once

#include <QTypeInfo>

// What lies in the vertex buffers, byte by byte.

/// A vertex of an area: a point's number and its value, or 0.
struct SPointVertex
{
    float x = 0.0f;
    float y = 0.0f;

    friend bool operator==(const SPointVertex &a, const SPointVertex &b) { return a.x == b.x && a.y == b.y; }
};
static_assert(sizeof(SPointVertex) == 8, "two floats");
Q_DECLARE_TYPEINFO(SPointVertex, Q_PRIMITIVE_TYPE);

/// A corner of a high-resolution bar. Its x position, from plotterArea.left, is the sum of the two parts.
struct SHResVertex
{
    float xMost = 0.0f;  ///< the position rounded to single precision
    float xLeast = 0.0f; ///< what rounding left over
    float value = 0.0f;
};
static_assert(sizeof(SHResVertex) == 12, "three floats");
Q_DECLARE_TYPEINFO(SHResVertex, Q_PRIMITIVE_TYPE);
