// SPDX-License-Identifier: MIT
#include "views/items/PlotMarks.h"

#include "common/Change.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotRegion.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/RectsNode.h"
#include "views/items/SeriesProbe.h"

#include <QFontMetricsF>

#include <algorithm>
#include <utility>

namespace {

constexpr double grip = 6.0; // pixels from a line at which a hand takes it
constexpr double fillOpacity = 0.12;

QString letter(int index)
{
    return index < 26 ? QString(QChar('A' + index)) : QString::number(index + 1);
}

} // namespace

PlotMarks::PlotMarks(PlotView &view)
    : QQuickItem(&view),
      m_view(view),
      m_own{new PlotCursor(this), new PlotCursor(this)},
      m_labels(this)
{
    setFlag(ItemHasContents);
    for (PlotCursor *cursor : m_own) {
        cursor->setVisible(false);
        addCursor(*cursor);
    }
    connect(&view, &PlotView::elementAdded, this, &PlotMarks::add);
    connect(&view, &PlotView::seriesListChanged, this, &PlotMarks::watchSeries);
    connect(&view, &PlotView::rangesChanged, this, &PlotMarks::look); // how precisely places are told follows the zoom
    connect(&view, &PlotView::axisXChanged, this, &PlotMarks::watchAxes);
    connect(&view, &PlotView::axisYChanged, this, &PlotMarks::watchAxes);
    connect(&view, &PlotView::plotAreaChanged, this, &QQuickItem::polish);
    connect(&view, &PlotView::themeChanged, this, &QQuickItem::polish);
    watchAxes();
}

void PlotMarks::add(QObject *element)
{
    if (auto *cursor = qobject_cast<PlotCursor *>(element))
        addCursor(*cursor);
    else if (auto *region = qobject_cast<PlotRegion *>(element))
        addRegion(*region);
}

void PlotMarks::addCursor(PlotCursor &cursor)
{
    if (m_cursors.contains(&cursor))
        return;
    m_cursors.append(&cursor);
    connect(&cursor, &PlotCursor::xChanged, this, &PlotMarks::look);
    connect(&cursor, &PlotCursor::visibleChanged, this, &PlotMarks::look);
    connect(&cursor, &QObject::destroyed, this, &PlotMarks::forget);
    look();
}

void PlotMarks::addRegion(PlotRegion &region)
{
    if (m_regions.contains(&region))
        return;
    m_regions.append(&region);
    connect(&region, &PlotRegion::fromChanged, this, &PlotMarks::look);
    connect(&region, &PlotRegion::toChanged, this, &PlotMarks::look);
    connect(&region, &PlotRegion::seriesChanged, this, &PlotMarks::look);
    connect(&region, &PlotRegion::visibleChanged, this, &PlotMarks::look);
    connect(&region, &PlotRegion::nameChanged, this, &PlotMarks::look);
    connect(&region, &QObject::destroyed, this, &PlotMarks::forget);
    look();
}

void PlotMarks::forget(QObject *mark)
{
    const auto isIt = [mark](const QObject *other) { return other == mark; };
    m_cursors.erase(std::remove_if(m_cursors.begin(), m_cursors.end(), isIt), m_cursors.end());
    m_regions.erase(std::remove_if(m_regions.begin(), m_regions.end(), isIt), m_regions.end());
    look();
}

void PlotMarks::watchSeries()
{
    for (PlotSeries *series : m_view.series()) {
        connect(series, &PlotSeries::redrawNeeded, this, &PlotMarks::tell, Qt::UniqueConnection);
        connect(series, &PlotSeries::dataChanged, this, &PlotMarks::tell, Qt::UniqueConnection);
        connect(series, &PlotSeries::visibleChanged, this, &PlotMarks::tell, Qt::UniqueConnection);
        connect(series, &PlotSeries::nameChanged, this, &PlotMarks::tell, Qt::UniqueConnection);
    }
    look();
}

