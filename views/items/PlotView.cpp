// SPDX-License-Identifier: MIT
#include "views/items/PlotView.h"

#include "common/Change.h"
#include "views/items/LeftOut.h"
#include "views/items/OverviewStrip.h"
#include "views/items/PlotEars.h"
#include "views/items/PlotFiles.h"
#include "views/items/PlotFrame.h"
#include "views/items/PlotHands.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotReadout.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotZoom.h"
#include "views/items/SeriesItem.h"
#include "views/items/ValueAxis.h"

#include <QQuickWindow>

#include <algorithm>
#include <cmath>

PlotView::PlotView(QQuickItem *parent)
    : QQuickItem(parent),
      m_ownAxisX(new ValueAxis(this)),
      m_ownAxisY(new ValueAxis(this)),
      m_ownTheme(new PlotTheme(this)),
      m_seriesLayer(new QQuickItem(this))
{
    exchangeAxis(m_axisX, nullptr, m_ownAxisX);
    exchangeAxis(m_axisY, nullptr, m_ownAxisY);
    takeTheme(m_ownTheme);
    connect(this, &PlotView::seriesListChanged, this, &PlotView::colorSeries);
    connect(this, &PlotView::themeChanged, this, &PlotView::colorSeries);
    m_zoom = std::make_unique<PlotZoom>(*this);
    connect(m_zoom.get(), &PlotZoom::followingChanged, this, &PlotView::followingChanged);
    m_frame = new PlotFrame(*this);
    m_marks = new PlotMarks(*this);
    m_hands = new PlotHands(*this);
    m_readout = std::make_unique<PlotReadout>(*this);
    m_leftOut = std::make_unique<LeftOut>(*this);
    connect(m_leftOut.get(), &LeftOut::changed, this, &PlotView::leftOutCountChanged);
    connect(m_marks, &PlotMarks::regionShownChanged, this, &PlotView::regionVisibleChanged);
    m_ears = std::make_unique<PlotEars>(*this);
    connect(m_hands, &PlotHands::pointed, m_readout.get(), &PlotReadout::point);
    connect(m_hands, &PlotHands::left, m_readout.get(), &PlotReadout::leave);
    m_files = std::make_unique<PlotFiles>();
    connect(m_files.get(), &PlotFiles::saved, this, &PlotView::tellSaved);
    setActiveFocusOnTab(true);
    m_frame->stackBefore(m_seriesLayer);
    m_seriesLayer->setClip(true);
}

PlotView::~PlotView()
{
    // Its parts look at it, and hear of series and themes that change while the other children go.
    delete m_overlay;
    delete m_overview;
    m_overview = nullptr;
    delete m_marks;
    delete m_hands;
    qDeleteAll(m_pictures);
    delete m_frame;
    for (PlotSeries *series : qAsConst(m_series))
        disconnect(series, nullptr, this, nullptr);
    disconnect(m_axisX, nullptr, this, nullptr);
    disconnect(m_axisY, nullptr, this, nullptr);
    disconnect(m_theme, nullptr, this, nullptr);
}

void PlotView::setAxisX(PlotAxis *axis)
{
    if (!exchangeAxis(m_axisX, axis, m_ownAxisX))
        return;
    emit axisXChanged();
    emit rangesChanged();
}

void PlotView::setAxisY(PlotAxis *axis)
{
    if (!exchangeAxis(m_axisY, axis, m_ownAxisY))
        return;
    emit axisYChanged();
    emit rangesChanged();
}

bool PlotView::exchangeAxis(PlotAxis *&stored, PlotAxis *axis, PlotAxis *own)
{
    PlotAxis *const next = axis ? axis : own;
    if (stored == next)
        return false;
    const PlotAxis *const other = &stored == &m_axisX ? m_axisY : m_axisX;
    if (stored && stored != other) // one axis may be both
        disconnect(stored, nullptr, this, nullptr);
    stored = next;
    connect(next, &PlotAxis::rangeChanged, this, &PlotView::rangesChanged, Qt::UniqueConnection);
    connect(next, &PlotAxis::aboutToGo, this, &PlotView::forgetAxis, Qt::UniqueConnection);
    return true;
}

void PlotView::forgetAxis(QObject *axis)
{
    // Both are replaced before anybody hears of it.
    const bool isX = m_axisX == axis;
    const bool isY = m_axisY == axis;
    if (isX)
        exchangeAxis(m_axisX, nullptr, m_ownAxisX);
    if (isY)
        exchangeAxis(m_axisY, nullptr, m_ownAxisY);
    if (isX)
        emit axisXChanged();
    if (isY)
        emit axisYChanged();
    if (isX || isY)
        emit rangesChanged();
}

