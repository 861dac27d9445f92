// SPDX-License-Identifier: MIT
#include "views/items/PlotMarks.h"

#include "views/items/PeakSearch.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotRegion.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"

#include <QJSValue>
#include <QPair>

#include <algorithm>
#include <cmath>

namespace {

constexpr double regionShare = 1.0 / 6.0; // of what is in view, to each side
constexpr double peakShare = 1.0 / 30.0;

using Numbers = QVector<QPair<QString, double>>;

void addRegion(Numbers &numbers, const PlotRegion &region)
{
    const QString prefix = region.name().isEmpty() ? QString() : region.name() + QLatin1Char(' ');
    const auto add = [&](const char *name, double value) { numbers.append({prefix + QLatin1String(name), value}); };
    add("from", region.from());
    add("to", region.to());
    add("count", region.count());
    add("sum", region.sum());
    add("mean", region.mean());
    add("deviation", region.deviation());
    add("minimum", region.minimum());
    add("minimumAt", region.minimumAt());
    add("maximum", region.maximum());
    add("maximumAt", region.maximumAt());
    add("centroid", region.centroid());
    add("peakWidth", region.peakWidth());
}

/// Where each cursor stands and what the visible series are there; of two, how far the second is from the first.
void addCursors(Numbers &numbers, const QVector<PlotCursor *> &cursors, const QVector<PlotSeries *> &series)
{
    const auto add = [&](const QString &name, auto numberOf) {
        for (int i = 0; i < cursors.size(); ++i)
            numbers.append({QChar('A' + i) + QStringLiteral(" ") + name, numberOf(*cursors[i])});
        if (cursors.size() == 2)
            numbers.append({QStringLiteral("B - A ") + name, numberOf(*cursors[1]) - numberOf(*cursors[0])});
    };
    add(QStringLiteral("at"), [](const PlotCursor &cursor) { return cursor.x(); });
    for (int i = 0; i < series.size(); ++i) {
        const QString name = series[i]->name().isEmpty() ? QStringLiteral("value") : series[i]->name();
        if (series[i]->isVisible())
            add(name, [i](const PlotCursor &cursor) { return cursor.numbers().value(i); });
    }
}

/// As a cell of a table.
QString quoted(QString text)
{
    const auto isSpecial = [](QChar c) { return QLatin1String(",\"\n\r").contains(c); };
    const bool isPlain = std::none_of(text.cbegin(), text.cend(), isSpecial);
    return isPlain ? text
                   : QLatin1Char('"') + text.replace(QStringLiteral("\""), QStringLiteral("\"\"")) + QLatin1Char('"');
}

QString asText(const Numbers &numbers)
{
    QString text;
    for (const auto &number : numbers)
        text += number.first + QLatin1Char('\t') + QJSValue(number.second).toString() + QLatin1Char('\n');
    return text;
}

QString asCsv(const Numbers &numbers)
{
    QStringList names;
    QStringList values;
    for (const auto &number : numbers) {
        names.append(quoted(number.first));
        values.append(QJSValue(number.second).toString());
    }
    return names.join(QLatin1Char(',')) + QLatin1Char('\n') + values.join(QLatin1Char(',')) + QLatin1Char('\n');
}

} // namespace

PlotSeries *PlotMarks::firstSeries() const
{
    const QVector<PlotSeries *> &all = m_view.series();
    const auto visible = std::find_if(all.begin(), all.end(), [](const PlotSeries *one) { return one->isVisible(); });
    return visible == all.end() ? nullptr : *visible;
}

PlotRegion &PlotMarks::ownRegion()
{
    if (!m_ownRegion) {
        m_ownRegion = new PlotRegion(this);
        m_ownRegion->setVisible(false);
        connect(m_ownRegion, &PlotRegion::visibleChanged, this, &PlotMarks::regionShownChanged);
        addRegion(*m_ownRegion);
    }
    return *m_ownRegion;
}

bool PlotMarks::isRegionShown() const
{
    return m_ownRegion && m_ownRegion->isVisible();
}

void PlotMarks::showRegion(bool shown)
{
    if (shown == isRegionShown())
        return;
    PlotRegion &region = ownRegion();
    if (shown)
        placeRegion(region);
    region.setVisible(shown);
}

/// Around the marked peak, or else the middle of the view; on a log scale by its decades.
void PlotMarks::placeRegion(PlotRegion &region) const
{
    const PlotAxis &x = *m_view.axisX();
    const bool isAtPeak = m_peak && m_peak->isVisible();
    const double share = isAtPeak ? peakShare : regionShare;
    const double length = x.max() - x.min();
    const double middle = isAtPeak ? m_peak->x() : x.min() + length / 2.0;
    const AxisMapping shares = x.mapping(0.0, 1.0);
    const double middleShare = isAtPeak ? shares.toPixels(middle) : 0.5;
    region.setFrom(x.isLog() ? shares.toValue(middleShare - share) : middle - length * share);
    region.setTo(x.isLog() ? shares.toValue(middleShare + share) : middle + length * share);
}

void PlotMarks::markPeak(int direction)
{
    const PlotSeries *const series = firstSeries();
    if (!series)
        return;
    const bool isMarked = m_peak && m_peak->isVisible();
    const PeakSearch search(m_view, *series);
    const double from = isMarked ? m_peak->x() : direction < 0 ? m_view.axisX()->max() : m_view.axisX()->min();
    const double found = direction == 0 ? search.highest() : search.next(from, direction < 0 ? -1 : 1);
    if (std::isnan(found))
        return;
    if (!m_peak) {
        m_peak = new PlotCursor(this);
        m_peak->setVisible(false);
        addCursor(*m_peak);
    }
    m_peak->setX(found);
    m_peak->setVisible(true);
}

void PlotMarks::unmarkPeak()
{
    if (m_peak)
        m_peak->setVisible(false);
}

double PlotMarks::peakInView() const
{
    const PlotAxis &x = *m_view.axisX();
    const bool isInView = m_peak && m_peak->isVisible() && m_peak->x() >= x.min() && m_peak->x() <= x.max();
    return isInView ? m_peak->x() : std::nan("");
}

QString PlotMarks::numbers(bool asTable) const
{
    Numbers numbers;
    for (const PlotRegion *region : m_regions) {
        if (region->isVisible() && region->isValid())
            ::addRegion(numbers, *region);
    }
    QVector<PlotCursor *> cursors = shownCursors();
    cursors.removeOne(m_peak);
    if (!cursors.isEmpty())
        addCursors(numbers, cursors, m_view.series());
    PlotSeries *const series = firstSeries();
    if (series && m_peak && m_peak->isVisible()) {
        numbers.append({QStringLiteral("peak at"), m_peak->x()});
        numbers.append({QStringLiteral("peak"), series->valueAt(m_peak->x())});
    }
    if (numbers.isEmpty())
        return {};
    return asTable ? asCsv(numbers) : asText(numbers);
}
