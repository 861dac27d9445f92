// SPDX-License-Identifier: MIT
#include "views/items/LinePath.h"

#include "views/items/RowSpans.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int fewInColumn = 8;
constexpr int fewRunsInColumn = 8;
constexpr double rowParts = 4.0;      // more short runs than that are drawn alike where they share such a part of a row
constexpr double farOutside = 4096.0; // pixels beyond the view: lines end there, so that floats can hold them
constexpr double xGrid = 1024.0;      // steps of a pixel: a pan by whole pixels moves each point by exactly as much

bool isInPiece(const LinePath &path)
{
    return path.points.size() > (path.ends.empty() ? 0 : path.ends.back());
}

/// Moves `end` along the line towards `next` until it's at x.
void cutAt(double x, QPointF &end, const QPointF &next)
{
    const double width = next.x() - end.x();
    if (width != 0.0)
        end += (next - end) * ((x - end.x()) / width);
}

/// Writes the path, one run after the other, and joins the runs that no gap parts.
class PathWriter
{
public:
    PathWriter(LinePath &path, const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
               const RowScale &rows)
        : m_path(path),
          m_values(values),
          m_places(places),
          m_grid(grid),
          m_rows(rows)
    {
    }

    void addAll(const SRun &run)
    {
        joinTo(run);
        m_buffer.resize(size_t(run.to - run.from));
        m_values.copyValues(run.from, run.to, m_buffer.data());
        for (qint64 i = run.from; i < run.to; ++i)
            addPoint(i, m_buffer[size_t(i - run.from)]);
    }

    void addCorners(const SRun &run)
    {
        joinTo(run);
        const SExtremePlaces extremes = m_values.extremePlacesIn(run.from, run.to);
        qint64 corners[] = {run.from, extremes.lowestAt, extremes.highestAt, run.to - 1};
        std::sort(std::begin(corners), std::end(corners));
        const qint64 *const end = std::unique(std::begin(corners), std::end(corners));
        for (const qint64 *corner = corners; corner != end; ++corner)
            addPoint(*corner, m_values.valueAt(*corner));
    }

    /// The values [from, to) of a column. Runs that are joined to what is beside it are drawn each by itself, and so
    /// are others if they're few. What many short ones between two gaps mark is drawn in the middle of the column.
    void addColumn(SeriesRuns &runs, int column, qint64 from, qint64 to)
    {
        const auto add = [&](const SRun &run) {
            if (run.to == to)
                addShortRuns(column);
            if (run.from == from || run.to == to)
                addCorners(run);
            else
                keep(run);
        };
        runs.visit(from, to, add,
                   [&](double lowest, double highest) { return m_marked.covers(partsOf(lowest, highest)); });
        addShortRuns(column);
    }

    void endPiece()
    {
        if (!isInPiece(m_path))
            return;
        const size_t first = m_path.ends.empty() ? 0 : m_path.ends.back();
        std::vector<QPointF> &points = m_path.points;
        if (points.size() - first > 1) { // only the outermost points can be far outside
            if (points[first].x() < -farOutside)
                cutAt(-farOutside, points[first], points[first + 1]);
            if (points.back().x() > m_grid.count + farOutside)
                cutAt(m_grid.count + farOutside, points.back(), points[points.size() - 2]);
        }
        m_path.ends.push_back(points.size());
    }

private:
    void joinTo(const SRun &run)
    {
        if (run.from != m_next)
            endPiece();
        m_next = run.to;
    }

    SRowSpan partsOf(double lowest, double highest) const
    {
        return {RowScale::rowAt(m_rows.yOf(highest) * rowParts), RowScale::rowAt(m_rows.yOf(lowest) * rowParts) + 1};
    }

    void keep(const SRun &run)
    {
        m_few.push_back(run);
        if (m_few.size() <= fewRunsInColumn && m_marked.all().empty())
            return;
        for (const SRun &other : m_few)
            m_marked.insert(partsOf(other.lowest, other.highest));
        m_few.clear();
    }

    void addShortRuns(int column)
    {
        for (const SRun &run : m_few)
            addCorners(run);
        for (const SRowSpan &span : m_marked.all()) {
            endPiece();
            const double half = 0.5 / rowParts;
            m_path.points.emplace_back(column + 0.5, span.top / rowParts + half);
            if (span.bottom > span.top + 1)
                m_path.points.emplace_back(column + 0.5, span.bottom / rowParts - half);
            endPiece();
            m_next = -1;
        }
        m_few.clear();
        m_marked.clear();
    }

    void addPoint(qint64 index, double value)
    {
        const double x = std::nearbyint(m_grid.pixelOf(m_places.placeOf(index)) * xGrid) / xGrid;
        m_path.points.emplace_back(x, m_rows.yOf(value));
    }

    LinePath &m_path;
    const SeriesSnapshot &m_values;
    const SeriesPlaces &m_places;
    const ColumnGrid &m_grid;
    const RowScale &m_rows;
    qint64 m_next = -1;
    std::vector<double> m_buffer;
    std::vector<SRun> m_few; ///< of a column, between two gaps
    RowSpans m_marked;       ///< parts of rows, by more than those
};

} // namespace

void addPath(LinePath &path, const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
             const RowScale &rows, int margin)
{
    SeriesRuns runs(values, places, rows);
    PathWriter writer(path, values, places, grid, rows);
    const auto addAll = [&](const SRun &run) { writer.addAll(run); };
    const qint64 begin = places.firstFrom(grid.edge(-margin));
    const qint64 end = places.firstFrom(grid.edge(grid.count + margin));
    const qint64 before = std::max(begin - 1, places.begin());
    const qint64 behind = std::min(end + 1, places.end());
    if (end - begin <= qint64(fewInColumn) * grid.count) {
        runs.visit(before, behind, addAll);
    } else {
        runs.visit(before, begin, addAll);
        qint64 from = begin;
        for (int column = -margin; column < grid.count + margin; ++column) {
            const qint64 to = places.firstFrom(grid.edge(column + 1));
            writer.addColumn(runs, column, from, to);
            from = to;
        }
        runs.visit(end, behind, addAll);
    }
    writer.endPiece();
}
