// SPDX-License-Identifier: MIT
#include "views/items/LineShape.h"

#include "views/items/LineColumns.h"

#include <algorithm>

void addThinLine(PixelRects &rects, const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                 const RowScale &rows)
{
    LineColumns columns(values, places, grid, rows);
    for (int column = 0; column < grid.count; ++column) {
        for (const SRowSpan &span : columns.spansOf(column))
            rects.add(column, span.top, span.bottom);
    }
}

void addArea(PixelRects &rects, const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
             const RowScale &rows, double baseline)
{
    LineColumns columns(values, places, grid, rows, LineColumns::Wanted::Reach);
    const int base = rows.rowFrom(rows.yOf(baseline));
    for (int column = 0; column < grid.count; ++column) {
        const std::vector<SRowSpan> &spans = columns.spansOf(column);
        if (!spans.empty())
            rects.add(column, std::min(base, spans.front().top), std::max(base, spans.back().bottom));
    }
}
