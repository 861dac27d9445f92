// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/PlacedEdges.h"
#include "geometry/SIndexRange.h"
#include "geometry/VertexRecords.h"

#include <QVector>

// The vertex arrays of the plotters. Values are rounded to single precision. Thread-safe.

/// Four heights for each of `count` bars: 0, 0, value, value.
void writeBarHeights(const double *values, int count, float *heights);

/// Two vertices of the fill for each of `count` points from number `first` on: (i, 0) and (i, value).
void writeFillVertices(const double *values, int first, int count, SPointVertex *fill);

/// One vertex of the border for each of `count` points from number `first` on: (i, value).
void writeBorderVertices(const double *values, int first, int count, SPointVertex *border);

/// Four corners for each of `count` bars of individual widths: bottom left, bottom right, top left, top right. `pairs`
/// are (width, value), `position` is that of the first bar, and what is written is the distance from `origin`.
void writeHResVertices(const double *pairs, double position, double origin, int count, SHResVertex *corners);

// Of long series: those elements that are drawn, and corners as `edges` places them. Every corner is x and y; `values`
// is the whole series.

/// Four corners for each bar: bottom left, bottom right, top left, top right.
void writeBars(const double *values, const SIndexRange &bars, const SPlacedEdges &edges, float *corners);

/// Four corners for each span between a point and the next: bottom left, top left, bottom right, top right.
void writeSpans(const double *values, const SIndexRange &spans, const SPlacedEdges &edges, float *corners);

/// The two ends of each segment between a point and the next.
void writeSegments(const double *values, const SIndexRange &segments, const SPlacedEdges &edges, float *ends);

/// Appends six indices for each bar from number `first` to one before `end`, two triangles that cover it. The corners
/// of bar i are 4i to 4i + 3. The caller reserves the room.
void appendBarIndices(QVector<uint> &indices, int first, int end);

/// Appends four numbers for each bar i from number `first` to one before `end`, one per corner: i, i + 1, i, i + 1. The
/// caller reserves the room.
void appendBarNumbers(QVector<float> &numbers, int first, int end);