void PlotView::setTheme(PlotTheme *theme)
{
    PlotTheme *const next = theme ? theme : m_ownTheme;
    if (next == m_theme)
        return;
    disconnect(m_theme, nullptr, this, nullptr);
    takeTheme(next);
    emit themeChanged();
}

void PlotView::takeTheme(PlotTheme *theme)
{
    m_theme = theme;
    connect(theme, &PlotTheme::changed, this, &PlotView::themeChanged);
    connect(theme, &PlotTheme::aboutToGo, this, &PlotView::forgetTheme);
}

void PlotView::forgetTheme()
{
    takeTheme(m_ownTheme); // and then the other one tells of a change, when no view has it any more
}

/// Series take the theme's colors in the order in which they lie over each other.
void PlotView::colorSeries()
{
    for (int i = 0; i < m_series.size(); ++i)
        m_series.at(i)->setViewColor(m_theme->seriesColor(i));
}

void PlotView::setTitle(const QString &title)
{
    if (!change(m_title, title))
        return;
    emit titleChanged();
}

void PlotView::addSeries(PlotSeries *series)
{
    if (!series || m_series.contains(series))
        return;
    m_series.append(series);
    m_pictures.append(new SeriesItem(*this, *series, m_seriesLayer));
    connect(series, &PlotSeries::aboutToGo, this, &PlotView::forgetSeries);
    emit seriesListChanged();
}

void PlotView::removeSeries(PlotSeries *series)
{
    if (!series)
        return;
    disconnect(series, nullptr, this, nullptr);
    forgetSeries(series);
}

void PlotView::removeAllSeries()
{
    while (!m_series.isEmpty())
        removeSeries(m_series.last());
}

void PlotView::forgetSeries(QObject *series)
{
    const auto found = std::find(m_series.begin(), m_series.end(), series);
    if (found == m_series.end())
        return;
    delete m_pictures.takeAt(int(found - m_series.begin()));
    m_series.erase(found);
    emit seriesListChanged();
}

void PlotView::setPlotMargins(const QMarginsF &margins)
{
    if (!change(m_margins, margins))
        return;
    layOut();
}

double PlotView::pixelRatio() const
{
    return window() ? window()->effectiveDevicePixelRatio() : 1.0;
}

void PlotView::geometryChanged(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChanged(now, before);
    layOut();
}

void PlotView::itemChange(ItemChange kind, const ItemChangeData &data)
{
    QQuickItem::itemChange(kind, data);
    if (kind == ItemDevicePixelRatioHasChanged || kind == ItemSceneChange) {
        emit pixelRatioChanged();
        layOut();
    }
}

void PlotView::layOut()
{
    const double ratio = pixelRatio();
    const auto whole = [ratio](double place) { return std::round(place * ratio) / ratio; };
    const QSizeF size = layoutSize();
    const double left = whole(m_margins.left());
    const double top = whole(m_margins.top());
    const double right = std::max(left, whole(size.width() - m_margins.right()));
    const double bottom = std::max(top, whole(size.height() - m_margins.bottom()));
    if (!change(m_plotArea, QRectF(left, top, right - left, bottom - top)))
        return;
    m_seriesLayer->setPosition(m_plotArea.topLeft());
    m_seriesLayer->setSize(m_plotArea.size());
    emit plotAreaChanged();
}

QQmlListProperty<QObject> PlotView::seriesList()
{
    return QQmlListProperty<QObject>(this, nullptr, appendElement, countSeries, seriesAt, clearSeries);
}

void PlotView::appendElement(QQmlListProperty<QObject> *list, QObject *element)
{
    auto *view = static_cast<PlotView *>(list->object);
    if (auto *series = qobject_cast<PlotSeries *>(element)) {
        view->addSeries(series);
        return;
    }
    QQmlListProperty<QObject> data = view->property("data").value<QQmlListProperty<QObject>>();
    data.append(&data, element);
    emit view->elementAdded(element);
}

int PlotView::countSeries(QQmlListProperty<QObject> *list)
{
    return int(static_cast<PlotView *>(list->object)->m_series.size());
}

QObject *PlotView::seriesAt(QQmlListProperty<QObject> *list, int index)
{
    return static_cast<PlotView *>(list->object)->m_series.value(index);
}

void PlotView::clearSeries(QQmlListProperty<QObject> *list)
{
    static_cast<PlotView *>(list->object)->removeAllSeries();
}
