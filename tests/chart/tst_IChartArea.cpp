// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "tests/support/CountingArea.h"
#include "tests/support/MetaTable.h"
#include "tests/support/ProbePlotter.h"
#include "tests/support/QuietTest.h"

#include <QtTest>

#include <limits>
#include <memory>
#include <thread>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

using Plotters = QList<IPlotter *>;

} // namespace

class tst_IChartArea : public QuietTest
{
    Q_OBJECT

private slots:
    void itsMetaObjectIsExactlyAsDescribed();
    void aFreshAreaHasTheDefaults();
    void settersEmitOnlyOnChange();
    void setChartRectComparesFuzzilyAndRequestsNothing();

    void addingTwiceLeavesOneEntryAndEmitsOnce();
    void addingSetsThePlottersAreaBeforeItIsAnnounced();
    void addingTakesThePlotterFromItsFormerArea();
    void removingAnUnlistedPlotterStillEmits();
    void removingLeavesThePlottersAreaAndOnlyAddPlotterAttachesAgain();
    void nullIsIgnored();
    void settingTheListSetsNoAreaOnThePlotters();
    void settingAnEqualListIsNoChange();
    void aListMayHoldAPlotterTwiceAndRemoveTakesTheFirst();
    void aListIsReadAndWrittenAsAProperty();

    void aDestroyedPlotterLeavesTheListSilently();
    void aDestroyedPlotterLeavesEveryPlaceOfTheList();
    void aDestroyedAreaLeavesItsPlottersSilently();
    void areasAndPlottersGoInAnyOrder();
    void handlersMayDestroyTheArea_data();
    void handlersMayDestroyTheArea();
    void handlersMayDestroyThePlotterThatIsAdded();
    void aHandlerMayAddTheNextPlotter();

    void requestsWithinTheIntervalAreDropped();
    void withAnIntervalOfZeroEveryRequestIsAccepted();
    void theLargestIntervalDropsForEver();
    void requestsAreDroppedWhileLockedOrOff();
    void anIntervalSetToZeroAndBackStillMeasuresFromTheLastAccepted();

    void withoutPlottersTheRectangleIsTheUnitWithHeadroom();
    void areasOfZeroHeightGetHeadroomOnOne();
    void theRectangleUnitesTheAreasAndKeepsItsTop();
    void theRectangleStaysWithoutAdaption();
    void emptyAreasAreIgnoredOnlyWhenNull();
    void notANumberAndInfinityEndTheNestedRequests_data();
    void notANumberAndInfinityEndTheNestedRequests();
    void aHandlerThatRequestsForEverIsCutOff();
    void aHandlerMayAddAnyNumberOfPlottersOneByOne_data();
    void aHandlerMayAddAnyNumberOfPlottersOneByOne();
    void aHandlerSeesTheRectangleThatItsRequestFitted();
    void aFitThatNeverSettlesIsReportedOnce();
    void anEventLoopInAHandlerDoesNotUseUpTheRequests();

    void mapPointPutsTheOriginAtTheBottomLeft();
    void mapPointRejectsWhatLiesOutsideAndKeepsTheBorder();
    void mapPointReturnsNotANumberAsItIs();

    void theRenderLockIsHeldAgainstOtherThreads();
};

// properties

void tst_IChartArea::itsMetaObjectIsExactlyAsDescribed()
{
    const QMetaObject &meta = IChartArea::staticMetaObject;
    QCOMPARE(ownProperties(meta),
             (QStringList{
                 "chartRect QRectF write chartRectChanged",
                 "adaptAreaToPlotters bool write adaptAreaToPlottersChanged",
                 "plotter QList<IPlotter*> write plotterChanged",
                 "shouldUpdate bool write shouldUpdateChanged",
                 "updateIntervalMs uint write -",
             }));
    QCOMPARE(ownSignals(meta),
             (QStringList{
                 "chartRectChanged()",
                 "plotterChanged()",
                 "shouldUpdateChanged()",
                 "adaptAreaToPlottersChanged()",
             }));
    QCOMPARE(ownMethods(meta),
             (QStringList{
                 "void addPlotter(IPlotter*)",
                 "void removePlotter(IPlotter*)",
                 "QPointF mapPointToChart(QPointF)",
                 "void lock_update()",
                 "void unlock_update()",
             }));
    QCOMPARE(meta.superClass(), &QQuickFramebufferObject::staticMetaObject);
}

