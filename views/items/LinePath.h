// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/ColumnGrid.h"
#include "views/items/SeriesRuns.h"

#include <QPointF>

#include <vector>

/// Points that are joined by a line, in device pixels from the plot area's top left corner; `ends` holds for each piece
/// of the line how many points there are up to its end.
struct LinePath
{
    std::vector<QPointF> points;
    std::vector<size_t> ends;

    void clear()
    {
        points.clear();
        ends.clear();
    }
};

/// The path of a line that is wider than a pixel or smoothed: all values in view, `margin` pixels around it and the
/// next values outside, as long as there are few in a column; else of each run in a column the first, the lowest, the
/// highest and the last one. Where there are many short runs in one, it's what they mark together, to a quarter of a
/// pixel. Any thread.
void addPath(LinePath &path, const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
             const RowScale &rows, int margin);
