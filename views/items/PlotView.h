// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/PlotAxis.h"

#include <QMarginsF>
#include <QQmlListProperty>
#include <QQuickItem>
#include <QVector>

class PlotFrame;
class PlotSeries;
class PlotTheme;

// The view holds what belongs together and no more: two axes, the list of series, the plot area. Whoever adds to it:
//   pictures of series     SeriesItem, one for each series, children of seriesLayer(); made here
//   axes, grid, labels     items of their own, children of the view; they tell what room they need by setPlotMargins()
//   hands                  classes of their own that filter the view's events and set the axes' ranges
//   cursors, regions, ...  declared inside the view: elementAdded() tells of everything that isn't a series

/// A plot: series over a common pair of axes, drawn by the scene graph's own nodes. GUI thread.
class PlotView : public QQuickItem
{
    Q_OBJECT
    /// Never null. An axis that is given stays the giver's; when it's destroyed, or null is set, the view's own
    /// returns.
    Q_PROPERTY(PlotAxis *axisX READ axisX WRITE setAxisX NOTIFY axisXChanged)
    Q_PROPERTY(PlotAxis *axisY READ axisY WRITE setAxisY NOTIFY axisYChanged)
    /// Colors and font. Never null; a theme that is given stays the giver's and may serve many views.
    Q_PROPERTY(PlotTheme *theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    /// Where the values are drawn, in coordinates of the view; it lies on whole device pixels, counted from the view's
    /// corner.
    Q_PROPERTY(QRectF plotArea READ plotArea NOTIFY plotAreaChanged)
    /// What is declared inside the view: series are drawn in that order, the last on top, items become children of the
    /// view, other objects are kept. Read, it lists the series alone.
    Q_PROPERTY(QQmlListProperty<QObject> seriesList READ seriesList NOTIFY seriesListChanged)
    Q_CLASSINFO("DefaultProperty", "seriesList")

public:
    explicit PlotView(QQuickItem *parent = nullptr);
    ~PlotView() override;

    PlotAxis *axisX() const { return m_axisX; }
    void setAxisX(PlotAxis *axis);
    PlotAxis *axisY() const { return m_axisY; }
    void setAxisY(PlotAxis *axis);
    PlotTheme *theme() const { return m_theme; }
    void setTheme(PlotTheme *theme);
    QString title() const { return m_title; }
    void setTitle(const QString &title);
    QRectF plotArea() const { return m_plotArea; }
    QQmlListProperty<QObject> seriesList();

    /// Adds a series on top of the others. It stays its maker's; a series that is null or in the view already changes
    /// nothing. A series can be in several views.
    Q_INVOKABLE void addSeries(PlotSeries *series);
    Q_INVOKABLE void removeSeries(PlotSeries *series);

    // Called by the view's parts.

    const QVector<PlotSeries *> &series() const { return m_series; }
    /// The clipped item under all that is drawn of the series; it covers the plot area.
    QQuickItem *seriesLayer() const { return m_seriesLayer; }
    PlotFrame *frame() const { return m_frame; }
    /// The room around the plot area for labels, titles, the overview strip.
    void setPlotMargins(const QMarginsF &margins);
    QMarginsF plotMargins() const { return m_margins; }
    /// Device pixels of one item pixel, 1 outside of a window.
    double pixelRatio() const;

signals:
    void axisXChanged();
    void axisYChanged();
    /// Another theme, or the same with other colors.
    void themeChanged();
    void titleChanged();
    void plotAreaChanged();
    void seriesListChanged();

    /// Something that isn't a series was declared inside the view, or is added to its list from C++.
    void elementAdded(QObject *element);
    /// After either axis shows another part, whoever moved it; once for each change.
    void rangesChanged();
    /// The window's pixel ratio is another one.
    void pixelRatioChanged();

protected:
    void geometryChanged(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange kind, const ItemChangeData &data) override;

private:
    static void appendElement(QQmlListProperty<QObject> *list, QObject *element);
    static int countSeries(QQmlListProperty<QObject> *list);
    static QObject *seriesAt(QQmlListProperty<QObject> *list, int index);
    static void clearSeries(QQmlListProperty<QObject> *list);

    bool exchangeAxis(PlotAxis *&stored, PlotAxis *axis, PlotAxis *own);
    void forgetAxis(QObject *axis);
    void forgetTheme();
    void takeTheme(PlotTheme *theme);
    void colorSeries();
    void forgetSeries(QObject *series);
    void layOut();

    QString m_title;
    PlotAxis *const m_ownAxisX;
    PlotAxis *const m_ownAxisY;
    PlotTheme *const m_ownTheme;
    PlotAxis *m_axisX = nullptr;
    PlotAxis *m_axisY = nullptr;
    PlotTheme *m_theme = nullptr;
    QVector<PlotSeries *> m_series;
    PlotFrame *m_frame;
    QQuickItem *m_seriesLayer;
    QRectF m_plotArea;
    QMarginsF m_margins;
};