void tst_IChartArea::aFreshAreaHasTheDefaults()
{
    const IChartArea area;
    QCOMPARE(area.chartRect(), QRectF(0.0, 0.0, 1.0, 1.0));
    QCOMPARE(area.viewRect(), QRectF(0.0, 0.0, 1.0, 1.0));
    QVERIFY(area.adaptAreaToPlotters());
    QVERIFY(area.shouldUpdate());
    QVERIFY(area.plotter().isEmpty());
    QCOMPARE(area.updateIntervalMs(), 25u);
    QVERIFY(area.property("plotter").canConvert<Plotters>());
}

void tst_IChartArea::settersEmitOnlyOnChange()
{
    IChartArea area;
    QSignalSpy should(&area, &IChartArea::shouldUpdateChanged);
    QSignalSpy adapt(&area, &IChartArea::adaptAreaToPlottersChanged);
    area.setShouldUpdate(true);
    area.setAdaptAreaToPlotters(true);
    QCOMPARE(should.count() + adapt.count(), 0);
    area.setShouldUpdate(false);
    area.setShouldUpdate(false);
    area.setAdaptAreaToPlotters(false);
    area.setAdaptAreaToPlotters(false);
    QCOMPARE(should.count(), 1);
    QCOMPARE(adapt.count(), 1);
    area.setUpdateIntervalMs(7);
    QCOMPARE(area.property("updateIntervalMs").toUInt(), 7u);
}

void tst_IChartArea::setChartRectComparesFuzzilyAndRequestsNothing()
{
    CountingArea area;
    QSignalSpy changed(&area, &IChartArea::chartRectChanged);
    area.setChartRect({0.0, 0.0, 1.0 + 1e-13, 1.0});
    QCOMPARE(changed.count(), 0);
    QVERIFY(area.chartRect().width() == 1.0);
    area.setChartRect({1e-300, 0.0, 1.0, 1.0}); // a zero equals only a zero
    QCOMPARE(changed.count(), 1);
    area.setChartRect({0.0, 0.0, infinity, notANumber});
    area.setChartRect({0.0, 0.0, infinity, notANumber});
    QCOMPARE(changed.count(), 2);
    QCOMPARE(area.fits, 0);
}

// plotters

void tst_IChartArea::addingTwiceLeavesOneEntryAndEmitsOnce()
{
    IChartArea area;
    ProbePlotter plotter;
    QSignalSpy changed(&area, &IChartArea::plotterChanged);
    area.addPlotter(&plotter);
    area.addPlotter(&plotter);
    QCOMPARE(area.plotter(), Plotters{&plotter});
    QCOMPARE(changed.count(), 1);
}

void tst_IChartArea::addingSetsThePlottersAreaBeforeItIsAnnounced()
{
    CountingArea area;
    ProbePlotter plotter;
    QStringList order;
    connect(&plotter, &IPlotter::chartAreaChanged, [&] {
        QCOMPARE(plotter.chartArea(), &area);
        order << "plotter";
    });
    connect(&area, &IChartArea::plotterChanged, [&] {
        QCOMPARE(area.fits, 0);
        order << "area";
    });
    area.addPlotter(&plotter);
    QCOMPARE(order, (QStringList{"plotter", "area"}));
    QCOMPARE(area.fits, 1);
}

void tst_IChartArea::addingTakesThePlotterFromItsFormerArea()
{
    IChartArea first, second;
    ProbePlotter plotter;
    first.addPlotter(&plotter);
    QSignalSpy left(&first, &IChartArea::plotterChanged);
    second.addPlotter(&plotter);
    QVERIFY(first.plotter().isEmpty());
    QCOMPARE(second.plotter(), Plotters{&plotter});
    QCOMPARE(plotter.chartArea(), &second);
    QCOMPARE(left.count(), 1);
}

void tst_IChartArea::removingAnUnlistedPlotterStillEmits()
{
    CountingArea area;
    ProbePlotter plotter;
    QSignalSpy changed(&area, &IChartArea::plotterChanged);
    area.removePlotter(&plotter);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(area.fits, 1);
}

void tst_IChartArea::removingLeavesThePlottersAreaAndOnlyAddPlotterAttachesAgain()
{
    IChartArea area;
    ProbePlotter plotter;
    plotter.setChartArea(&area);
    area.removePlotter(&plotter);
    QVERIFY(area.plotter().isEmpty());
    QCOMPARE(plotter.chartArea(), &area);
    plotter.setChartArea(&area);
    QVERIFY(area.plotter().isEmpty());
    area.addPlotter(&plotter);
    QCOMPARE(area.plotter(), Plotters{&plotter});
}

