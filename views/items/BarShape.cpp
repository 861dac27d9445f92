// SPDX-License-Identifier: MIT
#include "views/items/BarShape.h"

#include "views/items/SeriesRuns.h"

#include <algorithm>
#include <cmath>

namespace {

/// The lowest and the highest of the bars in [from, to); false if none of them can be shown.
bool extremesOf(SeriesRuns &runs, const SeriesSnapshot &values, const SeriesPlaces &places, const RowScale &rows,
                qint64 from, qint64 to, SExtremes &extremes)
{
    if (places.hasMisplaced(from, to)) {
        extremes = SExtremes();
        runs.visit(from, to, [&](const SRun &run) { extremes.include(run.lowest, run.highest); });
        return !extremes.isEmpty();
    }
    extremes = values.extremesIn(from, to);
    if (rows.isLog() && !(extremes.lowest > 0.0))
        extremes.lowest = values.smallestPositiveIn(from, to);
    return !extremes.isEmpty() && rows.hasPlace(extremes.highest);
}

} // namespace

void addBars(PixelRects &rects, const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
             const RowScale &rows, double baseline)
{
    if (places.begin() == places.end())
        return;
    SeriesRuns runs(values, places, rows);
    const double end = places.endPlace();
    const double base = rows.yOf(baseline);
    SExtremes extremes;
    bool isShown = false;
    qint64 shownFrom = -1; // bars that are in `extremes` already
    qint64 shownTo = -1;
    qint64 from = places.firstFrom(grid.edge(0));
    for (int column = 0; column < grid.count; ++column) {
        const qint64 to = places.firstFrom(grid.edge(column + 1));
        // A column in which no bar begins belongs to the last one that began, up to the column in which that ends.
        const bool isInside = from == to;
        if (isInside && (from == places.begin() || (from == places.end() && !(grid.edge(column + 1) <= end)))) {
            from = to;
            continue;
        }
        const qint64 first = isInside ? from - 1 : from;
        if (first != shownFrom || to != shownTo) {
            isShown = extremesOf(runs, values, places, rows, first, to, extremes);
            shownFrom = first;
            shownTo = to;
        }
        if (isShown) {
            const double top = std::min(base, rows.yOf(extremes.highest));
            const double bottom = std::max(base, rows.yOf(extremes.lowest));
            rects.add(column, rows.rowFrom(top), rows.rowFrom(bottom));
        }
        from = to;
    }
}
