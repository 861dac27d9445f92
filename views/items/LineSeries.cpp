// SPDX-License-Identifier: MIT
#include "views/items/LineSeries.h"

#include "common/Change.h"
#include "views/items/LineShape.h"

#include <algorithm>
#include <cmath>

LineSeries::LineSeries(QObject *parent) : PlotSeries(parent) {}

void LineSeries::setWidth(double width)
{
    const bool smoothBefore = antialiasing();
    if (!isFinite(width, "width") || !change(m_width, width))
        return;
    emit widthChanged();
    if (antialiasing() != smoothBefore)
        emit antialiasingChanged();
    emit redrawNeeded();
}

bool LineSeries::antialiasing() const
{
    return m_smoothing == Smoothing::ByWidth ? m_width > 1.0 : m_smoothing == Smoothing::On;
}

void LineSeries::setAntialiasing(bool antialiasing)
{
    setSmoothing(antialiasing ? Smoothing::On : Smoothing::Off);
}

void LineSeries::resetAntialiasing()
{
    setSmoothing(Smoothing::ByWidth);
}

void LineSeries::setSmoothing(Smoothing smoothing)
{
    const bool before = antialiasing();
    if (!change(m_smoothing, smoothing))
        return;
    if (antialiasing() != before)
        emit antialiasingChanged();
    emit redrawNeeded();
}

void LineSeries::drawValues(const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                            const RowScale &rows, double ratio, SSeriesShape &shape) const
{
    const double width = std::max(m_width * ratio, 1.0);
    const bool isSmooth = m_smoothing == Smoothing::ByWidth ? width > 1.0 : m_smoothing == Smoothing::On;
    if (!isSmooth && width <= 1.0) {
        addThinLine(shape.fill, values, places, grid, rows);
        return;
    }
    shape.pen = {width, isSmooth};
    shape.pathColor = color();
    addPath(shape.path, values, places, grid, rows, int(std::min(width, 1e3)));
}
