// SPDX-License-Identifier: MIT
#include "filters/MovingAvarangeU64.h"

#include "common/Change.h"
#include "common/Series.h"
#include "common/Storage.h"
#include "filters/RunningAverage.h"

#include <QDebug>

#include <algorithm>

MovingAvarangeU64::MovingAvarangeU64(QObject *parent) : Filter1D(parent) {}

MovingAvarangeU64::~MovingAvarangeU64()
{
    withdraw();
}

void MovingAvarangeU64::setDepth(int depth)
{
    if (change(m_depth, std::max(depth, 1)))
        emit depthChanged();
}

bool MovingAvarangeU64::_filter_func(const QVector<double> &data)
{
    if (data.isEmpty())
        return false;
    const qint64 size = data.size() + 2 * (qint64(m_depth) - 1);
    if (m_depth > maximumDepth || size > longestSeries) {
        qWarning() << "MovingAvarangeU64: no average of" << data.size() << "values over" << m_depth
                   << "values; the depth may be" << maximumDepth;
        return false;
    }
    restart(m_data, int(size));
    appendAverages(data, m_depth, int(size), m_data);
    return true;
}
