// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/ColumnGrid.h"
#include "views/items/RowSpans.h"
#include "views/items/SeriesRuns.h"

/// Which pixels a line through the values marks that is one device pixel wide, column by column.
///
/// A segment marks a pixel if it crosses its vertical or its horizontal middle: of a flat segment one pixel in each
/// column, of a steep one one in each row. In addition each run of values between two gaps marks the pixel of its first
/// value, so that a value alone is a dot. A column gets the same pixels whether its segments are drawn one by one or,
/// as here, taken together: their lowest and highest, cut at the column's edges, and where they cross its middle.
class LineColumns
{
public:
    enum class Wanted {
        Rows, ///< all that are marked
        Reach ///< from the first to the last of them, which is known sooner
    };
    LineColumns(const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid, const RowScale &rows,
                Wanted wanted = Wanted::Rows);

    /// The rows marked in a column, in view or not, from top to bottom, apart from each other. Asked from left to right
    /// it's cheapest.
    const std::vector<SRowSpan> &spansOf(int column);

private:
    /// A point of the line, in places and in pixels from the top.
    struct SPoint
    {
        qint64 index = 0;
        double place = 0.0;
        double y = 0.0;
    };

    /// A run, and the neighbours that it's joined to outside of the column.
    struct SShown
    {
        SPoint before;
        SPoint first;
        SPoint last;
        SPoint after;
        bool goesOnLeft = false;
        bool goesOnRight = false;
    };

    void addRun(const SRun &run, int column, qint64 from, qint64 to);
    void addCrossing(qint64 after, int column);
    SShown shownOf(const SRun &run, qint64 from, qint64 to) const;
    bool pointAt(qint64 index, SPoint &point) const;
    double yAtCentre(double centre, const SShown &shown) const;
    bool isMarked(double lowest, double highest) const;
    void mark(double top, double bottom, double middle, double first);

    SeriesRuns m_runs;
    const SeriesPlaces &m_places;
    const ColumnGrid m_grid;
    const RowScale &m_rows;
    const Wanted m_wanted;
    RowSpans m_spans;
    int m_nextColumn = -1;
    qint64 m_nextFrom = 0;
};
