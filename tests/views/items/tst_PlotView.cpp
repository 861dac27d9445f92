// SPDX-License-Identifier: MIT
#include "views/items/AreaSeries.h"
#include "views/items/BarSeries.h"
#include "views/items/LineSeries.h"
#include "views/items/LogValueAxis.h"
#include "views/items/OverviewStrip.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/ValueAxis.h"

#include <QtTest>

#include <memory>

class tst_PlotView : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheOrderOfItsSeries();
    void refusesASeriesTwiceAndNull();
    void forgetsASeriesThatIsDestroyed();
    void keepsTheColorsOfSeriesInItsOverview();
    void colorsASeriesThatIsGoing();
    void letsGoOfItsSeriesWhenDestroyed();
    void takesItemsAsChildrenAndTellsOfThem();
    void fallsBackToItsOwnAxis();
    void takesOneAxisForBoth();
    void letsGoOfSharedPartsAtOnce();
    void partsDoNotOutliveIt();
    void tellsOfRanges();
    void laysThePlotAreaInsideTheMargins();
    void neverMakesThePlotAreaNegative();
};

void tst_PlotView::keepsTheOrderOfItsSeries()
{
    PlotView view;
    BarSeries bars;
    LineSeries line;
    QSignalSpy spy(&view, &PlotView::seriesListChanged);
    view.addSeries(&line);
    view.addSeries(&bars);
    QCOMPARE(view.series(), (QVector<PlotSeries *>{&line, &bars}));
    QCOMPARE(view.seriesLayer()->childItems().size(), 2);
    view.removeSeries(&line);
    QCOMPARE(view.series(), (QVector<PlotSeries *>{&bars}));
    QCOMPARE(view.seriesLayer()->childItems().size(), 1);
    QCOMPARE(spy.size(), 3);
}

void tst_PlotView::refusesASeriesTwiceAndNull()
{
    PlotView view;
    BarSeries bars;
    view.addSeries(&bars);
    QSignalSpy spy(&view, &PlotView::seriesListChanged);
    view.addSeries(&bars);
    view.addSeries(nullptr);
    view.removeSeries(nullptr);
    LineSeries stranger;
    view.removeSeries(&stranger);
    QCOMPARE(spy.size(), 0);
    QCOMPARE(view.series().size(), 1);
}

void tst_PlotView::forgetsASeriesThatIsDestroyed()
{
    PlotView view;
    BarSeries first;
    auto second = std::make_unique<BarSeries>();
    view.addSeries(&first);
    view.addSeries(second.get());
    second.reset();
    QCOMPARE(view.series(), (QVector<PlotSeries *>{&first}));
    QCOMPARE(view.seriesLayer()->childItems().size(), 1);
}

void tst_PlotView::keepsTheColorsOfSeriesInItsOverview()
{
    PlotView view;
    view.setOverviewVisible(true);
    BarSeries first;
    LineSeries second;
    LineSeries third;
    view.addSeries(&first);
    view.addSeries(&second);
    QSignalSpy spy(&second, &PlotSeries::colorChanged);
    view.addSeries(&third);
    view.removeSeries(&third);
    QCOMPARE(spy.size(), 0);
}

/// A series may be in two views, and losing it may make the first one change the colors of the other one.
void tst_PlotView::colorsASeriesThatIsGoing()
{
    PlotView first;
    PlotView second;
    PlotTheme theme;
    theme.setSeriesColorList({QColor(Qt::green)});
    auto area = std::make_unique<AreaSeries>();
    first.addSeries(area.get());
    second.addSeries(area.get());
    connect(&first, &PlotView::seriesListChanged, &second, [&] { second.setTheme(&theme); });
    QSignalSpy color(area.get(), &PlotSeries::colorChanged);
    QSignalSpy border(area.get(), &AreaSeries::borderColorChanged);
    area.reset();
    QCOMPARE(color.size(), 1);
    QCOMPARE(border.size(), 0);
}

void tst_PlotView::letsGoOfItsSeriesWhenDestroyed()
{
    BarSeries bars;
    {
        PlotView view;
        view.addSeries(&bars);
    }
    bars.setVisible(false); // and nothing is there to listen
    PlotView other;
    other.addSeries(&bars);
    QCOMPARE(other.series().size(), 1);
}

void tst_PlotView::takesItemsAsChildrenAndTellsOfThem()
{
    PlotView view;
    QSignalSpy spy(&view, &PlotView::elementAdded);
    QQmlListProperty<QObject> list = view.seriesList();
    QQuickItem item;
    QObject object;
    BarSeries bars;
    list.append(&list, &item);
    list.append(&list, &object);
    list.append(&list, &bars);
    QCOMPARE(spy.size(), 2);
    QCOMPARE(item.parentItem(), &view);
    QCOMPARE(object.parent(), &view);
    QCOMPARE(list.count(&list), 1);
    QCOMPARE(list.at(&list, 0), &bars);
    list.clear(&list);
    QVERIFY(view.series().isEmpty());
    QCOMPARE(item.parentItem(), &view);
    object.setParent(nullptr);
}

