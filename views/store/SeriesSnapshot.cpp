// SPDX-License-Identifier: MIT
#include "views/store/SeriesSnapshot.h"

#include "views/store/SeriesData.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// NaN stays.
double product(double value, double factor)
{
    using Limits = std::numeric_limits<double>;
    return std::clamp(value * factor, Limits::lowest(), Limits::max());
}

} // namespace

SeriesSnapshot::SeriesSnapshot(std::shared_ptr<const SeriesData> data, std::shared_ptr<const void> pin, qint64 begin,
                               qint64 end)
    : m_data(std::move(data)),
      m_pin(std::move(pin)),
      m_begin(begin),
      m_end(end)
{
}

bool SeriesSnapshot::cut(qint64 &from, qint64 &to) const
{
    from = std::max(from, m_begin);
    to = std::min(to, m_end);
    return from < to;
}

SampleType SeriesSnapshot::type() const
{
    return m_data && m_factor == 1.0 ? m_data->type() : SampleType::Float64;
}

SeriesSnapshot SeriesSnapshot::scaled(double factor) const
{
    SeriesSnapshot other = *this;
    other.m_factor *= factor;
    return other;
}

bool SeriesSnapshot::operator==(const SeriesSnapshot &other) const
{
    return isOfSameSeries(other) && m_begin == other.m_begin && m_end == other.m_end;
}

bool SeriesSnapshot::isExact() const
{
    return !m_data || m_data->isBuilt();
}

double SeriesSnapshot::valueAt(qint64 index) const
{
    double value = std::nan("");
    if (index >= m_begin && index < m_end)
        copyValues(index, index + 1, &value);
    return value;
}

void SeriesSnapshot::copyValues(qint64 from, qint64 to, double *target) const
{
    qint64 first = from;
    qint64 end = to;
    if (!cut(first, end)) {
        std::fill(target, target + std::max(to - from, qint64(0)), std::nan(""));
        return;
    }
    std::fill(target, target + (first - from), std::nan(""));
    m_data->copyValues(first, end, target + (first - from));
    if (m_factor != 1.0)
        std::transform(target + (first - from), target + (end - from), target + (first - from),
                       [this](double value) { return product(value, m_factor); });
    std::fill(target + (end - from), target + (to - from), std::nan(""));
}

SExtremes SeriesSnapshot::extremesIn(qint64 from, qint64 to) const
{
    SExtremes extremes = cut(from, to) ? m_data->extremesIn(from, to) : SExtremes();
    if (m_factor != 1.0 && !extremes.isEmpty()) {
        extremes.lowest = product(extremes.lowest, m_factor);
        extremes.highest = product(extremes.highest, m_factor);
    }
    return extremes;
}

SExtremePlaces SeriesSnapshot::extremePlacesIn(qint64 from, qint64 to) const
{
    return cut(from, to) ? m_data->extremePlacesIn(from, to) : SExtremePlaces();
}

double SeriesSnapshot::smallestPositiveIn(qint64 from, qint64 to) const
{
    const double smallest = cut(from, to) ? m_data->smallestPositiveIn(from, to) : std::nan("");
    return m_factor == 1.0 ? smallest
                           : std::max(product(smallest, m_factor), std::numeric_limits<double>::denorm_min());
}

SStatistics SeriesSnapshot::statisticsIn(qint64 from, qint64 to) const
{
    SStatistics statistics = cut(from, to) ? m_data->statisticsIn(from, to) : SStatistics();
    statistics.sum *= m_factor;
    statistics.mean *= m_factor;
    statistics.m2 *= m_factor * m_factor;
    return statistics;
}

qint64 SeriesSnapshot::lowerBound(double x, qint64 from) const
{
    qint64 end = m_end;
    return cut(from, end) && !std::isnan(x) ? m_data->lowerBound(x / m_factor, from, end) : m_end;
}

qint64 SeriesSnapshot::nextGap(qint64 from, qint64 to) const
{
    return cut(from, to) ? m_data->nextGap(from, to) : std::clamp(to, m_begin, m_end);
}

qint64 SeriesSnapshot::nextValue(qint64 from, qint64 to) const
{
    return cut(from, to) ? m_data->nextValue(from, to) : std::clamp(to, m_begin, m_end);
}
