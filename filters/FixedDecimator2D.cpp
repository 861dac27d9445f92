// SPDX-License-Identifier: MIT
#include "filters/FixedDecimator2D.h"

#include "common/Change.h"

#include <algorithm>

namespace {

/// The largest value of the last of `steps` steps of `width` through (width, value) pairs, of which there is at least
/// one.
double lastPeak(const QVector<double> &pairs, int steps, double width)
{
    const int lastPair = pairs.size() / 2 - 1;
    int pair = 0;
    double covered = pairs.at(0);
    double peak = pairs.at(1);
    double x = 0.0;
    double written = 0.0;
    for (int step = 0; step < steps; ++step) {
        x += width;
        while (pair < lastPair && x - width / 1000.0 > covered) {
            ++pair;
            covered += pairs.at(2 * pair);
            peak = std::max(peak, pairs.at(2 * pair + 1));
        }
        written = peak;
        peak = pairs.at(2 * pair + 1);
    }
    return written;
}

} // namespace

FixedDecimator2D::FixedDecimator2D(QObject *parent) : Filter1D(parent) {}

FixedDecimator2D::~FixedDecimator2D()
{
    withdraw();
}

void FixedDecimator2D::setNumPoint(int numPoint)
{
    if (!change(m_numPoint, std::min(std::max(numPoint, 1), maximumPoints)))
        return;
    const QPointer<FixedDecimator2D> alive(this);
    if (m_parentFilter) // Deliberate: without one, the change waits for the next series.
        filterAgain();
    if (alive)
        emit numPointChanged();
}

bool FixedDecimator2D::_filter_func(const QVector<double> &data)
{
    if (m_area.isNull() || data.size() < 2)
        return false;
    const double width = m_area.width() / m_numPoint;
    const double peak = lastPeak(data, m_numPoint, width);
    m_data = QVector<double>(m_numPoint, 0.0);
    m_data[0] = width;
    if (m_numPoint > 2)
        m_data[2] = peak;
    return true;
}
