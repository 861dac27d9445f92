// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "plotters/BarPlotter.h"
#include "tests/support/ProbePlotter.h"
#include "tests/support/QuietTest.h"
#include "tests/support/Scene.h"

#include <QtTest>

#include <QSemaphore>

#include <limits>
#include <memory>
#include <mutex>
#include <vector>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
const QColor black(0, 0, 0);
const QColor blue(0, 0, 255);

/// The order in which plotters are drawn, over one frame or several.
class DrawOrder
{
public:
    void record(const QString &name)
    {
        const std::lock_guard lock(m_mutex);
        m_names.append(name);
    }
    QString take()
    {
        const std::lock_guard lock(m_mutex);
        const QString names = m_names.join(' ');
        m_names.clear();
        return names;
    }

private:
    std::mutex m_mutex;
    QStringList m_names;
};

} // namespace

/// Chart areas in a window, in both render loops.
class tst_ChartArea_gl : public QuietTest
{
    Q_OBJECT

private slots:
    void aPlotterIsDrawnInEachOfItsLayers();
    void withinALayerTheZOrderDecides();
    void aZOrderThatIsNotANumberComesLast();
    void manyPlottersWithoutAnOrderAreAllDrawn();
    void aPlotterListedTwiceIsDrawnTwice();

    void theBaseDrawsAgainstTheChartAndTheZoomableAgainstTheZoom();
    void plottersOfASetListAreDrawnWithoutAChartArea();
    void aSecondRequestWithinTheIntervalDrawsNothing();
    void withoutRequestsNothingIsSynchronised();
    void lockedUpdatesDrawNothing();

    void theRectanglesAreFittedWhenTheFirstFrameGivesBarsTheirHeight();
    void changesInsideAFrameAreAnnouncedAfterIt();
    void requestsFromTheRenderThreadReachTheItem();
    void aZoomThatNeverSettlesKeepsTheWindowAlive();
    void handlersOfTheFrameMayUseTheRenderLock();
    void aHandlerOfTheFrameMayDestroyAPlotter();

    void exportImageWritesNoFileAndHoldsTheLastGrab();
    void grabsMayBeRequestedFasterThanFramesCome();
};

// layers

void tst_ChartArea_gl::aPlotterIsDrawnInEachOfItsLayers()
{
    Scene scene;
    auto &area = scene.add(new IChartArea);
    DrawOrder order;
    ProbePlotter twice, middle, above, nowhere;
    twice.setDrawLayer(5);
    middle.setDrawLayer(2);
    above.setDrawLayer(4 | 64);
    above.setZOrder(1.0);
    nowhere.setDrawLayer(8);
    twice.onDraw = [&] { order.record("twice"); };
    middle.onDraw = [&] { order.record("middle"); };
    above.onDraw = [&] { order.record("above"); };
    for (ProbePlotter *plotter : {&above, &nowhere, &middle, &twice})
        area.addPlotter(plotter);
    QVERIFY(scene.show());
    scene.settle();
    order.take();
    area.update();
    scene.settle();
    QCOMPARE(order.take(), "twice middle twice above");
    QVERIFY(nowhere.syncs() > 0);
    QCOMPARE(nowhere.draws(), 0);
}

void tst_ChartArea_gl::withinALayerTheZOrderDecides()
{
    Scene scene;
    auto &area = scene.add(new IChartArea);
    DrawOrder order;
    ProbePlotter plotters[4];
    const double zOrders[] = {2.0, -1.0, 1e300, 0.5};
    for (int i = 0; i < 4; ++i) {
        plotters[i].setZOrder(zOrders[i]);
        plotters[i].onDraw = [&order, i] { order.record(QString::number(i)); };
        area.addPlotter(&plotters[i]);
    }
    QVERIFY(scene.show());
    scene.settle();
    order.take();
    area.update();
    scene.settle();
    QCOMPARE(order.take(), "1 3 0 2");
}

