// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "plotters/BarPlotter.h"
#include "tests/support/MetaTable.h"
#include "tests/support/ProbePlotter.h"
#include "tests/support/QuietTest.h"

#include <QtTest>

#include <limits>
#include <memory>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_ChartArea : public QuietTest
{
    Q_OBJECT

private slots:
    void itsMetaObjectIsExactlyAsDescribed();
    void aFreshAreaHasTheDefaults();
    void plottersSeeTheZoomRectangleAndTheChartRectangleStays();
    void settingTheZoomStoresItUnclippedAndRequests();
    void settingAFuzzilyEqualZoomIsNoChange();
    void adaptChartHeightEmitsOnlyOnChangeAndRequestsNothing();

    void aZoomOutsideTheChartBecomesTheChart_data();
    void aZoomOutsideTheChartBecomesTheChart();
    void aZoomIsCutWithTheChart();
    void withoutAdaptionTheHeightIsTheCharts();
    void maximaBelowOneGiveTheLeastHeight();
    void theHeightFollowsTheLargestVisibleMaximum();
    void invisiblePlottersDoNotCount();
    void aMaximumThatIsNotANumberCountsForNothing();
    void maximaAreAskedForTheUnclippedZoom();
    void aZoomAboveTheDataKeepsItsTop();
    void aChangedZoomRequestsOnceFromWithin();
    void strangeRectanglesEndTheNestedRequests_data();
    void strangeRectanglesEndTheNestedRequests();

    void resetShowsTheChartRectangleAndEmitsOnlyOnChange();
    void pointsAreMappedAgainstTheZoom();
    void exportImageWithoutAWindowSaysSoAndHoldsNothing();
    void handlersMayDestroyTheArea_data();
    void handlersMayDestroyTheArea();
};

void tst_ChartArea::itsMetaObjectIsExactlyAsDescribed()
{
    const QMetaObject &meta = ChartArea::staticMetaObject;
    QCOMPARE(ownProperties(meta),
             (QStringList{
                 "zoomRect QRectF write zoomRectChanged",
                 "adaptChartHeight bool write adaptChartHeightChanged",
             }));
    QCOMPARE(ownSignals(meta), (QStringList{"zoomRectChanged()", "adaptChartHeightChanged()"}));
    QCOMPARE(ownMethods(meta),
             (QStringList{
                 "QPointF mapPointToChart(QPointF)",
                 "void resetZoomView()",
                 "void exportImage(QString)",
             }));
    QCOMPARE(meta.superClass(), &IChartArea::staticMetaObject);
}

void tst_ChartArea::aFreshAreaHasTheDefaults()
{
    const ChartArea area;
    QCOMPARE(area.zoomRect(), QRectF(0.0, 0.0, 1.0, 1.0));
    QCOMPARE(area.chartRect(), QRectF(0.0, 0.0, 1.0, 1.0));
    QVERIFY(area.adaptChartHeight());
}

void tst_ChartArea::plottersSeeTheZoomRectangleAndTheChartRectangleStays()
{
    ChartArea area;
    area.setShouldUpdate(false);
    area.setZoomRect({0.25, 0.0, 0.5, 1.0});
    const IChartArea &base = area;
    QCOMPARE(base.viewRect(), QRectF(0.25, 0.0, 0.5, 1.0));
    QCOMPARE(area.property("chartRect").toRectF(), QRectF(0.0, 0.0, 1.0, 1.0));
}

void tst_ChartArea::settingTheZoomStoresItUnclippedAndRequests()
{
    ChartArea area;
    area.setShouldUpdate(false);
    QSignalSpy changed(&area, &ChartArea::zoomRectChanged);
    area.setZoomRect({-5.0, -5.0, 100.0, 100.0});
    QCOMPARE(area.zoomRect(), QRectF(-5.0, -5.0, 100.0, 100.0));
    QCOMPARE(changed.count(), 1);
    area.setShouldUpdate(true);
    area.setZoomRect({-6.0, -5.0, 100.0, 100.0}); // accepted now: fitted at once
    QCOMPARE(area.zoomRect(), QRectF(0.0, 0.0, 1.0, 1.05));
    QCOMPARE(changed.count(), 3);
}

