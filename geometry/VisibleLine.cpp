// SPDX-License-Identifier: MIT
#include "geometry/VisibleLine.h"

#include "common/Index.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <vector>

namespace {

using Visit = std::function<void(const SIndexRange &)>;

/// A rounding to single precision loses at most 2^-24 of a number. This allows for four of them in a row.
constexpr double singleRounding = 1.0 / (1 << 22);
/// Beyond this, in pixels, hardly a segment can be left out.
constexpr double widestDoubt = 0.1;
/// Points per pixel below which drawing all costs little.
constexpr double fewPointsPerPixel = 4.0;
/// Points farther from the middle than this many half heights are not judged: clipping moves their segments.
constexpr double farthest = 16.0;
/// Makes the positions of judged points positive, so that a conversion to int rounds down.
constexpr double aboveZero = 1 << 22;

/// From a float position in normalised device coordinates to pixels. A corner lands within `doubt` of it.
struct SAxis
{
    double start = 0.0; ///< of position 0, in pixels
    double step = 0.0;
    double doubt = 0.0;

    SAxis(double ndcStart, double ndcStep, double reach, int pixels, int subPixelBits)
        : start((ndcStart + 1.0) * 0.5 * pixels),
          step(ndcStep * 0.5 * pixels),
          doubt(singleRounding * (reach + 2.0) * 0.5 * pixels + std::ldexp(1.5, -subPixelBits))
    {
    }
    double at(double position) const { return position * step + start; }
    double positionAt(double pixel) const { return (pixel - start) / step; }
};

/// Rows of pixels that are marked for sure, from `first` to `last`.
struct SRows
{
    int first = 0;
    int last = -1;

    bool isEmpty() const { return last < first; }
    bool touches(const SRows &other) const { return other.first <= last + 1 && first <= other.last + 1; }
};

/// An interval of values; empty to begin with. A NaN lies in none.
struct SInterval
{
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    bool contains(double value) const { return value >= low && value <= high; }
    SInterval common(const SInterval &other) const { return {std::max(low, other.low), std::min(high, other.high)}; }
};

/// Values between which segments mark only what others mark.
struct SCovered
{
    SInterval upright; ///< for those that are upright
    SInterval any;     ///< for all, which may mark more rows than they cross

    SCovered common(const SCovered &other) const { return {upright.common(other.upright), any.common(other.any)}; }
};

/// Where a point lies between the places that decide about fragments.
struct SCell
{
    int number[8] = {}; ///< of the interval in each family of parallel lines
    bool sure = false;  ///< well within all of them
};

/// The first of the values that does not lie in the interval.
int firstOutside(const double *values, int from, int end, const SInterval &interval)
{
    constexpr int atOnce = 32;
    if (from < end && !interval.contains(values[from]))
        return from;
    for (; from + atOnce <= end; from += atOnce) {
        bool inside = true;
        for (int i = 0; i < atOnce; ++i)
            inside &= (values[from + i] >= interval.low) & (values[from + i] <= interval.high);
        if (!inside)
            break;
    }
    while (from < end && interval.contains(values[from]))
        ++from;
    return from;
}

/// One pass over a line.
class LinePass
{
public:
    LinePass(const double *values, const SIndexRange &points, const SLinePlace &place, const SLineTarget &target,
             const Visit &visit)
        : m_values(values),
          m_points(points),
          m_target(target),
          m_visit(visit),
          m_x(place.xStart, place.xStep, place.xReach, target.width, target.subPixelBits),
          m_y(double(place.yStart), double(place.yStep), farthest + 2.0 * std::abs(double(place.yStart)), target.height,
              target.subPixelBits),
          m_isOdd(std::fmod(target.lineWidth, 2.0) == 1.0)
    {
    }

    bool isWorthIt() const;
    void run();

private:
    double count() const { return double(m_points.end) - m_points.first; }
    std::vector<double> columnChanges() const;
    void judgeAll(int first, int last);
    void judgeGroup(int first, int last);
    void judge(int segment, bool covers);
    bool isNear(double y) const { return std::abs(y - 0.5 * m_target.height) <= farthest * 0.5 * m_target.height; }
    bool isCovered(int segment, double rise) const;
    bool marksNothing(int segment);
    SCell cellOf(int point) const;
    void cover(double y0, double y1);
    void setCovered(const SRows &rows);
    SInterval valuesBetween(double low, double high) const;
    void keep(int segment);
    void flush();

