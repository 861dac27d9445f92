// SPDX-License-Identifier: MIT
#include "views/items/PlotMarks.h"

#include "views/items/AxisLabels.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotRegion.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"

namespace {

QVariantMap row(const QString &name, const QString &text, const QColor &color = QColor(Qt::transparent))
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("text"), text}, {QStringLiteral("color"), color}};
}

QVariantMap panel(const QString &title, const QVariantList &rows)
{
    return {{QStringLiteral("title"), title}, {QStringLiteral("rows"), rows}};
}

/// The numbers of all cursors and, of two, how far the second is from the first.
QString beside(const QStringList &texts, const QString &difference)
{
    const QString all = texts.join(QStringLiteral("   "));
    return difference.isEmpty() ? all : all + QStringLiteral("   Δ ") + difference;
}

} // namespace

QVariantList PlotMarks::panelsNow() const
{
    QVariantList panels;
    const QVector<PlotCursor *> shown = shownCursors();
    if (!shown.isEmpty())
        panels.append(cursorPanel(shown));
    for (const PlotRegion *region : m_regions) {
        if (region->isVisible())
            panels.append(regionPanel(*region));
    }
    return panels;
}

QVariantMap PlotMarks::cursorPanel(const QVector<PlotCursor *> &shown) const
{
    const PlotAxis &x = *m_view.axisX();
    const PlotAxis &y = *m_view.axisY();
    const double pixel = std::abs(1.0 / m_view.mappingX().pixelsPerUnit());
    const bool areTwo = shown.size() == 2;
    QStringList places;
    for (const PlotCursor *cursor : shown)
        places.append(x.valueText(cursor->x(), pixel));
    const double apart = areTwo ? shown[1]->x() - shown[0]->x() : 0.0;
    // The distance between two moments is in seconds, not a moment.
    const QString distance = x.isTime() ? shortNumber(apart) + QStringLiteral(" s") : x.valueText(apart, pixel);
    QVariantList rows;
    for (int i = 0; i < m_view.series().size(); ++i) {
        const PlotSeries &series = *m_view.series().at(i);
        if (!series.isVisible())
            continue;
        QStringList texts;
        for (const PlotCursor *cursor : shown)
            texts.append(y.valueText(cursor->numbers().value(i), 0.0));
        const double difference = areTwo ? shown[1]->numbers().value(i) - shown[0]->numbers().value(i) : 0.0;
        rows.append(
            row(series.name(), beside(texts, areTwo ? y.valueText(difference, 0.0) : QString()), series.color()));
    }
    return panel(beside(places, areTwo ? distance : QString()), rows);
}

QVariantMap PlotMarks::regionPanel(const PlotRegion &region) const
{
    const PlotAxis &x = *m_view.axisX();
    const PlotAxis &y = *m_view.axisY();
    const double pixel = std::abs(1.0 / m_view.mappingX().pixelsPerUnit());
    const QString reach = x.valueText(region.from(), pixel) + QStringLiteral(" – ") + x.valueText(region.to(), pixel);
    const QString title = region.name().isEmpty() ? reach : region.name() + QStringLiteral(": ") + reach;
    if (!region.isValid())
        return panel(title, {row(tr("values"), tr("none"))});
    const auto at = [&](double value, double place) {
        return tr("%1 at %2").arg(y.valueText(value, 0.0), x.valueText(place, pixel));
    };
    QVariantList rows{row(tr("values"), QString::number(region.count(), 'f', 0)),
                      row(tr("sum"), y.valueText(region.sum(), 0.0)),
                      row(tr("mean"), y.valueText(region.mean(), 0.0)),
                      row(tr("deviation"), y.valueText(region.deviation(), 0.0)),
                      row(tr("lowest"), at(region.minimum(), region.minimumAt())),
                      row(tr("highest"), at(region.maximum(), region.maximumAt())),
                      row(tr("centroid"), x.valueText(region.centroid(), pixel))};
    if (!std::isnan(region.peakWidth()))
        rows.append(row(tr("width at half height"), x.valueText(region.peakWidth(), region.peakWidth() * 1e-3)));
    return panel(title, rows);
}
