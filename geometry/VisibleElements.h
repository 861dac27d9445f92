// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/BarEdges.h"
#include "geometry/PlacedEdges.h"
#include "geometry/SIndexRange.h"
#include "geometry/SPixelRow.h"

#include <QVector>

// Which of very many elements (bars, or spans of an area) can be seen at all.
//
// Without multisampling an element leaves a mark only where it covers the centre of a pixel. When far more elements
// than pixels are in view, nearly all lie between two centres. Leaving those out changes no pixel; what decides is
// where the rasteriser puts an element, so each centre is widened by all that may be lost on the way there: the
// rounding of the shader's arithmetic and the grid within a pixel to which corners are moved. Thread-safe.

/// The elements of `inView` that may cover the centre of a pixel, in ascending order; element i lies between edge i and
/// the next. All of them when that is not known well enough, or when choosing would not be worth it.
QVector<SIndexRange> elementsOnPixelCentres(const SPlacedEdges &edges, const SIndexRange &inView,
                                            const SPixelRow &pixels);

/// The same for bars of individual widths, whose positions the shader gets in two parts.
QVector<SIndexRange> elementsOnPixelCentres(const BarEdges &edges, const SIndexRange &inView, const SShownPart &shown,
                                            const SPixelRow &pixels);
