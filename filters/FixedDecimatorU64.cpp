// SPDX-License-Identifier: MIT
#include "filters/FixedDecimatorU64.h"

#include "common/Change.h"
#include "common/Storage.h"
#include "filters/Buckets.h"

#include <algorithm>

FixedDecimatorU64::FixedDecimatorU64(QObject *parent) : Filter1D(parent)
{
    m_data.fill(0.0, m_numPoint);
}

FixedDecimatorU64::~FixedDecimatorU64()
{
    withdraw();
}

void FixedDecimatorU64::setNumPoint(int numPoint)
{
    int highest = maximumPoints;
    if (m_parentFilter && !m_parentFilter->data().isEmpty())
        highest = std::min(highest, int(m_parentFilter->data().size()));
    if (!change(m_numPoint, std::min(std::max(numPoint, 1), highest)))
        return;
    m_data = QVector<double>(m_numPoint, 0.0);
    const QPointer<FixedDecimatorU64> alive(this);
    if (m_parentFilter) // Deliberate: without one, the change waits for the next series.
        filterAgain();
    if (alive)
        emit numPointChanged();
}

bool FixedDecimatorU64::_filter_func(const QVector<double> &data)
{
    if (m_area.isNull() || data.isEmpty())
        return false;
    const QVector<double> previous = m_data;
    restart(m_data, m_numPoint);
    double *maxima = extend(m_data, m_numPoint);
    const int written = writeFirstMaxima(data.constData(), data.size(), maxima, m_numPoint);
    std::copy(previous.cbegin() + written, previous.cend(), maxima + written);
    return true;
}
