// SPDX-License-Identifier: MIT
#pragma once

class QPainter;
class PlotView;

/// Paints what lies over a plot, in item pixels of the view: the legend, without the series that are hidden, and what
/// cursors and regions tell. It looks as in the scene. GUI thread.
void paintBoxes(QPainter &painter, const PlotView &view);
