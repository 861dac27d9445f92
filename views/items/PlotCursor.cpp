// SPDX-License-Identifier: MIT
#include "views/items/PlotCursor.h"

#include "common/Change.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"
#include "views/items/SeriesProbe.h"

#include <cstring>

namespace {

/// Equal to the last bit, so that NaN equals NaN.
bool areSame(const QVector<double> &a, const QVector<double> &b)
{
    return a.size() == b.size() && std::memcmp(a.constData(), b.constData(), size_t(a.size()) * sizeof(double)) == 0;
}

double valueAt(const PlotSeries &series, double x)
{
    const SeriesProbe probe(series);
    const qint64 index = probe.nearest(x);
    return index < 0 ? std::numeric_limits<double>::quiet_NaN() : probe.values().valueAt(index);
}

} // namespace

PlotCursor::PlotCursor(QObject *parent) : QObject(parent) {}

void PlotCursor::setX(double x)
{
    if (!std::isfinite(x) || !changeExactly(m_x, x))
        return;
    emit xChanged();
}

void PlotCursor::setVisible(bool visible)
{
    if (!change(m_visible, visible))
        return;
    emit visibleChanged();
}

QVariantList PlotCursor::values() const
{
    QVariantList values;
    for (const double value : m_values)
        values.append(value);
    return values;
}

void PlotCursor::look(const PlotView &view)
{
    QVector<double> values;
    for (const PlotSeries *series : view.series())
        values.append(valueAt(*series, m_x));
    if (areSame(values, m_values))
        return;
    m_values = values;
    emit valuesChanged();
}

void PlotCursor::forgetValues()
{
    if (m_values.isEmpty())
        return;
    m_values.clear();
    emit valuesChanged();
}