void tst_ChartArea_gl::aZOrderThatIsNotANumberComesLast()
{
    Scene scene;
    auto &area = scene.add(new IChartArea);
    DrawOrder order;
    std::vector<std::unique_ptr<ProbePlotter>> plotters;
    for (int i = 0; i < 40; ++i) {
        plotters.push_back(std::make_unique<ProbePlotter>());
        const bool isNumber = i % 3 != 0;
        plotters.back()->setZOrder(isNumber ? double((i * 17) % 40) : notANumber);
        if (isNumber)
            plotters.back()->onDraw = [&order, i] {
                order.record(QString::number((i * 17) % 40).rightJustified(2, '0'));
            };
        else
            plotters.back()->onDraw = [&order] { order.record("none"); };
        area.addPlotter(plotters.back().get());
    }
    QVERIFY(scene.show());
    scene.settle();
    order.take();
    area.update();
    scene.settle();
    const QStringList drawn = order.take().split(' ');
    QStringList sorted = drawn;
    std::sort(sorted.begin(), sorted.end()); // digits come before letters
    QCOMPARE(drawn, sorted);
    QCOMPARE(drawn.size(), 40);
}

void tst_ChartArea_gl::manyPlottersWithoutAnOrderAreAllDrawn()
{
    Scene scene;
    auto &area = scene.add(new IChartArea);
    std::vector<std::unique_ptr<ProbePlotter>> plotters;
    for (int i = 0; i < 100; ++i) {
        plotters.push_back(std::make_unique<ProbePlotter>());
        area.addPlotter(plotters.back().get());
    }
    QVERIFY(scene.show());
    for (const auto &plotter : plotters)
        QVERIFY(plotter->draws() > 0);
}

void tst_ChartArea_gl::aPlotterListedTwiceIsDrawnTwice()
{
    Scene scene;
    auto &area = scene.add(new IChartArea);
    ProbePlotter plotter;
    area.setPlotter({&plotter, &plotter});
    QVERIFY(scene.show());
    scene.settle();
    const int before = plotter.draws();
    area.update();
    scene.settle();
    QCOMPARE(plotter.draws() - before, 2);
}

// frames

void tst_ChartArea_gl::theBaseDrawsAgainstTheChartAndTheZoomableAgainstTheZoom()
{
    Scene scene;
    auto &base = scene.add(new IChartArea);
    auto &zoomable = scene.add(new ChartArea);
    ProbePlotter inBase, inZoomable;
    inBase.setPlotterArea({0.0, 0.0, 10.0, 10.0});
    inZoomable.setPlotterArea({0.0, 0.0, 10.0, 10.0});
    base.addPlotter(&inBase);
    zoomable.addPlotter(&inZoomable);
    zoomable.setUpdateIntervalMs(0);
    zoomable.setZoomRect({2.0, 0.0, 4.0, 5.0});
    QVERIFY(scene.show());
    scene.settle();
    QCOMPARE(inBase.drawnView(), QRectF(0.0, 0.0, 10.0, 10.5));
    QCOMPARE(inZoomable.drawnView(), QRectF(2.0, 0.0, 4.0, 1.05));
    QCOMPARE(zoomable.zoomRect(), QRectF(2.0, 0.0, 4.0, 1.05));
}

void tst_ChartArea_gl::plottersOfASetListAreDrawnWithoutAChartArea()
{
    Scene scene({100, 100});
    auto &area = scene.add(new ChartArea);
    BarPlotter bars;
    bars.setColor(blue);
    bars.setData({1.0});
    bars.setPlotterArea({0.0, 0.0, 1.0, 1.0});
    area.setPlotter({&bars});
    QCOMPARE(bars.chartArea(), nullptr);
    QVERIFY(scene.show());
    QCOMPARE(scene.grab().pixelColor(50, 50), blue);
}

void tst_ChartArea_gl::aSecondRequestWithinTheIntervalDrawsNothing()
{
    Scene scene;
    auto &area = scene.add(new IChartArea);
    ProbePlotter plotter;
    area.addPlotter(&plotter);
    area.setUpdateIntervalMs(700);
    QVERIFY(scene.show());
    scene.settle();
    QTest::qWait(700);
    plotter.setColor(Qt::red);
    QTest::qWait(10);
    const int first = plotter.syncs();
    plotter.setColor(Qt::green);
    scene.settle();
    QVERIFY(plotter.syncs() <= first + 1); // the frame of the first request, at most
    const int settled = plotter.syncs();
    QTest::qWait(700);
    QCOMPARE(plotter.syncs(), settled); // dropped, not deferred
    plotter.setColor(Qt::blue);
    scene.settle();
    QCOMPARE(plotter.syncs(), settled + 1);
}

