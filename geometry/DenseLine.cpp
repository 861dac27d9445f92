// SPDX-License-Identifier: MIT
#include "geometry/DenseLine.h"

#include "common/Extent.h"
#include "common/Index.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

/// Points per pixel below which drawing all segments costs little.
constexpr double fewPointsPerPixel = 4.0;

/// From a point's number or value to pixels.
struct SScale
{
    double start = 0.0; ///< of 0
    double step = 0.0;

    SScale(double ndcStart, double ndcStep, int pixels)
        : start((ndcStart + 1.0) * 0.5 * pixels),
          step(ndcStep * 0.5 * pixels)
    {
    }
    double at(double position) const { return position * step + start; }
    double positionAt(double pixel) const { return (pixel - start) / step; }
};

/// Heights in pixels; empty to begin with.
struct SHeights
{
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    bool isEmpty() const { return high < low; }
    void reach(double y)
    {
        low = std::min(low, y);
        high = std::max(high, y);
    }
    void reach(const SHeights &other)
    {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
    }
};

SRows joined(const SRows &a, const SRows &b)
{
    if (a.top <= a.bottom)
        return b;
    if (b.top <= b.bottom)
        return a;
    return {std::min(a.bottom, b.bottom), std::max(a.top, b.top)};
}

class DenseLine
{
public:
    DenseLine(const double *values, const SIndexRange &points, const SLinePlace &place, const SLinePixels &pixels)
        : m_values(values),
          m_points(points),
          m_pixels(pixels),
          m_x(place.x.start, place.x.step, pixels.width),
          m_y(place.yStart, place.yStep, pixels.height)
    {
    }

    QVector<SRows> rows() const;

private:
    std::vector<SHeights> heightsOfParts() const;
    SHeights heightsBetween(double left, double right, int first, int end) const;
    SRows rowsOf(int column, const SHeights &reached) const;
    SRows crossed(const SHeights &heights) const;
    SRows band(double middle, int height) const;
    int firstFrom(double x) const;
    bool isInside(int next) const { return next > m_points.first && next < m_points.end; }
    double yOf(int point) const { return m_y.at(m_values[point]); }
    double yBefore(int next, double x) const;
    /// Columns to the left of a steep line that it marks, too.
    int columnsToTheLeft() const { return m_pixels.lineWidth / 2; }

    const double *m_values;
    SIndexRange m_points;
    SLinePixels m_pixels;
    SScale m_x;
    SScale m_y;
};

/// The first point at or to the right of x, in pixels; the end if there's none.
int DenseLine::firstFrom(double x) const
{
    return std::clamp(toIndex(std::ceil(m_x.positionAt(x))), m_points.first, m_points.end);
}

/// On the segment that ends with `next`.
double DenseLine::yBefore(int next, double x) const
{
    const double part = std::clamp(m_x.positionAt(x) - (next - 1), 0.0, 1.0);
    return yOf(next - 1) + part * (yOf(next) - yOf(next - 1));
}

/// Of the points from `first` to one before `end`, which lie from `left` to `right`, and of the line at both.
SHeights DenseLine::heightsBetween(double left, double right, int first, int end) const
{
    SHeights heights;
    if (end > first) {
        const SExtent extent = extentOf(m_values + first, end - first);
        heights.reach(m_y.at(extent.lowest));
        heights.reach(m_y.at(extent.highest));
    }
    if (isInside(first))
        heights.reach(yBefore(first, left));
    if (isInside(end))
        heights.reach(yBefore(end, right));
    return heights;
}

/// Of parts as wide as a pixel, one after the other, of which those that a column is reached from are whole: parts
/// begin where columns do if the line's width is odd, otherwise in the middle of columns.
std::vector<SHeights> DenseLine::heightsOfParts() const
{
    const double aside = m_pixels.lineWidth % 2 == 0 ? 0.5 : 0.0;
    const int count = m_pixels.width + m_pixels.lineWidth - 1;
    std::vector<SHeights> heights;
    heights.reserve(size_t(count));
    double left = aside - columnsToTheLeft();
    int first = firstFrom(left);
    for (int part = 0; part < count; ++part) {
        const int end = firstFrom(left + 1.0);
        heights.push_back(heightsBetween(left, left + 1.0, first, end));
        first = end;
        left += 1.0;
    }
    return heights;
}

SRows DenseLine::crossed(const SHeights &heights) const
{
    const double rows = m_pixels.height;
    return {int(std::ceil(std::clamp(heights.low - 0.5, 0.0, rows))),
            int(std::floor(std::clamp(heights.high + 0.5, 0.0, rows)))};
}

/// So many rows around a height.
SRows DenseLine::band(double middle, int height) const
{
    const double bottom = std::floor(std::clamp(middle - 0.5 * (height - 1), -1e9, 1e9));
    const double rows = m_pixels.height;
    return {int(std::clamp(bottom, 0.0, rows)), int(std::clamp(bottom + height, 0.0, rows))};
}

SRows DenseLine::rowsOf(int column, const SHeights &reached) const
{
    if (reached.isEmpty())
        return {};
    const SRows rows = crossed(reached);
    const double centre = column + 0.5;
    const int next = firstFrom(centre);
    if (!isInside(next))
        return rows;
    const bool isFlat = reached.high - reached.low <= m_pixels.lineWidth // as a whole, or there
        || std::abs(yOf(next) - yOf(next - 1)) <= m_x.step;
    return joined(rows, band(yBefore(next, centre), isFlat ? m_pixels.lineWidth : 1));
}

QVector<SRows> DenseLine::rows() const
{
    const std::vector<SHeights> parts = heightsOfParts();
    QVector<SRows> rows;
    rows.reserve(m_pixels.width);
    for (int column = 0; column < m_pixels.width; ++column) {
        SHeights reached;
        for (int part = column; part < column + m_pixels.lineWidth; ++part)
            reached.reach(parts[size_t(part)]);
        rows.append(rowsOf(column, reached));
    }
    return rows;
}

} // namespace

bool isDenseLine(const SIndexRange &points, const SLinePlace &place, const SLinePixels &pixels)
{
    return pixels.width > 0 && pixels.height > 0 && place.x.step > 0.0 && std::isfinite(place.x.start)
        && std::isfinite(place.yStart) && std::isfinite(place.yStep)
        && double(points.end) - points.first > fewPointsPerPixel * pixels.width;
}

QVector<SRows> denseLineRows(const double *values, const SIndexRange &points, const SLinePlace &place,
                             const SLinePixels &pixels)
{
    return DenseLine(values, points, place, pixels).rows();
}

void writeColumns(const QVector<SRows> &rows, const SIndexRange &columns, const SLinePixels &pixels, float *corners)
{
    const auto x = [&pixels](int column) { return float(2.0 * column / pixels.width - 1.0); };
    const auto y = [&pixels](int row) { return float(2.0 * row / pixels.height - 1.0); };
    for (int column = columns.first; column < columns.end; ++column, corners += 8) {
        const SRows &marked = rows.at(column);
        const float quad[8] = {x(column),     y(marked.bottom), x(column),     y(marked.top),
                               x(column + 1), y(marked.bottom), x(column + 1), y(marked.top)};
        std::copy(std::begin(quad), std::end(quad), corners);
    }
}
