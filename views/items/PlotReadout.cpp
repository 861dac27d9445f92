// SPDX-License-Identifier: MIT
#include "views/items/PlotReadout.h"

#include "common/Change.h"
#include "views/items/LineSeries.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotView.h"
#include "views/items/SeriesProbe.h"

namespace {

constexpr double farthestPoint = 40.0; // pixels: a point further away isn't under the pointer

} // namespace

PlotReadout::PlotReadout(PlotView &view) : m_view(view)
{
    connect(&view, &PlotView::seriesListChanged, this, &PlotReadout::watchSeries);
    connect(&view, &PlotView::rangesChanged, this, &PlotReadout::look);
}

void PlotReadout::watchSeries()
{
    for (PlotSeries *series : m_view.series()) {
        connect(series, &PlotSeries::dataChanged, this, &PlotReadout::look, Qt::UniqueConnection);
        connect(series, &PlotSeries::redrawNeeded, this, &PlotReadout::look, Qt::UniqueConnection);
        connect(series, &PlotSeries::visibleChanged, this, &PlotReadout::look, Qt::UniqueConnection);
    }
    look();
}

void PlotReadout::point(const QPointF &position)
{
    const bool isNews = !m_isActive || position != m_position;
    m_isActive = true;
    m_position = position;
    if (!isNews)
        return;
    look();
    emit changed(); // the panel goes with the pointer, even where it says the same
}

void PlotReadout::leave()
{
    if (change(m_isActive, false))
        emit changed();
}

void PlotReadout::look()
{
    const AxisMapping mapping = m_view.mappingX();
    if (!m_isActive || !mapping.isValid())
        return;
    const double ratio = m_view.pixelRatio();
    const double left = std::floor(m_position.x() * ratio) / ratio;
    const double from = mapping.toValue(left);
    const double to = mapping.toValue(left + 1.0 / ratio);
    QVariantList rows;
    QVector<double> places;
    for (const PlotSeries *series : m_view.series()) {
        double place = std::numeric_limits<double>::quiet_NaN();
        const bool isTold = series->isVisible() && series->isHoverable();
        const QVariantMap row = isTold ? rowOf(*series, from, to, place) : QVariantMap();
        if (row.isEmpty())
            continue;
        rows.append(row);
        places.append(place);
    }
    // NaN differs from itself: where one of the values stands for a column there's no one place.
    const bool isOnePlace = !places.isEmpty() && places.count(places.first()) == places.size();
    const QString title = m_view.axisX()->valueText(isOnePlace ? places.first() : from, to - from);
    if (title == m_title && rows == m_rows)
        return;
    m_title = title;
    m_rows = rows;
    emit changed();
}

QVariantMap PlotReadout::rowOf(const PlotSeries &series, double from, double to, double &place) const
{
    const SeriesProbe probe(series);
    if (probe.isEmpty())
        return {};
    const PlotAxis &axis = *m_view.axisY();
    const qint64 first = probe.firstFrom(from);
    const qint64 end = probe.firstFrom(to);
    QString text;
    if (end - first > 1) {
        const SExtremes extremes = probe.values().extremesIn(first, end);
        if (extremes.isEmpty())
            return {};
        const bool isLine = qobject_cast<const LineSeries *>(&series);
        const double extreme = -extremes.lowest > extremes.highest ? extremes.lowest : extremes.highest;
        const QString values = isLine && extremes.lowest < extremes.highest
            ? axis.valueText(extremes.lowest, 0.0) + QStringLiteral(" … ") + axis.valueText(extremes.highest, 0.0)
            : axis.valueText(extreme, 0.0);
        text = tr("%1  of %2 values").arg(values, QString::number(end - first));
    } else {
        const qint64 index = probe.nearest((from + to) * 0.5);
        const double value = index < 0 ? std::numeric_limits<double>::quiet_NaN() : probe.values().valueAt(index);
        const double away = index < 0 ? 0.0 : m_view.mappingX().toPixels(probe.xOf(index)) - m_position.x();
        if (std::isnan(value) || (!probe.isBars() && std::abs(away) > farthestPoint))
            return {};
        place = probe.xOf(index);
        text = axis.valueText(value, 0.0);
    }
    return {{QStringLiteral("name"), series.name()},
            {QStringLiteral("color"), series.color()},
            {QStringLiteral("text"), text}};
}
