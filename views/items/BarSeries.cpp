// SPDX-License-Identifier: MIT
#include "views/items/BarSeries.h"

#include "common/Change.h"

BarSeries::BarSeries(QObject *parent) : PlotSeries(parent) {}

void BarSeries::setBaseline(double baseline)
{
    if (!changeExactly(m_baseline, baseline))
        return;
    emit baselineChanged();
    emit redrawNeeded();
}
