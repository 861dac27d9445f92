// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/VertexRecords.h"

#include <QVector>

// The vertex arrays of the plotters. Values are rounded to single precision. Thread-safe.

/// Four heights for each of `count` bars: 0, 0, value, value.
void writeBarHeights(const double *values, int count, float *heights);

/// Two vertices of the fill for each of `count` points from number `first` on: (i, 0) and (i, value).
void writeFillVertices(const double *values, int first, int count, SPointVertex *fill);

/// One vertex of the border for each of `count` points from number `first` on: (i, value).
void writeBorderVertices(const double *values, int first, int count, SPointVertex *border);

/// Two vertices for each of `count` segments from point number `first` on: (i, value) and (i + 1, next value).
void writeSegments(const double *values, int first, int count, SPointVertex *ends);

/// Four corners for each of `count` bars of individual widths: bottom left, bottom right, top left, top right. `pairs`
/// are (width, value), `edges` the positions of the bars' count + 1 edges.
void writeHResVertices(const double *pairs, const double *edges, int count, SHResVertex *corners);

/// Appends six indices for each bar from number `first` to one before `end`, two triangles that cover it. The corners
/// of bar i are 4i to 4i + 3. The caller reserves the room.
void appendBarIndices(QVector<uint> &indices, int first, int end);

/// Appends four numbers for each bar i from number `first` to one before `end`, one per corner: i, i + 1, i, i + 1. The
/// caller reserves the room.
void appendBarNumbers(QVector<float> &numbers, int first, int end);
