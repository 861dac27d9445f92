// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/PlacedEdges.h"
#include "geometry/SIndexRange.h"

#include <QVector>

// What a line marks that has many points to a pixel: in each column of pixels one run of rows. Thread-safe.
//
// A line one pixel wide marks a pixel if it crosses the pixel's vertical or horizontal middle. A wider one is a brush:
// it marks the rows that the line crosses within half its width to the left and right, and where it's flat also as many
// rows as it's wide around the place where it crosses the column's middle. It's flat where these rows reach no farther
// than the line is wide, or where it rises by less than it goes to the right just there. A rasteriser that draws the
// segments one by one does the same where the line is straight for its own width. Where it's not, it turns the brush
// with each segment; and which pixel the end of a segment marks is up to it everywhere.

/// The pixels that a line is drawn to, and how wide it is drawn, in whole pixels.
struct SLinePixels
{
    int width = 0;
    int height = 0;
    int lineWidth = 1;
};

/// A line through the points (i, value i): where they lie in normalised device coordinates.
struct SLinePlace
{
    SEdgeRow x;
    double yStart = 0.0;
    double yStep = 0.0;
};

/// Rows of pixels from `bottom` to one before `top`, counted from the bottom of the picture.
struct SRows
{
    int bottom = 0;
    int top = 0;

    friend bool operator==(const SRows &a, const SRows &b) { return a.bottom == b.bottom && a.top == b.top; }
};

/// Whether the line through `points` has so many of them to a pixel that its columns are worth computing.
bool isDenseLine(const SIndexRange &points, const SLinePlace &place, const SLinePixels &pixels);

/// The rows that the line marks in each column of the picture; every value is finite. Looks once at each point in view.
QVector<SRows> denseLineRows(const double *values, const SIndexRange &points, const SLinePlace &place,
                             const SLinePixels &pixels);

/// Writes the four corners of each of these columns, in normalised device coordinates: 8 floats a column.
void writeColumns(const QVector<SRows> &rows, const SIndexRange &columns, const SLinePixels &pixels, float *corners);
