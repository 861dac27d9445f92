// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/ColumnGrid.h"
#include "views/items/PixelRects.h"
#include "views/items/RowScale.h"
#include "views/items/SeriesPlaces.h"

/// Marks the pixels of bars: bar i covers the columns from the one that it begins in to the one that the next bar
/// begins in, at least one, and the rows whose middle lies between `baseline` and its value. Any thread.
void addBars(PixelRects &rects, const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
             const RowScale &rows, double baseline);
