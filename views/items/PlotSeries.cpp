// SPDX-License-Identifier: MIT
#include "views/items/PlotSeries.h"

#include "common/Change.h"

#include <qqmlinfo.h>

#include <algorithm>
#include <cmath>

PlotSeries::PlotSeries(QObject *parent) : QObject(parent), m_values(this), m_places(this)
{
    connect(&m_values, &SeriesSource::givenChanged, this, &PlotSeries::storeChanged);
    connect(&m_values, &SeriesSource::valuesChanged, this, &PlotSeries::valuesChanged);
    connect(&m_values, &SeriesSource::changed, this, &PlotSeries::tellOfData);
    connect(&m_places, &SeriesSource::givenChanged, this, &PlotSeries::xStoreChanged);
    connect(&m_places, &SeriesSource::valuesChanged, this, &PlotSeries::xValuesChanged);
    connect(&m_places, &SeriesSource::changed, this, &PlotSeries::lookAtPlaces);
}

PlotSeries::~PlotSeries()
{
    emit aboutToGo(this);
}

void PlotSeries::setName(const QString &name)
{
    if (!change(m_name, name))
        return;
    emit nameChanged();
}

void PlotSeries::setColor(const QColor &color)
{
    const QColor before = this->color();
    m_color = color;
    if (this->color() == before)
        return;
    emit colorChanged();
    emit redrawNeeded();
}

void PlotSeries::setViewColor(const QColor &color)
{
    const QColor before = this->color();
    m_viewColor = color;
    if (this->color() == before)
        return;
    emit colorChanged();
    emit redrawNeeded();
}

void PlotSeries::setVisible(bool visible)
{
    if (!change(m_visible, visible))
        return;
    emit visibleChanged();
    emit redrawNeeded();
}

void PlotSeries::setOpacity(double opacity)
{
    if (std::isnan(opacity) || !change(m_opacity, std::clamp(opacity, 0.0, 1.0)))
        return;
    emit opacityChanged();
    emit redrawNeeded();
}

void PlotSeries::setStart(double start)
{
    if (!isFinite(start, "start") || !changeExactly(m_start, start))
        return;
    emit startChanged();
    emit redrawNeeded();
}

void PlotSeries::setStep(double step)
{
    if (!isAbove0(step, "step") || !changeExactly(m_step, step))
        return;
    emit stepChanged();
    emit redrawNeeded();
}

void PlotSeries::setXOffset(double xOffset)
{
    if (!isFinite(xOffset, "xOffset") || !changeExactly(m_xOffset, xOffset))
        return;
    emit xOffsetChanged();
    emit redrawNeeded();
}

void PlotSeries::setYFactor(double yFactor)
{
    if (!isAbove0(yFactor, "yFactor") || !changeExactly(m_yFactor, yFactor))
        return;
    emit yFactorChanged();
    tellOfData();
    emit redrawNeeded();
}

void PlotSeries::setHoverable(bool hoverable)
{
    if (!change(m_hoverable, hoverable))
        return;
    emit hoverableChanged();
}

bool PlotSeries::isFinite(double value, const char *name) const
{
    if (!std::isfinite(value))
        qmlWarning(this) << name << ": " << value << " isn't a finite number";
    return std::isfinite(value);
}

bool PlotSeries::isAbove0(double value, const char *name) const
{
    if (std::isfinite(value) && value <= 0.0)
        qmlWarning(this) << name << ": " << value << " isn't above 0";
    return isFinite(value, name) && value > 0.0;
}