void PlotMarks::watchAxes()
{
    for (PlotAxis *axis : {m_view.axisX(), m_view.axisY()})
        connect(axis, &PlotAxis::lookChanged, this, &PlotMarks::tell, Qt::UniqueConnection);
    tell();
}

/// What they tell is always up to date; where they stand is drawn with the next frame.
void PlotMarks::look()
{
    tell();
    if (m_hasMarks || !m_look.lines.isEmpty())
        polish();
}

/// Values that come change what marks tell, but not where they stand: a frame is asked for only if there's news.
void PlotMarks::tell()
{
    const bool hadMarks = std::exchange(m_hasMarks, !shownCursors().isEmpty() || !m_regions.isEmpty());
    if (!m_hasMarks && !hadMarks) // most plots, for each value that comes
        return;
    for (PlotCursor *cursor : qAsConst(m_cursors)) {
        if (cursor->isVisible())
            cursor->look(m_view);
        else
            cursor->forgetValues();
    }
    for (PlotRegion *region : qAsConst(m_regions))
        region->look(m_view);
    if (change(m_panels, panelsNow()))
        emit panelsChanged();
}

QVector<PlotCursor *> PlotMarks::shownCursors() const
{
    QVector<PlotCursor *> shown;
    std::copy_if(m_cursors.begin(), m_cursors.end(), std::back_inserter(shown),
                 [](const PlotCursor *cursor) { return cursor->isVisible(); });
    return shown;
}

void PlotMarks::cycleCursors()
{
    const int shown = int(m_own[0]->isVisible()) + int(m_own[1]->isVisible());
    if (shown == 2) {
        m_own[0]->setVisible(false);
        m_own[1]->setVisible(false);
        return;
    }
    m_walker = m_own[shown]; // before it tells anything: whoever listens asks for the walker
    m_walker->setX(m_view.axisX()->mapping(0.0, 1.0).toValue(shown == 0 ? 0.5 : 0.75));
    m_walker->setVisible(true);
}

PlotCursor *PlotMarks::walker()
{
    if (m_walker && m_walker->isVisible())
        return m_walker;
    const QVector<PlotCursor *> shown = shownCursors();
    if (shown.isEmpty())
        cycleCursors();
    else
        m_walker = shown.last();
    return m_walker;
}

void PlotMarks::walk(int direction)
{
    PlotCursor *const cursor = walker();
    const AxisMapping mapping = m_view.mappingX();
    if (!mapping.isValid())
        return;
    const double here = mapping.toPixels(cursor->x());
    double next = here + direction / m_view.pixelRatio();
    for (const PlotSeries *series : m_view.series()) {
        const SeriesProbe probe(*series);
        const qint64 index = series->isVisible() ? probe.nearest(cursor->x()) : -1;
        const qint64 neighbour = index + direction;
        if (index < 0 || neighbour < probe.values().begin() || neighbour >= probe.values().end())
            continue;
        const double there = mapping.toPixels(probe.xOf(neighbour));
        if ((there - next) * direction > 0.0)
            next = there; // no stop between two values
        break;
    }
    cursor->setX(mapping.toValue(qBound(m_view.plotArea().left(), next, m_view.plotArea().right())));
}

QString PlotMarks::spoken() const
{
    if (!m_walker || !m_walker->isVisible())
        return {};
    const PlotAxis &x = *m_view.axisX();
    QStringList parts{x.valueText(m_walker->x(), std::abs(1.0 / m_view.mappingX().pixelsPerUnit()))};
    for (int i = 0; i < m_view.series().size() && i < m_walker->numbers().size(); ++i) {
        const PlotSeries &series = *m_view.series().at(i);
        if (!series.isVisible())
            continue;
        const double number = m_walker->numbers().at(i);
        const QString value = std::isnan(number) ? tr("no value") : m_view.axisY()->valueText(number, 0.0);
        parts.append(series.name().isEmpty() ? value : series.name() + QLatin1Char(' ') + value);
    }
    return parts.join(QStringLiteral(", "));
}

