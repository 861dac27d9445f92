// SPDX-License-Identifier: MIT
#include "views/items/SeriesPlaces.h"

#include <algorithm>
#include <cmath>

SeriesPlaces::SeriesPlaces(double start, double step, qint64 begin, qint64 end, bool log)
    : m_hasOwn(false),
      m_isLog(log),
      m_start(start),
      m_step(step),
      m_begin(begin),
      m_end(std::max(begin, end))
{
}

SeriesPlaces::SeriesPlaces(const SeriesSnapshot &places, double offset, qint64 begin, qint64 end, bool log,
                           const IndexRanges *misplaced)
    : m_own(places),
      m_hasOwn(true),
      m_isLog(log),
      m_start(offset),
      m_begin(std::max(begin, places.begin())),
      m_end(std::max(m_begin, std::min(end, places.end()))),
      m_misplaced(misplaced)
{
}

double SeriesPlaces::toPlace(double x) const
{
    if (m_isLog)
        return x > 0.0 ? std::log10(x) : std::nan("");
    return (x - m_start) / m_step;
}

double SeriesPlaces::toX(double place) const
{
    return m_isLog ? std::pow(10.0, place) : m_start + place * m_step;
}

double SeriesPlaces::placeOf(qint64 index) const
{
    if (isEven() && !m_isLog)
        return double(index);
    const double x = isEven() ? m_start + double(index) * m_step : m_own.valueAt(index);
    return m_isLog ? toPlace(isEven() ? x : x + m_start) : x;
}

qint64 SeriesPlaces::firstFrom(double place) const
{
    if (!isEven())
        return std::clamp(m_own.lowerBound(m_isLog ? toX(place) - m_start : place, m_begin), m_begin, m_end);
    const double index = std::ceil(m_isLog ? (toX(place) - m_start) / m_step : place);
    return qint64(std::clamp(index, double(m_begin), double(m_end)));
}

double SeriesPlaces::endPlace() const
{
    if (isEven() || m_own.end() > m_end)
        return placeOf(m_end);
    const double last = placeOf(m_end - 1);
    const double width = last - placeOf(m_end - 2);
    return width >= 0.0 ? last + width : last;
}

bool SeriesPlaces::hasMisplaced(qint64 from, qint64 to) const
{
    if (!m_misplaced || m_misplaced->empty())
        return false;
    const auto next = std::upper_bound(m_misplaced->begin(), m_misplaced->end(), from,
                                       [](qint64 index, const auto &range) { return index < range.second; });
    return next != m_misplaced->end() && next->first < to;
}
