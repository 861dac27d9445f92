// SPDX-License-Identifier: MIT
#include "views/items/AreaSeries.h"

#include "common/Change.h"
#include "views/items/LineShape.h"

#include <algorithm>
#include <cmath>

AreaSeries::AreaSeries(QObject *parent) : PlotSeries(parent)
{
    connect(this, &PlotSeries::colorChanged, this, [this] {
        if (!m_borderColor.isValid())
            emit borderColorChanged();
    });
}

AreaSeries::~AreaSeries()
{
    // Views may still color the series while ~PlotSeries() runs, and the slot needs an AreaSeries.
    disconnect(this, nullptr, this, nullptr);
}

void AreaSeries::setBorderColor(const QColor &color)
{
    const QColor before = borderColor();
    m_borderColor = color;
    if (borderColor() == before)
        return;
    emit borderColorChanged();
    emit redrawNeeded();
}

void AreaSeries::setBorderWidth(double width)
{
    if (!isFinite(width, "borderWidth") || !change(m_borderWidth, width))
        return;
    emit borderWidthChanged();
    emit redrawNeeded();
}

void AreaSeries::setBaseline(double baseline)
{
    if (!isFinite(baseline, "baseline") || !changeExactly(m_baseline, baseline))
        return;
    emit baselineChanged();
    emit redrawNeeded();
}

void AreaSeries::drawValues(const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                            const RowScale &rows, double ratio, SSeriesShape &shape) const
{
    const double base = shownBaseline(m_baseline, values, rows);
    if (std::isfinite(base))
        addArea(shape.fill, values, places, grid, rows, base);
    if (!(m_borderWidth > 0.0))
        return;
    shape.pen = {std::max(m_borderWidth * ratio, 1.0), true};
    shape.pathColor = borderColor();
    addPath(shape.path, values, places, grid, rows, int(std::min(shape.pen.width, 1e3)));
}