void tst_ChartArea::settingAFuzzilyEqualZoomIsNoChange()
{
    ChartArea area;
    QSignalSpy changed(&area, &ChartArea::zoomRectChanged);
    QSignalSpy fitted(&area, &IChartArea::chartRectChanged);
    area.setZoomRect({0.0, 0.0, 1.0 + 1e-13, 1.0});
    QCOMPARE(changed.count(), 0);
    QCOMPARE(fitted.count(), 0); // no request either
    QVERIFY(area.zoomRect().width() == 1.0);
}

void tst_ChartArea::adaptChartHeightEmitsOnlyOnChangeAndRequestsNothing()
{
    ChartArea area;
    QSignalSpy changed(&area, &ChartArea::adaptChartHeightChanged);
    QSignalSpy fitted(&area, &IChartArea::chartRectChanged);
    area.setAdaptChartHeight(true);
    QCOMPARE(changed.count(), 0);
    area.setAdaptChartHeight(false);
    area.setAdaptChartHeight(false);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(fitted.count(), 0);
}

// fitting

void tst_ChartArea::aZoomOutsideTheChartBecomesTheChart_data()
{
    QTest::addColumn<bool>("adaptHeight");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("height fitted") << true << QRectF(0.0, 0.0, 10.0, 8.0 * 1.05);
    QTest::newRow("height of the chart") << false << QRectF(0.0, 0.0, 10.0, 20.0);
}

void tst_ChartArea::aZoomOutsideTheChartBecomesTheChart()
{
    QFETCH(bool, adaptHeight);
    QFETCH(QRectF, expected);
    ChartArea area;
    ProbePlotter plotter;
    plotter.maximum = [](const QRectF &) { return 8.0; };
    area.addPlotter(&plotter);
    area.setAdaptAreaToPlotters(false);
    area.setAdaptChartHeight(adaptHeight);
    area.setChartRect({0.0, 0.0, 10.0, 20.0});
    area.setShouldUpdate(false);
    area.setZoomRect({30.0, 40.0, 5.0, 5.0});
    area.updateChartRect();
    QCOMPARE(area.zoomRect(), expected);
}

void tst_ChartArea::aZoomIsCutWithTheChart()
{
    ChartArea area;
    area.setShouldUpdate(false);
    area.setAdaptAreaToPlotters(false);
    area.setChartRect({0.0, 0.0, 10.0, 20.0});
    area.setZoomRect({-4.0, 2.0, 8.0, 100.0});
    area.updateChartRect();
    QCOMPARE(area.zoomRect(), QRectF(0.0, 2.0, 4.0, 1.05));
}

void tst_ChartArea::withoutAdaptionTheHeightIsTheCharts()
{
    ChartArea area;
    area.setShouldUpdate(false);
    area.setAdaptAreaToPlotters(false);
    area.setAdaptChartHeight(false);
    area.setChartRect({0.0, 0.0, 10.0, 20.0});
    area.setZoomRect({2.0, 5.0, 3.0, 4.0});
    area.updateChartRect();
    QCOMPARE(area.zoomRect(), QRectF(2.0, 5.0, 3.0, 15.0)); // from its top to the end of the chart
}

void tst_ChartArea::maximaBelowOneGiveTheLeastHeight()
{
    ChartArea area;
    ProbePlotter small, negative;
    small.maximum = [](const QRectF &) { return 0.25; };
    negative.maximum = [](const QRectF &) { return -infinity; };
    small.setPlotterArea({0.0, 0.0, 4.0, 0.25});
    area.setPlotter({&small, &negative});
    QCOMPARE(area.zoomRect().height(), 1.05);
}

void tst_ChartArea::theHeightFollowsTheLargestVisibleMaximum()
{
    ChartArea area;
    ProbePlotter low, high;
    low.maximum = [](const QRectF &) { return 3.0; };
    high.maximum = [](const QRectF &) { return 7.0; };
    area.setPlotter({&high, &low});
    area.updateChartRect();
    QCOMPARE(area.zoomRect().height(), 7.0 * 1.05);
}

