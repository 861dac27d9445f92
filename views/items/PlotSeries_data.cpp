// SPDX-License-Identifier: MIT
#include "views/items/PlotSeries.h"

#include "views/items/SeriesProbe.h"

#include <QMetaObject>

#include <qqmlinfo.h>

#include <algorithm>
#include <cmath>
#include <limits>

void PlotSeries::setStore(SeriesStore *store)
{
    m_values.give(store);
}

void PlotSeries::setValues(const QVariant &values)
{
    const QString error = m_values.setValues(values);
    if (!error.isEmpty())
        qmlWarning(this) << "values: " << error;
}

void PlotSeries::setXStore(SeriesStore *store)
{
    m_places.give(store);
}

void PlotSeries::setXValues(const QVariant &values)
{
    const QString error = m_places.setValues(values);
    if (!error.isEmpty())
        qmlWarning(this) << "xValues: " << error;
}

qreal PlotSeries::count() const
{
    return m_values.store() ? m_values.store()->count() : 0.0;
}

qreal PlotSeries::minimum() const
{
    return m_values.store() ? m_values.store()->minimum() * m_yFactor : std::nan("");
}

qreal PlotSeries::maximum() const
{
    return m_values.store() ? m_values.store()->maximum() * m_yFactor : std::nan("");
}

void PlotSeries::tellOfData()
{
    emit countChanged();
    emit dataChanged();
}

/// Looks at the order of new places, a portion at a time.
void PlotSeries::lookAtPlaces()
{
    const bool isDone = m_order.look(m_places.snapshot());
    if (!isDone && !m_isLooking) {
        m_isLooking = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_isLooking = false;
                lookAtPlaces();
            },
            Qt::QueuedConnection);
    }
    if (m_order.misplacedCount() > 0 && !m_hasSaidMisplaced) {
        m_hasSaidMisplaced = true;
        qmlWarning(this) << "values at places that go back or aren't numbers are gaps: misplacedCount tells how many";
    }
    tellOfData();
}

SeriesPlaces PlotSeries::places(bool log) const
{
    const SeriesSnapshot values = m_values.snapshot();
    if (!m_places.store())
        return SeriesPlaces(m_start + m_xOffset, m_step, values.begin(), values.end(), log);
    return SeriesPlaces(m_places.snapshot(), m_xOffset, values.begin(), values.end(), log, &m_order.misplaced());
}

double PlotSeries::valueAt(double x) const
{
    const SeriesProbe probe(*this);
    const qint64 index = probe.nearest(x);
    return index < 0 ? std::nan("") : probe.values().valueAt(index);
}

QVariantMap PlotSeries::extremeIn(double from, double to) const
{
    const SeriesSnapshot values = scaledValues();
    const SeriesPlaces where = places(false);
    const double left = where.toPlace(std::min(from, to));
    const double right = where.toPlace(std::max(from, to));
    qint64 first = 0;
    qint64 end = 0;
    if (!std::isnan(left) && !std::isnan(right) && where.begin() < where.end()) {
        first = where.firstFrom(left);
        end = where.firstFrom(right);
        if (end < where.end() && where.placeOf(end) == right)
            ++end;
    }
    const SStatistics statistics = values.statisticsIn(first, end);
    const SExtremePlaces found = values.extremePlacesIn(first, end);
    QVariantMap map{{QStringLiteral("count"), qreal(statistics.count)}};
    if (statistics.count == 0)
        return map;
    map.insert(QStringLiteral("minimum"), values.valueAt(found.lowestAt));
    map.insert(QStringLiteral("maximum"), values.valueAt(found.highestAt));
    map.insert(QStringLiteral("minimumAt"), where.xOf(found.lowestAt));
    map.insert(QStringLiteral("maximumAt"), where.xOf(found.highestAt));
    return map;
}

void PlotSeries::draw(const SSeriesFrame &frame, SSeriesShape &shape) const
{
    shape.clear();
    const SeriesSnapshot values = scaledValues();
    const SeriesPlaces where = places(frame.x.log);
    const RowScale rows(frame.y, frame.rows);
    if (!frame.x.isValid() || rows.isEmpty() || where.begin() == where.end())
        return;
    const double from = where.toPlace(frame.x.from);
    const double to = where.toPlace(frame.x.to);
    const double farthest = std::max(std::abs(frame.x.scaled(frame.x.from)), std::abs(frame.x.scaled(frame.x.to)));
    const double doubt = 4.0 * std::numeric_limits<double>::epsilon() * farthest * (to - from) / frame.x.span();
    shape.grid = ColumnGrid::over(from, to, frame.columns, frame.previousStep, doubt);
    if (shape.grid.isEmpty())
        return;
    shape.fill.begin(frame.rows);
    shape.fillColor = color();
    shape.shownEnd = where.firstFrom(shape.grid.edge(frame.columns));
    drawValues(values, where, shape.grid, rows, frame.ratio, shape);
}

double PlotSeries::shownBaseline(double baseline, const SeriesSnapshot &values, const RowScale &rows)
{
    return rows.isLog() ? values.smallestPositiveIn(values.begin(), values.end()) / 2.0 : baseline;
}