void tst_ChartArea_gl::withoutRequestsNothingIsSynchronised()
{
    Scene scene;
    auto &area = scene.add(new IChartArea);
    ProbePlotter plotter;
    area.addPlotter(&plotter);
    QVERIFY(scene.show());
    scene.settle();
    const int syncs = plotter.syncs();
    const int draws = plotter.draws();
    QVERIFY(scene.frames(5));
    QCOMPARE(plotter.syncs(), syncs);
    QCOMPARE(plotter.draws(), draws);
}

void tst_ChartArea_gl::lockedUpdatesDrawNothing()
{
    Scene scene;
    auto &area = scene.add(new IChartArea);
    ProbePlotter plotter;
    area.addPlotter(&plotter);
    area.setUpdateIntervalMs(0);
    QVERIFY(scene.show());
    scene.settle();
    const int syncs = plotter.syncs();
    area.lock_update();
    plotter.setColor(Qt::red);
    scene.settle();
    area.unlock_update();
    scene.settle();
    QCOMPARE(plotter.syncs(), syncs);
    plotter.setColor(Qt::green);
    scene.settle();
    QCOMPARE(plotter.syncs(), syncs + 1);
}

// the render thread's side

void tst_ChartArea_gl::theRectanglesAreFittedWhenTheFirstFrameGivesBarsTheirHeight()
{
    Scene scene({100, 100});
    auto &area = scene.add(new ChartArea);
    BarPlotter bars;
    bars.setColor(blue);
    bars.setPlotterArea({0.0, 0.0, 1.0, 1.0});
    bars.setData({10.0, 5.0});
    area.addPlotter(&bars);
    QCOMPARE(area.chartRect(), QRectF(0.0, 0.0, 1.0, 1.05));
    QVERIFY(scene.show());
    const QImage picture = scene.grab();
    QCOMPARE(area.chartRect(), QRectF(0.0, 0.0, 1.0, 10.5));
    QCOMPARE(area.zoomRect(), QRectF(0.0, 0.0, 1.0, 10.5));
    QCOMPARE(picture.pixelColor(25, 4), black); // the headroom
    QCOMPARE(picture.pixelColor(25, 5), blue);
    QCOMPARE(picture.pixelColor(75, 51), black);
    QCOMPARE(picture.pixelColor(75, 53), blue);
}

void tst_ChartArea_gl::changesInsideAFrameAreAnnouncedAfterIt()
{
    Scene scene;
    auto &area = scene.add(new ChartArea);
    BarPlotter bars;
    bars.setPlotterArea({0.0, 0.0, 1.0, 1.0});
    bars.setData({10.0, 5.0}); // the first frame gives them this height: the chart changes
    area.addPlotter(&bars);
    ProbePlotter probe;
    double maximum = 1.0;
    probe.maximum = [&](const QRectF &) { return maximum; };
    probe.onSync = [&] { maximum = 20.0; }; // and the zoom
    area.addPlotter(&probe);
    std::atomic<bool> synchronizing{false};
    connect(
        &scene.window(), &QQuickWindow::beforeSynchronizing, &area, [&] { synchronizing = true; },
        Qt::DirectConnection);
    connect(
        &scene.window(), &QQuickWindow::afterSynchronizing, &area, [&] { synchronizing = false; },
        Qt::DirectConnection);
    QStringList heard;
    const auto hear = [&](const QString &what) {
        return [&, what] {
            QVERIFY(!synchronizing);
            QCOMPARE(QThread::currentThread(), area.thread());
            heard.append(what);
        };
    };
    connect(&area, &IChartArea::chartRectChanged, &area, hear("chart"), Qt::DirectConnection);
    connect(&area, &ChartArea::zoomRectChanged, &area, hear("zoom"), Qt::DirectConnection);
    QVERIFY(scene.show());
    scene.settle();
    QCOMPARE(heard, (QStringList{"chart", "zoom"}));
}

void tst_ChartArea_gl::requestsFromTheRenderThreadReachTheItem()
{
    Scene scene;
    auto &area = scene.add(new ChartArea);
    area.setUpdateIntervalMs(0);
    ProbePlotter plotter;
    double maximum = 2.0;
    plotter.maximum = [&](const QRectF &) { return maximum; };
    plotter.onSync = [&] {
        maximum = maximum < 8.0 ? maximum + 1.0 : maximum;
    }; // the zoom changes in each of these frames
    plotter.setPlotterArea({0.0, 0.0, 1.0, 20.0});
    area.addPlotter(&plotter);
    QVERIFY(scene.show());
    scene.settle();
    QCOMPARE(maximum, 8.0); // each change asked for the next frame
    QCOMPARE(area.zoomRect().height(), 8.0 * 1.05);
    const int syncs = plotter.syncs();
    plotter.setColor(Qt::red); // and the item still hears the GUI thread
    scene.settle();
    QCOMPARE(plotter.syncs(), syncs + 1);
}

