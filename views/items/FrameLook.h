// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/LabelPool.h"

#include <QRectF>
#include <QVector>

class PlotAxis;
class PlotView;

/// What the lines and texts of a view are laid out for: a screen, or a picture. In item pixels of the view.
struct SPlotGround
{
    QRectF plotArea;    ///< on whole device pixels
    double ratio = 1.0; ///< device pixels of an item pixel
    double line = 1.0;  ///< how wide a line of the grid is
};

/// Where the lines and texts around and under the series of a view stand, in item pixels of the view.
struct SFrameLook
{
    QVector<QRectF> minorGrid;
    QVector<QRectF> grid;
    QVector<QRectF> axes;
    QVector<SLabel> texts;
};

// In item pixels.
constexpr double frameEdge = 8.0; // of the view, free of everything
constexpr double tickLength = 4.0;
constexpr double labelGap = 3.0; // from a tick to its label
constexpr double rowGap = 2.0;
constexpr int labelDigits = 9; // what most labels take at most: "-12345.6k"

/// The least distance of two labels of y: less in a low plot, so that it has more than one. It follows from the height,
/// not from what is shown. An interval that's wished for is kept as long as labels don't touch.
double labelDistance(const PlotAxis &axis, double height, double row);

/// What is to be drawn around the series as things are now. GUI thread.
SFrameLook frameLook(const PlotView &view, const SPlotGround &ground);
