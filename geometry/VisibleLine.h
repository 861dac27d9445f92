// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SIndexRange.h"

#include <functional>

// Which segments of a very long line leave a mark that no other segment leaves.
//
// Only whole segments are left out; every other keeps its ends and its direction, so it marks what it always marked.
// One is left out for one of two reasons, each with room for all that may be lost on the way to the rasteriser:
//
// It marks nothing. A line has a fragment where it leaves the diamond around the centre of a pixel, or, where a driver
// draws it as a parallelogram, where it passes a centre. A segment between two such places marks nothing.
//
// It marks only what a drawn one marks. Between two neighbouring places where the columns that an upright line covers
// change, all upright segments mark the same columns, and one that crosses a whole row of pixels marks that row. This
// holds for colours that look the same drawn once or twice.

/// The pixels that a line is drawn to, and how.
struct SLineTarget
{
    int width = 0;
    int height = 0;
    int subPixelBits = 0;
    double lineWidth = 1.0;  ///< in pixels, as it is drawn
    bool repeatable = false; ///< a pixel drawn twice looks as if drawn once

    friend bool operator==(const SLineTarget &a, const SLineTarget &b)
    {
        return a.width == b.width && a.height == b.height && a.subPixelBits == b.subPixelBits
            && a.lineWidth == b.lineWidth && a.repeatable == b.repeatable;
    }
};

/// A line through the points (i, value i) as the vertex shader places them: at i * xStep + xStart, but for rounding on
/// the way, and at value * yStep + yStart, in normalised device coordinates.
struct SLinePlace
{
    double xStart = 0.0;
    double xStep = 0.0;
    double xReach = 0.0; ///< the largest number on the way to a point's x
    float yStart = 0.0f;
    float yStep = 0.0f;

    friend bool operator==(const SLinePlace &a, const SLinePlace &b)
    {
        return a.xStart == b.xStart && a.xStep == b.xStep && a.xReach == b.xReach && a.yStart == b.yStart
            && a.yStep == b.yStep;
    }
};

/// Calls visit(points) for each run of points whose segments have to be drawn, in ascending order unless `repeatable`;
/// for all `points` when nothing is known well enough, or when it would not be worth it. Thread-safe.
void visitMarkingSegments(const double *values, const SIndexRange &points, const SLinePlace &place,
                          const SLineTarget &target, const std::function<void(const SIndexRange &)> &visit);