    const double *m_values;
    SIndexRange m_points;
    SLineTarget m_target;
    const Visit &m_visit;
    SAxis m_x;
    SAxis m_y;
    bool m_isOdd; ///< the width, in whole pixels
    SRows m_rows; ///< marked by the segments of the group that are kept
    SCovered m_covered;
    SIndexRange m_kept; ///< points of the last run
    SCell m_lastCell;
    int m_lastCellPoint = -1;
};

bool LinePass::isWorthIt() const
{
    return m_target.width > 0 && m_target.height > 0 && m_target.subPixelBits > 0 && m_target.lineWidth >= 1.0
        && m_x.step > 0.0 && std::isfinite(m_x.start) && std::isfinite(m_y.start) && std::isfinite(m_y.step)
        && m_y.step != 0.0 && m_x.doubt < widestDoubt && m_y.doubt < widestDoubt
        && std::max(m_target.width, m_target.height) * farthest < aboveZero / 4
        && count() > fewPointsPerPixel * m_target.width;
}

/// Where an upright line begins to mark other columns, whether its edges decide or its middle and its rounded width,
/// and the edges of the picture, where clipping begins. Ascending.
std::vector<double> LinePass::columnChanges() const
{
    const double half = 0.5 * m_target.lineWidth;
    const double below = 0.5 * (std::floor(m_target.lineWidth) - 1.0);
    const double above = 0.5 * (std::ceil(m_target.lineWidth) - 1.0);
    std::vector<double> fractions;
    for (const double change : {0.5 + half, 0.5 - half, below, above})
        fractions.push_back(change - std::floor(change));
    std::sort(fractions.begin(), fractions.end());
    fractions.erase(std::unique(fractions.begin(), fractions.end()), fractions.end());

    std::vector<double> changes{0.0};
    for (int column = 0; column < m_target.width; ++column) {
        for (const double fraction : fractions)
            changes.push_back(column + fraction);
    }
    changes.push_back(m_target.width);
    return changes;
}

void LinePass::run()
{
    const int last = m_points.end - 1;
    SIndexRange doubtful{m_points.first, m_points.first}; // its segments lie between two groups
    SCovered before;                                      // by the group on its left
    if (m_target.repeatable) {
        for (const double change : columnChanges()) {
            const double from = std::floor(m_x.positionAt(change - m_x.doubt)) - 1.0;
            const double to = std::floor(m_x.positionAt(change + m_x.doubt)) + 2.0;
            const int groupEnd = std::clamp(toIndex(from), doubtful.end, last);
            m_covered = {};
            if (change > 0.0)
                judgeGroup(doubtful.end, groupEnd);
            else
                judgeAll(doubtful.end, groupEnd);
            const SCovered after = m_covered;
            m_covered = before.common(after);
            judgeAll(doubtful.first, doubtful.end);
            before = after;
            doubtful = {groupEnd, std::clamp(toIndex(to), groupEnd, last)};
        }
    }
    m_covered = {};
    judgeAll(doubtful.first, last);
    flush();
}

/// Segments between two points that cover nothing for others.
void LinePass::judgeAll(int first, int last)
{
    for (int segment = first; segment < last; ++segment)
        judge(segment, false);
}

/// Segments between two points, all of them where the columns don't change.
void LinePass::judgeGroup(int first, int last)
{
    m_rows = {};
    for (int segment = first; segment < last;) {
        const int outside = firstOutside(m_values, segment, last + 1, m_covered.any);
        if (outside > last)
            return;
        segment = std::max(segment, outside - 1);
        for (; segment <= outside && segment < last; ++segment)
            judge(segment, true);
    }
}

void LinePass::judge(int segment, bool covers)
{
    const double y0 = m_y.at(double(float(m_values[segment])));
    const double y1 = m_y.at(double(float(m_values[segment + 1])));
    const bool isKnown = isNear(y0) && isNear(y1); // not for a NaN
    const double rise = std::abs(y1 - y0);
    if (isKnown && isCovered(segment, rise))
        return;
    if (isKnown && rise < 1.0 && marksNothing(segment))
        return;
    keep(segment);
    if (isKnown && covers)
        cover(y0, y1);
}

bool LinePass::isCovered(int segment, double rise) const
{
    const auto bothIn = [&](const SInterval &interval) {
        return interval.contains(m_values[segment]) && interval.contains(m_values[segment + 1]);
    };
    return bothIn(m_covered.any)
        || (rise > 2.0 * m_x.step + 4.0 * (m_x.doubt + m_y.doubt) && bothIn(m_covered.upright));
}

bool LinePass::marksNothing(int segment)
{
    const SCell before = m_lastCellPoint == segment ? m_lastCell : cellOf(segment);
    m_lastCell = cellOf(segment + 1);
    m_lastCellPoint = segment + 1;
    return before.sure && m_lastCell.sure
        && std::equal(std::begin(before.number), std::end(before.number), std::begin(m_lastCell.number));
}

/// Edges of diamonds and lines through centres. Wide lines may be judged by one of their rows, which lies half a pixel
/// aside when the width is not odd.
SCell LinePass::cellOf(int point) const
{
    const double x = m_x.at(point);
    const double y = m_y.at(double(float(m_values[point])));
    SCell cell;
    cell.sure = isNear(y) && std::abs(x) < aboveZero / 4;
    if (!cell.sure)
        return cell;
    const double both = m_x.doubt + m_y.doubt;
    int family = 0;
    const auto place = [&](double position, double doubt) {
        const double shifted = position + aboveZero;
        const int number = int(shifted);
        const double fraction = shifted - number;
        cell.number[family++] = number;
        cell.sure = cell.sure && fraction > doubt && fraction < 1.0 - doubt;
    };
    place(x + y - 0.5, both);
    place(x - y - 0.5, both);
    place(x - 0.5, m_x.doubt);
    place(y - 0.5, m_y.doubt);
    if (!m_isOdd) {
        place(x + y, both);
        place(x - y, both);
        place(x, m_x.doubt);
        place(y, m_y.doubt);
    }
    return cell;
}

/// A segment of the group that is kept marks the rows that it crosses from edge to edge, and the one that it begins in
/// when it crosses the middle of it.
void LinePass::cover(double y0, double y1)
{
    const double doubt = m_y.doubt;
    const double lowest = y0 < y1 ? y0 - 0.5 + doubt : y1 + doubt;
    const double highest = y0 < y1 ? y1 - doubt : y0 + 0.5 - doubt;
    const SRows crossed{std::max(int(std::ceil(lowest)), 0), std::min(int(std::floor(highest)), m_target.height) - 1};
    if (crossed.isEmpty())
        return;
    if (m_rows.isEmpty() || (!m_rows.touches(crossed) && crossed.last - crossed.first > m_rows.last - m_rows.first))
        setCovered(crossed);
    else if (m_rows.touches(crossed))
        setCovered({std::min(m_rows.first, crossed.first), std::max(m_rows.last, crossed.last)});
}

void LinePass::setCovered(const SRows &rows)
{
    m_rows = rows;
    const double flat = 0.5 * m_target.lineWidth + 1.0; // how far a flat segment may mark above and below
    const double beyond = farthest * 0.5 * m_target.height;
    const bool fromBottom = rows.first == 0;
    const bool toTop = rows.last == m_target.height - 1;
    const double bottom = fromBottom ? 0.5 * m_target.height - beyond : rows.first;
    const double top = toTop ? 0.5 * m_target.height + beyond : rows.last + 1.0;
    m_covered.upright = valuesBetween(bottom + m_y.doubt, top - m_y.doubt);
    m_covered.any = valuesBetween(bottom + (fromBottom ? m_y.doubt : flat), top - (toTop ? m_y.doubt : flat));
}

SInterval LinePass::valuesBetween(double low, double high) const
{
    const double a = m_y.positionAt(low);
    const double b = m_y.positionAt(high);
    return low > high ? SInterval() : SInterval{std::min(a, b), std::max(a, b)};
}

void LinePass::keep(int segment)
{
    if (m_kept.end == segment + 1) {
        ++m_kept.end;
        return;
    }
    flush();
    m_kept = {segment, segment + 2};
}

void LinePass::flush()
{
    if (m_kept.end > m_kept.first)
        m_visit(m_kept);
}

} // namespace

void visitMarkingSegments(const double *values, const SIndexRange &points, const SLinePlace &place,
                          const SLineTarget &target, const Visit &visit)
{
    LinePass pass(values, points, place, target, visit);
    if (pass.isWorthIt())
        pass.run();
    else
        visit(points);
}