void tst_ChartArea::invisiblePlottersDoNotCount()
{
    ChartArea area;
    ProbePlotter low, high;
    low.maximum = [](const QRectF &) { return 3.0; };
    high.maximum = [](const QRectF &) { return 7.0; };
    high.setVisible(false);
    area.setPlotter({&high, &low});
    area.updateChartRect();
    QCOMPARE(area.zoomRect().height(), 3.0 * 1.05);
    QCOMPARE(high.queries(), 0);
}

void tst_ChartArea::aMaximumThatIsNotANumberCountsForNothing()
{
    ChartArea area;
    ProbePlotter strange, before, after;
    strange.maximum = [](const QRectF &) { return notANumber; };
    before.maximum = [](const QRectF &) { return 4.0; };
    after.maximum = [](const QRectF &) { return 5.0; };
    area.setPlotter({&before, &strange, &after});
    area.updateChartRect();
    QCOMPARE(area.zoomRect().height(), 5.0 * 1.05);
    area.setPlotter({&before, &strange});
    area.updateChartRect();
    QCOMPARE(area.zoomRect().height(), 4.0 * 1.05);
    area.setPlotter({&strange});
    area.updateChartRect();
    QCOMPARE(area.zoomRect().height(), 1.05);
}

void tst_ChartArea::maximaAreAskedForTheUnclippedZoom()
{
    ChartArea area;
    ProbePlotter plotter;
    area.setShouldUpdate(false);
    area.addPlotter(&plotter);
    area.setZoomRect({-50.0, -60.0, 700.0, 800.0});
    area.updateChartRect();
    QCOMPARE(plotter.queriedArea(), QRectF(-50.0, -60.0, 700.0, 800.0));
}

void tst_ChartArea::aZoomAboveTheDataKeepsItsTop()
{
    ChartArea area;
    area.setShouldUpdate(false);
    area.setAdaptAreaToPlotters(false);
    area.setChartRect({0.0, 0.0, 10.0, 20.0});
    area.setZoomRect({1.0, 7.0, 2.0, 2.0});
    area.updateChartRect();
    QCOMPARE(area.zoomRect(), QRectF(1.0, 7.0, 2.0, 1.05));
    area.setAdaptChartHeight(true);
    area.updateChartRect();
    QCOMPARE(area.zoomRect(), QRectF(1.0, 7.0, 2.0, 1.05)); // settled
}

void tst_ChartArea::aChangedZoomRequestsOnceFromWithin()
{
    ChartArea area;
    area.setUpdateIntervalMs(0);
    ProbePlotter plotter;
    plotter.setPlotterArea({0.0, 0.0, 10.0, 10.0});
    area.addPlotter(&plotter);
    const int before = plotter.queries();
    area.setZoomRect({2.0, 0.0, 4.0, 4.0});
    QCOMPARE(plotter.queries() - before, 2); // the request, and the one that its fit made
    QCOMPARE(area.zoomRect(), QRectF(2.0, 0.0, 4.0, 1.05));
    QSignalSpy changed(&area, &ChartArea::zoomRectChanged);
    area.requestUpdate();
    QCOMPARE(changed.count(), 0);
}

void tst_ChartArea::strangeRectanglesEndTheNestedRequests_data()
{
    QTest::addColumn<QRectF>("plotterArea");
    QTest::addColumn<QRectF>("zoom");
    QTest::addColumn<double>("maximum");
    const QRectF unit(0.0, 0.0, 1.0, 1.0);
    QTest::newRow("endless value") << QRectF(0.0, 0.0, 1.0, infinity) << unit << infinity;
    QTest::newRow("endless zoom") << unit << QRectF(-infinity, -infinity, infinity, infinity) << 2.0;
    QTest::newRow("endless both") << QRectF(0.0, 0.0, infinity, infinity) << QRectF(0.0, 0.0, infinity, infinity)
                                  << infinity;
    QTest::newRow("zoom not a number") << unit << QRectF(notANumber, notANumber, notANumber, notANumber) << 2.0;
    QTest::newRow("width not a number") << unit << QRectF(0.0, 0.0, notANumber, 1.0) << 2.0;
    QTest::newRow("chart not a number") << QRectF(0.0, notANumber, 1.0, notANumber) << unit << 2.0;
    QTest::newRow("all not a number") << QRectF(notANumber, notANumber, notANumber, notANumber)
                                      << QRectF(notANumber, 0.0, notANumber, 0.0) << notANumber;
    QTest::newRow("negative zoom") << QRectF(0.0, 0.0, 10.0, 10.0) << QRectF(8.0, 5.0, -4.0, -5.0) << 2.0;
    QTest::newRow("null zoom") << QRectF(0.0, 0.0, 10.0, 10.0) << QRectF() << 2.0;
}