void tst_IChartArea::nullIsIgnored()
{
    CountingArea area;
    ProbePlotter plotter;
    area.addPlotter(&plotter);
    area.fits = 0;
    QSignalSpy changed(&area, &IChartArea::plotterChanged);
    area.setUpdateIntervalMs(0);
    area.addPlotter(nullptr);
    area.removePlotter(nullptr);
    area.setPlotter({nullptr, &plotter, nullptr});
    QCOMPARE(area.plotter(), Plotters{&plotter});
    QCOMPARE(changed.count(), 0);
    QCOMPARE(area.fits, 0);
    area.setPlotter({nullptr});
    QCOMPARE(area.plotter(), Plotters());
    QCOMPARE(changed.count(), 1);
}

void tst_IChartArea::settingTheListSetsNoAreaOnThePlotters()
{
    CountingArea area;
    ProbePlotter a, b;
    QSignalSpy changed(&area, &IChartArea::plotterChanged);
    area.setPlotter({&b, &a});
    QCOMPARE(area.plotter(), (Plotters{&b, &a}));
    QCOMPARE(a.chartArea(), nullptr);
    QCOMPARE(b.chartArea(), nullptr);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(area.fits, 1);
}

void tst_IChartArea::settingAnEqualListIsNoChange()
{
    CountingArea area;
    ProbePlotter a, b;
    area.setPlotter({&a, &b});
    area.setUpdateIntervalMs(0);
    area.fits = 0;
    QSignalSpy changed(&area, &IChartArea::plotterChanged);
    area.setPlotter(area.plotter());
    area.setPlotter({&a, &b});
    QCOMPARE(changed.count(), 0);
    QCOMPARE(area.fits, 0);
    area.setPlotter({&b, &a});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(area.fits, 1);
}

void tst_IChartArea::aListMayHoldAPlotterTwiceAndRemoveTakesTheFirst()
{
    IChartArea area;
    ProbePlotter a, b;
    area.setPlotter({&a, &b, &a});
    QCOMPARE(area.plotter(), (Plotters{&a, &b, &a}));
    area.removePlotter(&a);
    QCOMPARE(area.plotter(), (Plotters{&b, &a}));
    area.removePlotter(&a);
    QCOMPARE(area.plotter(), Plotters{&b});
}

void tst_IChartArea::aListIsReadAndWrittenAsAProperty()
{
    IChartArea area;
    ProbePlotter a, b;
    QVERIFY(area.setProperty("plotter", QVariant::fromValue(Plotters{&a, &b})));
    QCOMPARE(area.property("plotter").value<Plotters>(), (Plotters{&a, &b}));
}

// lifetimes

void tst_IChartArea::aDestroyedPlotterLeavesTheListSilently()
{
    CountingArea area;
    area.setUpdateIntervalMs(0);
    ProbePlotter stays;
    auto goes = std::make_unique<ProbePlotter>();
    area.addPlotter(goes.get());
    area.addPlotter(&stays);
    area.fits = 0;
    QSignalSpy changed(&area, &IChartArea::plotterChanged);
    goes.reset();
    QCOMPARE(area.plotter(), Plotters{&stays});
    QCOMPARE(changed.count(), 0);
    QCOMPARE(area.fits, 0);
    area.requestUpdate();
    area.updateRenderLayers();
}

void tst_IChartArea::aDestroyedPlotterLeavesEveryPlaceOfTheList()
{
    IChartArea area;
    ProbePlotter stays;
    auto goes = std::make_unique<ProbePlotter>();
    area.setPlotter({goes.get(), &stays, goes.get()});
    goes.reset();
    QCOMPARE(area.plotter(), Plotters{&stays});
    area.requestUpdate();
}

void tst_IChartArea::aDestroyedAreaLeavesItsPlottersSilently()
{
    auto area = std::make_unique<IChartArea>();
    ProbePlotter plotter;
    plotter.setChartArea(area.get());
    QSignalSpy changed(&plotter, &IPlotter::chartAreaChanged);
    area.reset();
    QCOMPARE(plotter.chartArea(), nullptr);
    QCOMPARE(changed.count(), 0);
    plotter.setColor(Qt::red);
    plotter.setData({1.0});
    IChartArea other;
    plotter.setChartArea(&other);
    QCOMPARE(other.plotter(), Plotters{&plotter});
}

