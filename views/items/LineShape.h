// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/ColumnGrid.h"
#include "views/items/PixelRects.h"
#include "views/items/RowScale.h"
#include "views/items/SeriesPlaces.h"

// Any thread.

/// Marks the pixels of a line that is one device pixel wide: see LineColumns.
void addThinLine(PixelRects &rects, const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                 const RowScale &rows);

/// Marks the same pixels, and all between them and `baseline`.
void addArea(PixelRects &rects, const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
             const RowScale &rows, double baseline);
