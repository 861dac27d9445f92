// SPDX-License-Identifier: MIT
#include "views/items/PlotAxis.h"

#include "common/Change.h"

PlotAxis::PlotAxis(QObject *parent) : QObject(parent) {}

void PlotAxis::setMin(double min)
{
    setAutoRange(false);
    setRange(min, m_max);
}

void PlotAxis::setMax(double max)
{
    setAutoRange(false);
    setRange(m_min, max);
}

void PlotAxis::setRange(double min, double max)
{
    const bool minIsOther = changeExactly(m_min, min);
    const bool maxIsOther = changeExactly(m_max, max);
    if (minIsOther)
        emit minChanged();
    if (maxIsOther)
        emit maxChanged();
    if (minIsOther || maxIsOther)
        emit rangeChanged();
}

void PlotAxis::setAutoRange(bool autoRange)
{
    if (!change(m_autoRange, autoRange))
        return;
    emit autoRangeChanged();
}