void tst_PlotView::fallsBackToItsOwnAxis()
{
    PlotView view;
    PlotAxis *const own = view.axisY();
    QVERIFY(own);
    QSignalSpy spy(&view, &PlotView::axisYChanged);
    auto log = std::make_unique<LogValueAxis>();
    view.setAxisY(log.get());
    QCOMPARE(view.axisY(), log.get());
    log.reset();
    QCOMPARE(view.axisY(), own);
    view.setAxisY(nullptr);
    QCOMPARE(view.axisY(), own);
    QCOMPARE(spy.size(), 2);
}

void tst_PlotView::takesOneAxisForBoth()
{
    PlotView view;
    PlotAxis *const own = view.axisY();
    auto both = std::make_unique<ValueAxis>();
    view.setAxisX(both.get());
    view.setAxisY(both.get());
    view.setAxisX(nullptr); // and y still hears of it
    QSignalSpy spy(&view, &PlotView::rangesChanged);
    both->setRange(3.0, 4.0);
    QCOMPARE(spy.size(), 1);
    view.setAxisX(both.get());
    connect(&view, &PlotView::axisXChanged, &view, [&] { QVERIFY(view.axisY() == own); });
    both.reset();
    QCOMPARE(view.axisY(), own);
}

/// What one view tells when a series goes lets the others look at it.
void tst_PlotView::letsGoOfSharedPartsAtOnce()
{
    PlotView first;
    PlotView second;
    PlotCursor cursor;
    emit first.elementAdded(&cursor);
    emit second.elementAdded(&cursor);
    BarSeries staying;
    auto going = std::make_unique<LineSeries>();
    auto theme = std::make_unique<PlotTheme>();
    going->setValues(QVariant::fromValue(QVector<double>{1.0, 2.0}));
    for (PlotView *view : {&first, &second}) {
        view->addSeries(going.get());
        view->addSeries(&staying);
        view->setTheme(theme.get());
    }
    QCOMPARE(cursor.values().size(), 2);
    going.reset(); // the other one gets another color, which is told to all
    QCOMPARE(first.series().size(), 1);
    QCOMPARE(second.series().size(), 1);
    QCOMPARE(cursor.values().size(), 1);
    connect(&first, &PlotView::themeChanged, &first, [&] { QVERIFY(second.theme() != theme.get()); });
    QSignalSpy spy(&second, &PlotView::themeChanged);
    theme.reset();
    QVERIFY(!spy.isEmpty());
}

/// The overview has the theme of its view, which goes with the view: series change their colors then.
void tst_PlotView::partsDoNotOutliveIt()
{
    PlotView other;
    OverviewStrip strip;
    BarSeries bars;
    LineSeries line;
    PlotCursor cursor;
    {
        PlotView view;
        emit view.elementAdded(&cursor);
        for (PlotView *each : {&other, &view}) {
            each->addSeries(each == &view ? static_cast<PlotSeries *>(&bars) : &line);
            each->addSeries(each == &view ? static_cast<PlotSeries *>(&line) : &bars);
        }
        view.theme()->setSeriesColors({Qt::red, Qt::green});
        other.setTheme(view.theme());
        view.setOverviewVisible(true);
        strip.setView(&view);
    }
    QCOMPARE(other.series().size(), 2);
    QVERIFY(bars.color() != QColor(Qt::red));
}

void tst_PlotView::tellsOfRanges()
{
    PlotView view;
    PlotAxis *const first = view.axisX();
    LogValueAxis other;
    view.setAxisX(&other);
    QSignalSpy spy(&view, &PlotView::rangesChanged);
    first->setRange(3.0, 4.0);
    QCOMPARE(spy.size(), 0);
    other.setRange(3.0, 4.0);
    QCOMPARE(spy.size(), 1);
}

void tst_PlotView::laysThePlotAreaInsideTheMargins()
{
    PlotView view;
    view.setSize(QSizeF(200.0, 100.0));
    QCOMPARE(view.plotArea(), QRectF(0.0, 0.0, 200.0, 100.0));
    QSignalSpy spy(&view, &PlotView::plotAreaChanged);
    view.setPlotMargins(QMarginsF(10.3, 20.0, 30.0, 39.6));
    QCOMPARE(view.plotArea(), QRectF(10.0, 20.0, 160.0, 40.0));
    QCOMPARE(view.seriesLayer()->position(), QPointF(10.0, 20.0));
    QCOMPARE(view.seriesLayer()->size(), QSizeF(160.0, 40.0));
    QCOMPARE(spy.size(), 1);
}

void tst_PlotView::neverMakesThePlotAreaNegative()
{
    PlotView view;
    view.setSize(QSizeF(20.0, 10.0));
    view.setPlotMargins(QMarginsF(15.0, 15.0, 15.0, 15.0));
    QCOMPARE(view.plotArea().size(), QSizeF(0.0, 0.0));
}

QTEST_MAIN(tst_PlotView)
#include "tst_PlotView.moc"
