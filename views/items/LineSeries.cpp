// SPDX-License-Identifier: MIT
#include "views/items/LineSeries.h"

#include "common/Change.h"

LineSeries::LineSeries(QObject *parent) : PlotSeries(parent) {}

void LineSeries::setWidth(double width)
{
    const bool smoothBefore = antialiasing();
    if (!change(m_width, width))
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
