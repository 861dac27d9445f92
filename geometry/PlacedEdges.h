// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SIndexRange.h"
#include "geometry/SPixelRow.h"

// How the edges of elements of equal width get to the screen through a shader that computes in single precision.
// Thread-safe.

/// How far from where it belongs an edge may be drawn, in pixels.
constexpr double exactToPixels = 1.0 / 256;

/// Edges at equal distances: edge i lies at i * step + start, in normalised device coordinates.
struct SEdgeRow
{
    double start = 0.0;
    double step = 0.0;
};

/// The corners of edge i get the x coordinate corner(i), and the shader makes x * step + start of it.
struct SPlacedEdges
{
    double origin = 0.0;
    double unit = 1.0;
    float start = 0.0f;
    float step = 1.0f;

    float corner(int edge) const { return float(edge * unit + origin); }
    /// Where the edges land, but for rounding on the way.
    SEdgeRow row() const { return {origin * double(step) + double(start), unit * double(step)}; }
    /// The largest number on the way of an edge in `range`, at least.
    double reach(const SIndexRange &range) const;
};

/// Corners that are numbers of edges, under `start` and `step`, if these are exact enough for all edges in `range`.
/// Otherwise, as happens far from the first edge, corners that are positions already, computed in double precision and
/// rounded once: exact at every distance and every zoom.
SPlacedEdges placedEdges(const SEdgeRow &edges, float start, float step, const SIndexRange &range,
                         const SPixelRow &pixels);

/// The part of data space that the pixels show, measured from the first edge of the bars.
struct SShownPart
{
    double left = 0.0;
    double width = 0.0;
};

/// Where positions are measured from that a shader gets in two parts, each in single precision, and from which it
/// subtracts the view's left edge part by part: 0, if this is exact enough, otherwise the view's left edge itself.
double originOfParts(const SShownPart &shown, const SPixelRow &pixels);