void tst_ChartArea_gl::aZoomThatNeverSettlesKeepsTheWindowAlive()
{
    Scene scene;
    auto &area = scene.add(new ChartArea);
    area.setUpdateIntervalMs(0);
    ProbePlotter plotter;
    std::atomic<bool> unsettled{true};
    double maximum = 2.0;
    plotter.maximum = [&](const QRectF &) { return unsettled ? ++maximum : 1.0; };
    area.addPlotter(&plotter);
    QVERIFY(scene.show());
    QVERIFY(scene.frames(20));
    unsettled = false;
    scene.settle();
    QCOMPARE(area.zoomRect().height(), 1.05);
    QCOMPARE(m_log->count("never settles"), 1); // for all these frames
    QCOMPARE(m_log->messages().size(), 1);
    m_log->clear();
}

void tst_ChartArea_gl::handlersOfTheFrameMayUseTheRenderLock()
{
    Scene scene;
    auto &area = scene.add(new ChartArea);
    BarPlotter bars;
    ProbePlotter probe;
    bars.setPlotterArea({0.0, 0.0, 2.0, 1.0});
    bars.setData({10.0, 5.0});
    area.addPlotter(&bars);
    area.addPlotter(&probe);
    std::atomic<int> handled{0};
    const auto handler = [&] { // on the thread that emits
        area.lockRender();
        area.unlockRender();
        probe.renderHandle()->use([](IPlotter &) {});
        area.renderHandle()->use([](IChartArea &) {});
        ++handled;
    };
    connect(&area, &IChartArea::chartRectChanged, handler);
    connect(&area, &ChartArea::zoomRectChanged, handler);
    QVERIFY(scene.show());
    scene.settle();
    QVERIFY(handled >= 1);
}

void tst_ChartArea_gl::aHandlerOfTheFrameMayDestroyAPlotter()
{
    Scene scene;
    auto &area = scene.add(new ChartArea);
    auto first = std::make_unique<ProbePlotter>();
    auto bars = std::make_unique<BarPlotter>();
    auto last = std::make_unique<ProbePlotter>();
    bars->setPlotterArea({0.0, 0.0, 2.0, 1.0});
    bars->setData({10.0, 5.0});
    area.addPlotter(first.get());
    area.addPlotter(bars.get());
    area.addPlotter(last.get());
    area.setShouldUpdate(false);                        // so that the first change comes with the frame
    connect(&area, &IChartArea::chartRectChanged, [&] { // GUI thread blocked, or the one thread there is
        first.reset();
        bars.reset();
    });
    QVERIFY(scene.show());
    scene.settle();
    QVERIFY(!first);
    QCOMPARE(area.plotter(), QList<IPlotter *>{last.get()});
    QVERIFY(last->draws() > 0);
}

// export

void tst_ChartArea_gl::exportImageWritesNoFileAndHoldsTheLastGrab()
{
    QTemporaryDir folder;
    Scene scene({41, 31});
    auto &area = scene.add(new ChartArea);
    QVERIFY(scene.show());
    area.exportImage(folder.filePath("first.png"));
    area.exportImage(folder.filePath("second.png"));
    scene.settle();
    area.exportImage(QString());
    scene.settle();
    QVERIFY(QDir(folder.path()).isEmpty());
}

void tst_ChartArea_gl::grabsMayBeRequestedFasterThanFramesCome()
{
    Scene scene({64, 64});
    auto *area = new ChartArea;
    scene.add(area);
    BarPlotter bars;
    bars.setPlotterArea({0.0, 0.0, 1.0, 1.0});
    bars.setData({1.0});
    area->addPlotter(&bars);
    QVERIFY(scene.show());
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < 1500) {
        area->exportImage(QStringLiteral("never.png"));
        QCoreApplication::processEvents();
    }
    delete area; // with a grab on its way
    scene.settle();
}

QTEST_MAIN(tst_ChartArea_gl)
#include "tst_ChartArea_gl.moc"