bool PlotMarks::take(const QPointF &position)
{
    const AxisMapping mapping = m_view.mappingX();
    const auto distance = [&](double x) { return std::abs(mapping.toPixels(x) - position.x()); };
    m_taken = {};
    for (PlotCursor *cursor : shownCursors()) {
        if (distance(cursor->x()) <= grip)
            m_taken.cursor = cursor;
    }
    if (m_taken.cursor) {
        m_walker = m_taken.cursor;
        return true;
    }
    for (PlotRegion *region : qAsConst(m_regions)) {
        if (!region->isVisible())
            continue;
        const double from = mapping.toPixels(region->from());
        const double to = mapping.toPixels(region->to());
        const bool isInside = position.x() > from && position.x() < to;
        const bool isFrom = std::abs(from - position.x()) <= grip;
        const bool isTo = std::abs(to - position.x()) <= grip;
        if (isInside || isFrom || isTo)
            m_taken = {nullptr, region, isFrom || !isTo, isTo || !isFrom, from - position.x(), to - position.x()};
    }
    return m_taken.region;
}

void PlotMarks::drag(const QPointF &position)
{
    const AxisMapping mapping = m_view.mappingX();
    const QRectF area = m_view.plotArea();
    const auto valueAt = [&](double pixels) { return mapping.toValue(qBound(area.left(), pixels, area.right())); };
    if (m_taken.cursor)
        m_taken.cursor->setX(valueAt(position.x()));
    PlotRegion *const region = m_taken.region;
    if (!region)
        return;
    const double from = valueAt(position.x() + m_taken.fromGrip);
    const double to = valueAt(position.x() + m_taken.toGrip);
    if (m_taken.holdsFrom && (m_taken.holdsTo || from < region->to()))
        region->setFrom(from);
    if (m_taken.holdsTo && (m_taken.holdsFrom || to > region->from()))
        region->setTo(to);
}

SMarksLook PlotMarks::lookOn(const SPlotGround &ground) const
{
    const QRectF &area = ground.plotArea;
    const AxisMapping mapping = m_view.axisX()->mapping(area.left(), area.right());
    SMarksLook look;
    look.color = m_view.theme()->accentColor();
    look.fillColor = look.color;
    look.fillColor.setAlphaF(fillOpacity);
    const auto addLine = [&](double x) {
        const double pixels = mapping.toPixels(x);
        const bool isInside = pixels >= area.left() && pixels <= area.right();
        if (isInside)
            look.lines.append(
                {std::floor(pixels * ground.ratio) / ground.ratio, area.top(), ground.line, area.height()});
        return isInside;
    };
    const QVector<PlotCursor *> shown = shownCursors();
    const double height = QFontMetricsF(m_view.theme()->font()).height();
    for (int i = 0; i < shown.size(); ++i) {
        if (addLine(shown[i]->x()))
            look.letters.append(
                {letter(i), {mapping.toPixels(shown[i]->x()) + 4.0, area.bottom() - height * 0.7}, SLabel::Left});
    }
    for (const PlotRegion *region : m_regions) {
        if (!region->isVisible() || !(region->from() < region->to()))
            continue;
        addLine(region->from());
        addLine(region->to());
        const double left = std::max(mapping.toPixels(region->from()), area.left());
        const double right = std::min(mapping.toPixels(region->to()), area.right());
        if (left < right)
            look.fills.append({left, area.top(), right - left, area.height()});
    }
    return look;
}

void PlotMarks::updatePolish()
{
    setSize(m_view.size());
    const double ratio = m_view.pixelRatio();
    m_look = lookOn({m_view.plotArea(), ratio, 1.0 / ratio});
    m_labels.show(m_look.letters, m_view.theme()->font(), m_look.color, ratio);
    update();
}

QSGNode *PlotMarks::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *marks = static_cast<FramedRectsNode *>(node);
    if (!marks)
        marks = new FramedRectsNode(*window());
    marks->fills.show(m_look.fills, m_look.fillColor);
    marks->lines.show(m_look.lines, m_look.color);
    return marks;
}