void tst_ChartArea::strangeRectanglesEndTheNestedRequests()
{
    QFETCH(QRectF, plotterArea);
    QFETCH(QRectF, zoom);
    QFETCH(double, maximum);
    ChartArea area;
    ProbePlotter plotter;
    plotter.maximum = [maximum](const QRectF &) { return maximum; };
    plotter.setPlotterArea(plotterArea);
    area.setUpdateIntervalMs(0);
    area.addPlotter(&plotter);
    int before = plotter.queries();
    area.setZoomRect(zoom);
    QVERIFY(plotter.queries() - before <= 5);
    before = plotter.queries();
    area.resetZoomView();
    area.requestUpdate();
    QVERIFY(plotter.queries() - before <= 10);
}

// invokables

void tst_ChartArea::resetShowsTheChartRectangleAndEmitsOnlyOnChange()
{
    ChartArea area;
    area.setShouldUpdate(false);
    QSignalSpy changed(&area, &ChartArea::zoomRectChanged);
    area.resetZoomView();
    QCOMPARE(changed.count(), 0);
    area.setChartRect({1.0, 2.0, 3.0, 4.0});
    area.resetZoomView();
    area.resetZoomView();
    QCOMPARE(area.zoomRect(), QRectF(1.0, 2.0, 3.0, 4.0));
    QCOMPARE(changed.count(), 1);
}

void tst_ChartArea::pointsAreMappedAgainstTheZoom()
{
    ChartArea area;
    area.setShouldUpdate(false);
    area.setSize({200.0, 100.0});
    area.setChartRect({0.0, 0.0, 10.0, 10.0});
    area.setZoomRect({2.0, 1.0, 4.0, 5.0});
    QCOMPARE(area.mapPointToChart({3.0, 2.0}), QPointF(50.0, 80.0));
    QCOMPARE(area.mapPointToChart({1.0, 2.0}), QPointF(-1.0, -1.0)); // in the chart, not in the zoom
    QPointF mapped;
    QVERIFY(QMetaObject::invokeMethod(&area, "mapPointToChart", Q_RETURN_ARG(QPointF, mapped),
                                      Q_ARG(QPointF, QPointF(3.0, 2.0))));
    QCOMPARE(mapped, QPointF(50.0, 80.0));
}

void tst_ChartArea::exportImageWithoutAWindowSaysSoAndHoldsNothing()
{
    ChartArea area;
    area.setSize({200.0, 100.0});
    area.exportImage(QStringLiteral("/tmp/never.png"));
    QCOMPARE(m_log->messages().size(), 1); // Qt's own
    QVERIFY(m_log->messages().first().contains(QLatin1String("grabToImage")));
    m_log->clear();
}

void tst_ChartArea::handlersMayDestroyTheArea_data()
{
    QTest::addColumn<int>("action");
    QTest::newRow("zoom") << 0;
    QTest::newRow("reset") << 1;
    QTest::newRow("request, at the chart rectangle") << 2;
    QTest::newRow("request, at the zoom rectangle") << 3;
}

void tst_ChartArea::handlersMayDestroyTheArea()
{
    QFETCH(int, action);
    auto *area = new ChartArea;
    const QPointer<ChartArea> alive(area);
    area->setUpdateIntervalMs(0);
    area->setChartRect({0.0, 0.0, 5.0, 5.0});
    if (action == 2)
        connect(area, &IChartArea::chartRectChanged, [area] { delete area; });
    else
        connect(area, &ChartArea::zoomRectChanged, [area] { delete area; });
    if (action == 0)
        area->setZoomRect({0.0, 0.0, 2.0, 2.0});
    else if (action == 1)
        area->resetZoomView();
    else
        area->requestUpdate();
    QVERIFY(!alive);
}

QTEST_MAIN(tst_ChartArea)
#include "tst_ChartArea.moc"
