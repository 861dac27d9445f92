// SPDX-License-Identifier: MIT
#include "views/items/PeakSearch.h"

#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double leastDepth = 0.02; // of the view's height
constexpr double none = std::numeric_limits<double>::quiet_NaN();

} // namespace

PeakSearch::PeakSearch(const PlotView &view, const PlotSeries &series)
    : m_series(series),
      m_probe(series),
      m_from(view.axisX()->min()),
      m_to(view.axisX()->max()),
      m_pixel((m_to - m_from) / std::max(view.plotArea().width(), 1.0)),
      m_depth((view.axisY()->max() - view.axisY()->min()) * leastDepth)
{
}

double PeakSearch::highest() const
{
    return m_probe.isEmpty() ? none : placeOf(highestOf(m_probe.firstFrom(m_from), m_probe.firstAbove(m_to)));
}

double PeakSearch::next(double x, int direction) const
{
    double lowest = std::numeric_limits<double>::infinity();
    double height = -lowest;
    qint64 top = -1;
    const int columns = int(std::ceil((direction > 0 ? m_to - x : x - m_from) / m_pixel));
    for (int i = 0; i < columns; ++i) {
        const double edge = x + direction * i * m_pixel;
        const qint64 index = direction > 0 ? highestIn(edge, edge + m_pixel) : highestIn(edge - m_pixel, edge);
        if (index < 0)
            continue;
        const double here = m_probe.values().valueAt(index);
        if (top >= 0 && here < height - m_depth)
            break;
        lowest = std::min(lowest, here);
        if (here > lowest + m_depth && here > height) {
            height = here;
            top = index;
        }
    }
    return placeOf(top);
}

qint64 PeakSearch::highestIn(double from, double to) const
{
    if (m_probe.isEmpty() || !(from < to))
        return -1;
    return highestOf(m_probe.firstFrom(from), m_probe.firstFrom(to));
}

qint64 PeakSearch::highestOf(qint64 first, qint64 end) const
{
    return m_probe.values().extremePlacesIn(first, end).highestAt;
}

double PeakSearch::placeOf(qint64 index) const
{
    if (index < 0)
        return none;
    const double place = m_probe.xOf(index);
    if (!m_probe.isBars())
        return place;
    if (!m_series.placeStore())
        return place + m_series.step() / 2.0;
    const double end = index + 1 < m_probe.values().end() ? m_probe.xOf(index + 1) : place;
    return std::isfinite(end) ? place + (end - place) / 2.0 : place;
}
