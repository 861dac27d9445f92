// SPDX-License-Identifier: MIT
#include "views/items/BarSeries.h"

#include "common/Change.h"
#include "views/items/BarShape.h"

#include <algorithm>
#include <cmath>

BarSeries::BarSeries(QObject *parent) : PlotSeries(parent) {}

void BarSeries::setBaseline(double baseline)
{
    if (!isFinite(baseline, "baseline") || !changeExactly(m_baseline, baseline))
        return;
    emit baselineChanged();
    emit redrawNeeded();
}

void BarSeries::drawValues(const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                           const RowScale &rows, double, SSeriesShape &shape) const
{
    const double base = shownBaseline(m_baseline, values, rows);
    if (std::isfinite(base))
        addBars(shape.fill, values, places, grid, rows, base);
}
