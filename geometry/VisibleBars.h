// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/BarEdges.h"

#include <QVector>

// Which of very many bars can be seen at all.
//
// Without multisampling a bar leaves a mark only where it covers the centre of a pixel. When far more bars than pixels
// are in view, nearly all lie between two centres. Leaving those out changes no pixel; what decides is where the
// rasteriser puts a bar, so each centre is widened by all that may be lost on the way there: the rounding of the
// shader's arithmetic and the grid within a pixel to which corners are moved. Thread-safe.

/// The pixels across a framebuffer and the bits of the grid within each.
struct SPixelRow
{
    int count = 0;
    int subPixelBits = 0;
};

/// Bars of equal width as the vertex shader places them: bar i begins at i * step + start, in normalised device
/// coordinates and single precision. Those from `first` to one before `end` are in view.
struct SBarRow
{
    float start = 0.0f;
    float step = 0.0f;
    int first = 0;
    int end = 0;
};

/// The part of data space that the pixels show, measured from the first edge of the bars.
struct SShownPart
{
    double left = 0.0;
    double width = 0.0;
};

/// The bars that may cover the centre of a pixel, in ascending order. None when that is not known well enough, or when
/// it would not be worth it: then all have to be drawn.
QVector<SIndexRange> barsOnPixelCentres(const SBarRow &bars, const SPixelRow &pixels);

/// The same for the bars in `inView` of bars of individual widths, whose positions the shader gets in two parts.
QVector<SIndexRange> barsOnPixelCentres(const BarEdges &edges, const SIndexRange &inView, const SShownPart &shown,
                                        const SPixelRow &pixels);