void tst_IChartArea::areasAndPlottersGoInAnyOrder()
{
    // Two areas and two plotters, one of them in both lists: all orders of destruction.
    QVector<int> order{0, 1, 2, 3};
    do {
        std::unique_ptr<QObject> objects[4];
        auto first = std::make_unique<IChartArea>();
        auto second = std::make_unique<IChartArea>();
        auto a = std::make_unique<ProbePlotter>();
        auto b = std::make_unique<ProbePlotter>();
        first->addPlotter(a.get());
        first->addPlotter(b.get());
        second->setPlotter({b.get(), a.get(), b.get()});
        objects[0] = std::move(first);
        objects[1] = std::move(second);
        objects[2] = std::move(a);
        objects[3] = std::move(b);
        for (const int index : qAsConst(order)) {
            objects[index].reset();
            for (const auto &left : objects) {
                if (auto *area = qobject_cast<IChartArea *>(left.get())) {
                    area->updateChartRect();
                    area->updateRenderLayers();
                } else if (auto *plotter = qobject_cast<IPlotter *>(left.get())) {
                    plotter->setVisible(!plotter->visible());
                }
            }
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

void tst_IChartArea::handlersMayDestroyTheArea_data()
{
    QTest::addColumn<int>("action");
    QTest::newRow("add") << 0;
    QTest::newRow("remove") << 1;
    QTest::newRow("set the list") << 2;
    QTest::newRow("request") << 3;
    QTest::newRow("the plotter leaves") << 4;
    QTest::newRow("the plotter's data") << 5;
}

void tst_IChartArea::handlersMayDestroyTheArea()
{
    QFETCH(int, action);
    auto *area = new IChartArea;
    QPointer<IChartArea> alive(area);
    ProbePlotter plotter, other;
    if (action == 1 || action == 4 || action == 5)
        area->addPlotter(&plotter);
    area->setUpdateIntervalMs(0);
    plotter.setPlotterArea({0.0, 0.0, 7.0, 7.0});
    if (action == 3)
        area->setChartRect({});
    connect(area, &IChartArea::plotterChanged, [area] { delete area; });
    connect(area, &IChartArea::chartRectChanged, [area] { delete area; });
    if (action == 0)
        area->addPlotter(&plotter);
    else if (action == 1)
        area->removePlotter(&plotter);
    else if (action == 2)
        area->setPlotter({&plotter, &other});
    else if (action == 3)
        area->requestUpdate();
    else if (action == 4)
        plotter.setChartArea(nullptr);
    else {
        connect(&plotter, &IPlotter::dataChanged, [area] { delete area; });
        plotter.setData({1.0});
    }
    QVERIFY(!alive);
    QCOMPARE(plotter.chartArea(), nullptr);
}

void tst_IChartArea::handlersMayDestroyThePlotterThatIsAdded()
{
    IChartArea area;
    auto *plotter = new ProbePlotter;
    connect(plotter, &IPlotter::chartAreaChanged, [plotter] { delete plotter; });
    QSignalSpy changed(&area, &IChartArea::plotterChanged);
    area.addPlotter(plotter);
    QVERIFY(area.plotter().isEmpty());
    QCOMPARE(changed.count(), 1);

    IChartArea former, target;
    auto *moved = new ProbePlotter;
    former.addPlotter(moved);
    connect(&former, &IChartArea::plotterChanged, [moved] { delete moved; });
    moved->setChartArea(&target);
    QVERIFY(former.plotter().isEmpty());
    QVERIFY(target.plotter().isEmpty());
}

void tst_IChartArea::aHandlerMayAddTheNextPlotter()
{
    IChartArea area;
    std::vector<std::unique_ptr<ProbePlotter>> plotters;
    connect(&area, &IChartArea::plotterChanged, [&] {
        if (plotters.size() == 50)
            return;
        plotters.push_back(std::make_unique<ProbePlotter>());
        area.addPlotter(plotters.back().get());
    });
    ProbePlotter first;
    area.addPlotter(&first);
    QCOMPARE(area.plotter().size(), 51);
}

// requests

void tst_IChartArea::requestsWithinTheIntervalAreDropped()
{
    bool isWithin = false;
    for (int round = 0; round < 100 && !isWithin; ++round) { // a busy machine may sleep for longer than the interval
        CountingArea area;
        area.setUpdateIntervalMs(60);
        QElapsedTimer sinceAccepted;
        sinceAccepted.start();
        area.requestUpdate();
        area.requestUpdate();
        QTest::qSleep(10);
        area.requestUpdate();
        isWithin = sinceAccepted.elapsed() < 60;
        if (!isWithin)
            continue;
        QCOMPARE(area.fits, 1);
        QTest::qSleep(60);
        QCOMPARE(area.fits, 1); // dropped, not deferred
        area.requestUpdate();
        QCOMPARE(area.fits, 2);
    }
    QVERIFY(isWithin);
}

void tst_IChartArea::withAnIntervalOfZeroEveryRequestIsAccepted()
{
    CountingArea area;
    area.setUpdateIntervalMs(0);
    for (int i = 0; i < 5; ++i)
        area.requestUpdate();
    QCOMPARE(area.fits, 5);
}

void tst_IChartArea::theLargestIntervalDropsForEver()
{
    CountingArea area;
    area.setUpdateIntervalMs(std::numeric_limits<uint>::max());
    area.requestUpdate();
    area.requestUpdate();
    QCOMPARE(area.fits, 1);
}

void tst_IChartArea::requestsAreDroppedWhileLockedOrOff()
{
    CountingArea area;
    area.setUpdateIntervalMs(0);
    area.lock_update();
    area.requestUpdate();
    area.unlock_update();
    QCOMPARE(area.fits, 0); // unlocking requests nothing
    area.setShouldUpdate(false);
    area.requestUpdate();
    area.setShouldUpdate(true);
    QCOMPARE(area.fits, 0);
    area.requestUpdate();
    QCOMPARE(area.fits, 1);
}

void tst_IChartArea::anIntervalSetToZeroAndBackStillMeasuresFromTheLastAccepted()
{
    CountingArea area;
    area.setUpdateIntervalMs(0);
    area.requestUpdate(); // starts the measurement
    area.setUpdateIntervalMs(100000);
    area.requestUpdate();
    QCOMPARE(area.fits, 1);
}

// the rectangle

void tst_IChartArea::withoutPlottersTheRectangleIsTheUnitWithHeadroom()
{
    IChartArea area;
    QSignalSpy changed(&area, &IChartArea::chartRectChanged);
    area.requestUpdate();
    QCOMPARE(area.chartRect(), QRectF(0.0, 0.0, 1.0, 1.05));
    QCOMPARE(changed.count(), 1);
}

void tst_IChartArea::areasOfZeroHeightGetHeadroomOnOne()
{
    IChartArea area;
    ProbePlotter a, b;
    a.setPlotterArea({2.0, 0.0, 3.0, 0.0});
    b.setPlotterArea({4.0, 0.0, 3.0, 0.0});
    area.setPlotter({&a, &b});
    QCOMPARE(area.chartRect(), QRectF(2.0, 0.0, 5.0, 1.05));
}

void tst_IChartArea::theRectangleUnitesTheAreasAndKeepsItsTop()
{
    IChartArea area;
    ProbePlotter a, b, unset;
    a.setPlotterArea({-1.0, 2.0, 3.0, 8.0});
    a.setXOffset(100.0); // the fit looks at plotterArea, not at modArea
    b.setPlotterArea({5.0, 4.0, 1.0, 16.0});
    area.setPlotter({&a, &unset, &b});
    QCOMPARE(area.chartRect(), QRectF(-1.0, 2.0, 7.0, 18.0 * 1.05));
}

void tst_IChartArea::theRectangleStaysWithoutAdaption()
{
    CountingArea area;
    area.setAdaptAreaToPlotters(false);
    area.requestUpdate();
    QCOMPARE(area.fits, 1);
    QCOMPARE(area.chartRect(), QRectF(0.0, 0.0, 1.0, 1.0));
}

void tst_IChartArea::emptyAreasAreIgnoredOnlyWhenNull()
{
    IChartArea area;
    ProbePlotter wide, far;
    wide.setPlotterArea({0.0, 0.0, 2.0, 2.0});
    far.setPlotterArea({50.0, 50.0, 0.0, 0.0});
    area.setPlotter({&wide, &far});
    QCOMPARE(area.chartRect(), QRectF(0.0, 0.0, 2.0, 2.1));
    far.setPlotterArea({50.0, 0.0, 0.0, 1.0}); // empty, but not null
    area.updateChartRect();
    QCOMPARE(area.chartRect(), QRectF(0.0, 0.0, 50.0, 2.1));
}

void tst_IChartArea::notANumberAndInfinityEndTheNestedRequests_data()
{
    QTest::addColumn<QRectF>("plotterArea");
    QTest::newRow("endless height") << QRectF(0.0, 0.0, 1.0, infinity);
    QTest::newRow("endless width") << QRectF(0.0, 0.0, infinity, 1.0);
    QTest::newRow("from minus infinity") << QRectF(-infinity, -infinity, infinity, infinity);
    QTest::newRow("not a number") << QRectF(notANumber, notANumber, notANumber, notANumber);
    QTest::newRow("height not a number") << QRectF(0.0, 0.0, 1.0, notANumber);
    QTest::newRow("the largest") << QRectF(0.0, 0.0, 1e308, 1.79e308);
    QTest::newRow("negative") << QRectF(5.0, 5.0, -3.0, -4.0);
}

void tst_IChartArea::notANumberAndInfinityEndTheNestedRequests()
{
    QFETCH(QRectF, plotterArea);
    CountingArea area;
    ProbePlotter plotter;
    plotter.setPlotterArea(plotterArea);
    area.setUpdateIntervalMs(0);
    connect(&area, &IChartArea::chartRectChanged, [&] { area.requestUpdate(); });
    area.addPlotter(&plotter);
    QVERIFY(area.fits <= 4);
    QSignalSpy changed(&area, &IChartArea::chartRectChanged);
    area.requestUpdate();
    QCOMPARE(changed.count(), 0); // bit-identical components don't count as a change
}

void tst_IChartArea::aHandlerThatRequestsForEverIsCutOff()
{
    CountingArea area;
    ProbePlotter plotter;
    area.addPlotter(&plotter);
    area.setUpdateIntervalMs(0);
    area.fits = 0;
    double height = 1.0;
    connect(&area, &IChartArea::chartRectChanged, [&] {
        plotter.setPlotterArea({0.0, 0.0, 1.0, ++height}); // requests from within
    });
    plotter.setPlotterArea({0.0, 0.0, 1.0, ++height});
    QVERIFY(area.fits > 1 && area.fits < 1000);
    const int before = area.fits;
    area.requestUpdate();
    QVERIFY(area.fits > before); // and goes on working
    QCOMPARE(m_log->messages().size(), 1);
    m_log->clear();
}

void tst_IChartArea::aHandlerMayAddAnyNumberOfPlottersOneByOne_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("ten") << 10;
    QTest::newRow("a thousand") << 1000;
}

void tst_IChartArea::aHandlerMayAddAnyNumberOfPlottersOneByOne()
{
    QFETCH(int, count);
    IChartArea area;
    area.setUpdateIntervalMs(0);
    std::vector<ProbePlotter> plotters(count);
    connect(&area, &IChartArea::chartRectChanged, [&] {
        const int next = int(area.plotter().size());
        if (next == count)
            return;
        plotters[next].setPlotterArea({0.0, 0.0, 1.0, next + 2.0});
        area.addPlotter(&plotters[next]);
    });
    area.requestUpdate();
    QCOMPARE(int(area.plotter().size()), count);
    QCOMPARE(area.chartRect(), QRectF(0.0, 0.0, 1.0, (count + 1) * 1.05));
}

void tst_IChartArea::aHandlerSeesTheRectangleThatItsRequestFitted()
{
    IChartArea area;
    ProbePlotter plotter;
    area.setUpdateIntervalMs(0);
    area.addPlotter(&plotter);
    QVector<double> heights;
    connect(&area, &IChartArea::chartRectChanged, [&] {
        if (heights.size() == 6)
            return;
        heights.append(area.chartRect().height());
        plotter.setPlotterArea({0.0, 0.0, 1.0, heights.size() * 10.0});
        QCOMPARE(area.chartRect().height(), 60.0 * 1.05); // set by the innermost of six
    });
    plotter.setPlotterArea({0.0, 0.0, 1.0, 5.0});
    QCOMPARE(heights.size(), 6);
}

void tst_IChartArea::aFitThatNeverSettlesIsReportedOnce()
{
    CountingArea area;
    area.setUpdateIntervalMs(0);
    double height = 1.0;
    ProbePlotter plotter;
    area.addPlotter(&plotter);
    connect(&area, &IChartArea::chartRectChanged, [&] {
        plotter.setPlotterArea({0.0, 0.0, 1.0, ++height});
        plotter.setPlotterArea({0.0, 0.0, 1.0, ++height}); // two each time: no tree of requests grows from it
    });
    for (int i = 0; i < 10; ++i) {
        area.fits = 0;
        area.requestUpdate();
        plotter.setPlotterArea({0.0, 0.0, 1.0, ++height});
        QVERIFY(area.fits < 1000);
    }
    const QStringList messages = m_log->messages();
    m_log->clear();
    QCOMPARE(messages.size(), 1);
    QVERIFY2(messages.first().contains("chartRect"), qPrintable(messages.first()));
}

void tst_IChartArea::anEventLoopInAHandlerDoesNotUseUpTheRequests()
{
    CountingArea area;
    area.setUpdateIntervalMs(0);
    ProbePlotter plotter;
    area.addPlotter(&plotter);
    bool inside = false;
    connect(&area, &IChartArea::chartRectChanged, [&] { // as if it opened a dialog, while data go on streaming in
        if (inside)
            return;
        inside = true;
        for (int frame = 1; frame <= 1000; ++frame) {
            plotter.setPlotterArea({0.0, 0.0, 1.0, double(frame)});
            area.syncPlotters();
            QCOMPARE(area.chartRect().height(), frame * 1.05);
        }
    });
    plotter.setPlotterArea({0.0, 0.0, 1.0, 7000.0});
    QVERIFY(inside);
    area.requestUpdate();
    QCOMPARE(area.chartRect().height(), 1000 * 1.05);
}

// coordinates

void tst_IChartArea::mapPointPutsTheOriginAtTheBottomLeft()
{
    IChartArea area;
    area.setSize({200.0, 100.0});
    area.setChartRect({10.0, 5.0, 40.0, 20.0});
    QCOMPARE(area.mapPointToChart({10.0, 5.0}), QPointF(0.0, 100.0));
    QCOMPARE(area.mapPointToChart({50.0, 25.0}), QPointF(200.0, 0.0));
    QCOMPARE(area.mapPointToChart({20.0, 10.0}), QPointF(50.0, 75.0));
}

void tst_IChartArea::mapPointRejectsWhatLiesOutsideAndKeepsTheBorder()
{
    IChartArea area;
    area.setSize({200.0, 100.0});
    area.setChartRect({0.0, 0.0, 4.0, 2.0});
    const QPointF outside(-1.0, -1.0);
    QCOMPARE(area.mapPointToChart({-0.001, 1.0}), outside);
    QCOMPARE(area.mapPointToChart({4.001, 1.0}), outside);
    QCOMPARE(area.mapPointToChart({1.0, -0.001}), outside);
    QCOMPARE(area.mapPointToChart({1.0, 2.001}), outside);
    QCOMPARE(area.mapPointToChart({4.0, 0.0}), QPointF(200.0, 100.0));
}

void tst_IChartArea::mapPointReturnsNotANumberAsItIs()
{
    IChartArea area;
    area.setSize({200.0, 100.0});
    area.setChartRect({3.0, 0.0, 0.0, 1.0}); // 0 / 0
    const QPointF mapped = area.mapPointToChart({3.0, 0.25});
    QVERIFY(qIsNaN(mapped.x()));
    QCOMPARE(mapped.y(), 75.0);
    area.setChartRect({0.0, 0.0, 1.0, 1.0});
    const QPointF given = area.mapPointToChart({0.5, notANumber});
    QCOMPARE(given.x(), 100.0);
    QVERIFY(qIsNaN(given.y()));
    // Outside in the other coordinate is outside all the same.
    QCOMPARE(area.mapPointToChart({2.0, notANumber}), QPointF(-1.0, -1.0));
}

void tst_IChartArea::theRenderLockIsHeldAgainstOtherThreads()
{
    IChartArea area;
    area.lockRender();
    std::atomic<bool> entered{false};
    std::thread other([&] {
        area.lockRender();
        entered = true;
        area.unlockRender();
    });
    QTest::qSleep(20);
    const bool early = entered;
    area.unlockRender();
    other.join();
    QVERIFY(!early);
    QVERIFY(entered);
}

QTEST_MAIN(tst_IChartArea)
#include "tst_IChartArea.moc"
