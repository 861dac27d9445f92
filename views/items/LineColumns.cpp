// SPDX-License-Identifier: MIT
#include "views/items/LineColumns.h"

#include <algorithm>
#include <cmath>

namespace {

/// Between two points, at a place that lies between theirs.
double yBetween(double place, double leftPlace, double leftY, double rightPlace, double rightY)
{
    const double width = rightPlace - leftPlace;
    const double part = width > 0.0 ? std::clamp((place - leftPlace) / width, 0.0, 1.0) : 0.0;
    return leftY + part * (rightY - leftY);
}

template <class Point>
double yBetween(double place, const Point &left, const Point &right)
{
    return yBetween(place, left.place, left.y, right.place, right.y);
}

} // namespace

LineColumns::LineColumns(const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                         const RowScale &rows, Wanted wanted)
    : m_runs(values, places, rows),
      m_places(places),
      m_grid(grid),
      m_rows(rows),
      m_wanted(wanted)
{
}

const std::vector<SRowSpan> &LineColumns::spansOf(int column)
{
    const qint64 from = column == m_nextColumn ? m_nextFrom : m_places.firstFrom(m_grid.edge(column));
    const qint64 to = m_places.firstFrom(m_grid.edge(column + 1));
    m_spans.clear();
    if (from == to)
        addCrossing(from, column);
    else
        m_runs.visit(
            from, to, [&](const SRun &run) { addRun(run, column, from, to); },
            [&](double lowest, double highest) { return isMarked(lowest, highest); });
    m_nextColumn = column + 1;
    m_nextFrom = to;
    return m_spans.all();
}

void LineColumns::addCrossing(qint64 after, int column)
{
    SPoint left;
    SPoint right;
    if (!pointAt(after - 1, left) || !pointAt(after, right))
        return;
    const double begin = yBetween(m_grid.edge(column), left, right);
    const double end = yBetween(m_grid.edge(column + 1), left, right);
    mark(std::min(begin, end), std::max(begin, end), yBetween(m_grid.centre(column), left, right), std::nan(""));
}

void LineColumns::addRun(const SRun &run, int column, qint64 from, qint64 to)
{
    const bool isInside = run.from > from && run.to < to;
    if (isInside && isMarked(run.lowest, run.highest))
        return;
    const SShown shown = shownOf(run, from, to);
    double top = m_rows.yOf(run.highest);
    double bottom = m_rows.yOf(run.lowest);
    const auto reach = [&](double y) {
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    };
    if (shown.goesOnLeft)
        reach(yBetween(m_grid.edge(column), shown.before, shown.first));
    if (shown.goesOnRight)
        reach(yBetween(m_grid.edge(column + 1), shown.last, shown.after));
    const bool isBeginning = !shown.goesOnLeft;
    mark(top, bottom, yAtCentre(m_grid.centre(column), shown), isBeginning ? shown.first.y : std::nan(""));
}

LineColumns::SShown LineColumns::shownOf(const SRun &run, qint64 from, qint64 to) const
{
    SShown shown;
    pointAt(run.from, shown.first);
    pointAt(run.to - 1, shown.last);
    shown.goesOnLeft = run.from == from && pointAt(from - 1, shown.before);
    shown.goesOnRight = run.to == to && pointAt(to, shown.after);
    return shown;
}

bool LineColumns::pointAt(qint64 index, SPoint &point) const
{
    const double value = m_runs.valueAt(index);
    if (std::isnan(value))
        return false;
    point = {index, m_places.placeOf(index), m_rows.yOf(value)};
    return true;
}

/// Where the line crosses the middle of the column; NaN if it doesn't.
double LineColumns::yAtCentre(double centre, const SShown &shown) const
{
    if (centre < shown.first.place)
        return shown.goesOnLeft ? yBetween(centre, shown.before, shown.first) : std::nan("");
    if (centre > shown.last.place)
        return shown.goesOnRight ? yBetween(centre, shown.last, shown.after) : std::nan("");
    const qint64 behind = std::clamp(m_places.firstFrom(centre), shown.first.index, shown.last.index);
    SPoint right;
    SPoint left;
    if (!pointAt(behind, right))
        return std::nan("");
    return behind > shown.first.index && pointAt(behind - 1, left) ? yBetween(centre, left, right) : right.y;
}

/// Whether a line that stays between two values can mark nothing more.
bool LineColumns::isMarked(double lowest, double highest) const
{
    return m_spans.covers({RowScale::rowAt(m_rows.yOf(highest)), RowScale::rowAt(m_rows.yOf(lowest)) + 1});
}

/// Marks the rows whose middle lies from `top` to `bottom`, and the rows that the other two lie in. NaN is none.
void LineColumns::mark(double top, double bottom, double middle, double first)
{
    SRowSpan span{RowScale::rowFrom(top), RowScale::rowAfter(bottom)};
    for (const double y : {middle, first}) {
        if (std::isnan(y))
            continue;
        const int row = RowScale::rowAt(y);
        span =
            span.isEmpty() ? SRowSpan{row, row + 1} : SRowSpan{std::min(span.top, row), std::max(span.bottom, row + 1)};
    }
    m_spans.insert(span);
    if (m_wanted == Wanted::Reach)
        m_spans.join();
}
