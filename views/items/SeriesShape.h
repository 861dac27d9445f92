// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisMapping.h"
#include "views/items/ColumnGrid.h"
#include "views/items/LineStroke.h"
#include "views/items/PixelRects.h"

#include <QColor>

/// What is to be drawn of a series: the part of the axes that is shown on whole device pixels.
struct SSeriesFrame
{
    AxisMapping x; ///< to device pixels from the left edge of the plot area
    AxisMapping y; ///< and from its top
    int columns = 0;
    int rows = 0;
    double ratio = 1.0;  ///< device pixels of an item pixel, for the widths of lines
    double ratioX = 1.0; ///< the same to the right and down, exactly: a window has whole pixels
    double ratioY = 1.0;
    double previousStep = 0.0; ///< of the columns of the frame before
};

/// What a series looks like, in device pixels of the plot area: whole pixels of one color, and a line of another over
/// them. Kept from frame to frame, so that its memory is.
struct SSeriesShape
{
    PixelRects fill;
    QColor fillColor;
    LinePath path;
    SPen pen;
    QColor pathColor;
    ColumnGrid grid;
    qint64 shownEnd = 0; ///< values from here on can't be seen

    void clear()
    {
        fill.begin(0);
        path.clear();
        grid = ColumnGrid();
        shownEnd = 0;
    }
};
