// SPDX-License-Identifier: MIT
#include "views/items/AreaSeries.h"

#include "common/Change.h"

AreaSeries::AreaSeries(QObject *parent) : PlotSeries(parent)
{
    connect(this, &PlotSeries::colorChanged, this, [this] {
        if (!m_borderColor.isValid())
            emit borderColorChanged();
    });
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
    if (!change(m_borderWidth, width))
        return;
    emit borderWidthChanged();
    emit redrawNeeded();
}

void AreaSeries::setBaseline(double baseline)
{
    if (!changeExactly(m_baseline, baseline))
        return;
    emit baselineChanged();
    emit redrawNeeded();
}
