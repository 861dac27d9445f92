// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>
#include <QVector2D>

// The vertices of series of one number per slot. Values are rounded to single precision. Thread-safe.

/// Four heights for each of `count` bars: 0, 0, value, value.
void writeBarHeights(const double *values, int count, float *heights);

/// For `count` points from number `first` on: two vertices of the fill, (i, 0) and (i, value), and one of the border,
/// (i, value).
void writeAreaVertices(const double *values, int first, int count, QVector2D *fill, QVector2D *border);

/// Appends the six indices of each bar from number `present` on, whose four corners follow those of the bar before, until
/// there are `count` bars: two triangles that cover the bar.
void appendBarIndices(QVector<uint> &indices, int present, int count);
