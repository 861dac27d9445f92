// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "filters/Filter1D.h"
#include "plotters/BarPlotter.h"
#include "tests/support/ProbePlotter.h"
#include "tests/support/QuietTest.h"
#include "tests/support/Scene.h"

#include <QtTest>

#include <QSemaphore>

#include <algorithm>
#include <functional>
#include <memory>

namespace {

const QColor black(0, 0, 0);
const QColor blue(0, 0, 255);

/// Runs an action of the GUI thread between the synchronisation of a frame and its drawing. Made before the scene is
/// shown: the chart items connect to the same signal when they first draw.
class BetweenSyncAndRender
{
public:
    explicit BetweenSyncAndRender(Scene &scene) : m_scene(scene)
    {
        m_connection = QObject::connect(
            &scene.window(), &QQuickWindow::beforeRendering, &scene.window(), [this] { pause(); },
            Qt::DirectConnection);
    }
    ~BetweenSyncAndRender() { QObject::disconnect(m_connection); }

    /// Synchronises `item`, runs the action, lets the frame be drawn. False when the frame never came.
    bool run(QQuickItem &item, const std::function<void()> &action)
    {
        m_action = action;
        m_armed = true;
        item.update();
        if (!isThreadedLoop())
            return QTest::qWaitFor([this] { return !m_armed; }, patience);
        if (!QTest::qWaitFor([this] { return m_reached.tryAcquire(); }, patience))
            return false;
        action();
        const int before = m_scene.frameCount();
        m_continue.release();
        return QTest::qWaitFor([&] { return m_scene.frameCount() > before; }, patience);
    }

private:
    void pause() // render thread
    {
        if (!m_armed.exchange(false))
            return;
        if (!isThreadedLoop()) {
            m_action();
            return;
        }
        m_reached.release();
        m_continue.tryAcquire(1, patience);
    }

    Scene &m_scene;
    QMetaObject::Connection m_connection;
    std::function<void()> m_action;
    std::atomic<bool> m_armed{false};
    QSemaphore m_reached;
    QSemaphore m_continue;
};

/// A chart whose bars change on every turn of the event loop.
const QByteArray streaming = R"(
    ChartArea {
        id: chart
        anchors.fill: parent
        updateIntervalMs: 0
        property alias bars: bars
        property alias node: node
        BarPlotter { id: bars; chartArea: chart }
        Filter1D { id: node; area: Qt.rect(0, 0, 1, 1); Component.onCompleted: addPlotter(bars) }
        Timer {
            property int n: 0
            interval: 0; running: true; repeat: true
            onTriggered: {
                var series = []
                n = n % 211 + 7
                for (var i = 0; i < n; ++i)
                    series.push(i % 10)
                node.data = series
                bars.color = Qt.rgba(0, n % 2, 1, 1)
            }
        }
    })";

} // namespace

/// Things that go while they are in use. In both render loops.
class tst_Lifetimes_gl : public QuietTest
{
    Q_OBJECT

private slots:
    void aPlotterThatArrivesAfterTheSynchronisationIsDrawnInTheNextFrame();
    void aPlotterThatGoesAfterTheSynchronisationIsNotDrawn();
    void anAreaThatGoesAfterTheSynchronisationIsNotDrawn();
    void everythingGoesAfterTheSynchronisation_data();
    void everythingGoesAfterTheSynchronisation();
    void aListClearedAfterTheSynchronisationIsDrawnOnceMore();
    void dataThatGrowsAfterTheSynchronisationWaits();
    void rectanglesSetAfterTheSynchronisationWait();

    void destroyingAPlotterWaitsForItsDraw();
    void destroyingAnAreaWaitsForItsFrame();

    void partsOfAStreamingSceneGoInAnyOrder_data();
    void partsOfAStreamingSceneGoInAnyOrder();
    void aStreamingSceneIsTornDown_data();
    void aStreamingSceneIsTornDown();
};

// between the two halves of a frame

void tst_Lifetimes_gl::aPlotterThatArrivesAfterTheSynchronisationIsDrawnInTheNextFrame()
{
    Scene scene;
    BetweenSyncAndRender between(scene);
    auto &area = scene.add(new ChartArea);
    ProbePlotter there, late;
    area.addPlotter(&there);
    QVERIFY(scene.show());
    scene.settle();
    QVERIFY(between.run(area, [&] {
        area.setShouldUpdate(false); // so that no further frame follows
        area.addPlotter(&late);
    }));
    QCOMPARE(late.draws(), 0);
    QCOMPARE(late.syncs(), 0);
    area.update();
    scene.settle();
    QCOMPARE(late.syncs(), 1);
    QCOMPARE(late.draws(), 1);
}

void tst_Lifetimes_gl::aPlotterThatGoesAfterTheSynchronisationIsNotDrawn()
{
    Scene scene;
    BetweenSyncAndRender between(scene);
    auto &area = scene.add(new ChartArea);
    ProbePlotter stays;
    auto bars = std::make_unique<BarPlotter>();
    auto goes = std::make_unique<ProbePlotter>();
    std::atomic<int> draws{0};
    goes->onDraw = [&] { ++draws; };
    bars->setPlotterArea({0.0, 0.0, 1.0, 1.0});
    bars->setData({1.0});
    area.addPlotter(goes.get());
    area.addPlotter(bars.get());
    area.addPlotter(&stays);
    QVERIFY(scene.show());
    scene.settle();
    int before = 0; // taken while the frame waits: an earlier one may still be under way until then
    int beforeOfStays = 0;
    QVERIFY(between.run(area, [&] {
        before = draws;
        beforeOfStays = stays.draws();
        goes.reset();
        bars.reset();
    }));
    QCOMPARE(draws, before);
    QVERIFY(stays.draws() > beforeOfStays);
}

void tst_Lifetimes_gl::anAreaThatGoesAfterTheSynchronisationIsNotDrawn()
{
    Scene scene;
    BetweenSyncAndRender between(scene);
    auto *area = new ChartArea;
    scene.add(area);
    ProbePlotter plotter;
    area->addPlotter(&plotter);
    QVERIFY(scene.show());
    scene.settle();
    int before = 0; // taken while the frame waits: an earlier one may still be under way until then
    QVERIFY(between.run(*area, [&] {
        before = plotter.draws();
        delete area;
    }));
    QCOMPARE(plotter.draws(), before);
    QCOMPARE(plotter.chartArea(), nullptr);
    QVERIFY(scene.frames(2));
    QCOMPARE(plotter.draws(), before);
}

void tst_Lifetimes_gl::everythingGoesAfterTheSynchronisation_data()
{
    QTest::addColumn<bool>("areaFirst");
    QTest::newRow("area, then plotters") << true;
    QTest::newRow("plotters, then area") << false;
}

void tst_Lifetimes_gl::everythingGoesAfterTheSynchronisation()
{
    QFETCH(bool, areaFirst);
    for (int i = 0; i < 3; ++i) {
        Scene scene;
        BetweenSyncAndRender between(scene);
        auto *area = new ChartArea;
        scene.add(area);
        std::vector<std::unique_ptr<IPlotter>> plotters;
        for (int k = 0; k < 5; ++k) {
            if (k % 2)
                plotters.push_back(std::make_unique<ProbePlotter>());
            else
                plotters.push_back(std::make_unique<BarPlotter>());
            plotters.back()->setPlotterArea({0.0, 0.0, 1.0, 1.0});
            area->addPlotter(plotters.back().get());
            plotters.back()->setData({1.0, 2.0});
        }
        QVERIFY(scene.show());
        scene.settle();
        QVERIFY(between.run(*area, [&] {
            if (areaFirst)
                delete area;
            plotters.clear();
            if (!areaFirst)
                delete area;
        }));
        QVERIFY(scene.frames(1));
    }
}

void tst_Lifetimes_gl::aListClearedAfterTheSynchronisationIsDrawnOnceMore()
{
    Scene scene;
    BetweenSyncAndRender between(scene);
    auto &area = scene.add(new ChartArea);
    ProbePlotter plotter;
    area.addPlotter(&plotter);
    QVERIFY(scene.show());
    scene.settle();
    const int before = plotter.draws();
    QVERIFY(between.run(area, [&] {
        area.setShouldUpdate(false);
        area.setPlotter({});
    }));
    QCOMPARE(plotter.draws(), before + 1); // the frame shows what was synchronised for it
    area.update();
    scene.settle();
    QCOMPARE(plotter.draws(), before + 1);
}

void tst_Lifetimes_gl::dataThatGrowsAfterTheSynchronisationWaits()
{
    Scene scene({100, 100});
    BetweenSyncAndRender between(scene);
    auto &area = scene.add(new ChartArea);
    BarPlotter bars;
    bars.setColor(blue);
    bars.setPlotterArea({0.0, 0.0, 1.0, 1.0});
    bars.setData({1.0, 0.0});
    area.addPlotter(&bars);
    QVERIFY(scene.show());
    scene.settle();
    for (const int size : {1, 1000, 3, 100000, 2}) {
        QVERIFY(between.run(area, [&] {
            area.setShouldUpdate(false);
            bars.setData(QVector<double>(size, 0.0));
        }));
        QCOMPARE(scene.window().grabWindow().pixelColor(25, 50), blue); // nothing of the zeros yet
        bars.setData({1.0, 0.0});
    }
}

void tst_Lifetimes_gl::rectanglesSetAfterTheSynchronisationWait()
{
    Scene scene;
    BetweenSyncAndRender between(scene);
    auto &area = scene.add(new ChartArea);
    ProbePlotter plotter;
    plotter.setPlotterArea({0.0, 0.0, 10.0, 10.0});
    area.addPlotter(&plotter);
    QVERIFY(scene.show());
    scene.settle();
    const QRectF view = plotter.drawnView();
    QVERIFY(between.run(area, [&] {
        area.setShouldUpdate(false);
        area.setZoomRect({3.0, 0.0, 1.0, 1.0});
        area.setChartRect({3.0, 0.0, 1.0, 1.0});
        plotter.setPlotterArea({3.0, 0.0, 1.0, 1.0});
    }));
    QCOMPARE(plotter.drawnView(), view);
}

// while the render thread draws

void tst_Lifetimes_gl::destroyingAPlotterWaitsForItsDraw()
{
    if (!isThreadedLoop())
        return; // there is no second thread
    Scene scene;
    auto &area = scene.add(new ChartArea);
    auto plotter = std::make_unique<ProbePlotter>();
    QSemaphore drawing;
    std::atomic<bool> finished{false};
    plotter->onDraw = [&] {
        drawing.release();
        QTest::qSleep(60);
        finished = true;
    };
    area.addPlotter(plotter.get());
    QVERIFY(scene.show());
    scene.settle();
    drawing.tryAcquire(drawing.available());
    finished = false;
    area.update();
    QVERIFY(QTest::qWaitFor([&] { return drawing.tryAcquire(); }, patience));
    plotter.reset();
    QVERIFY(finished);
}

void tst_Lifetimes_gl::destroyingAnAreaWaitsForItsFrame()
{
    if (!isThreadedLoop())
        return; // there is no second thread
    Scene scene;
    auto *area = new ChartArea;
    scene.add(area);
    ProbePlotter first, second;
    QSemaphore drawing;
    std::atomic<bool> finished{false};
    first.onDraw = [&] {
        drawing.release();
        QTest::qSleep(60);
    };
    second.onDraw = [&] { finished = true; };
    second.setZOrder(1.0);
    area->addPlotter(&first);
    area->addPlotter(&second);
    QVERIFY(scene.show());
    scene.settle();
    drawing.tryAcquire(drawing.available());
    finished = false;
    area->update();
    QVERIFY(QTest::qWaitFor([&] { return drawing.tryAcquire(); }, patience));
    delete area;
    QVERIFY(finished);
}

// scenes

void tst_Lifetimes_gl::partsOfAStreamingSceneGoInAnyOrder_data()
{
    QTest::addColumn<QVector<int>>("order");
    QVector<int> order{0, 1, 2};
    do
        QTest::newRow(qPrintable(QString("%1%2%3").arg(order[0]).arg(order[1]).arg(order[2]))) << order;
    while (std::next_permutation(order.begin(), order.end()));
}

void tst_Lifetimes_gl::partsOfAStreamingSceneGoInAnyOrder()
{
    QFETCH(QVector<int>, order);
    Scene scene;
    QPointer<QQuickItem> chart = scene.load(streaming);
    QVERIFY(chart);
    QPointer<QObject> parts[] = {chart.data(), chart->property("bars").value<QObject *>(),
                                 chart->property("node").value<QObject *>()};
    QVERIFY(parts[1] && parts[2]);
    QVERIFY(scene.show());
    for (const int part : qAsConst(order)) {
        QVERIFY(scene.frames(5));
        delete parts[part];
    }
    QVERIFY(scene.frames(3));
    // The timer of the scene goes on for as long as the chart lives, and finds its objects gone.
    for (const QString &message : m_log->messages())
        QVERIFY2(message.contains("TypeError") || message.contains("ReferenceError"), qPrintable(message));
    m_log->clear();
}

void tst_Lifetimes_gl::aStreamingSceneIsTornDown_data()
{
    QTest::addColumn<int>("what");
    QTest::newRow("the whole scene") << 0;
    QTest::newRow("the item") << 1;
    QTest::newRow("hidden, then the item") << 2;
    QTest::newRow("the window's content, part by part") << 3;
}

void tst_Lifetimes_gl::aStreamingSceneIsTornDown()
{
    QFETCH(int, what);
    for (int i = 0; i < 6; ++i) {
        Scene scene;
        QQuickItem *chart = scene.load(streaming);
        QQuickItem *other = scene.load(streaming);
        QVERIFY(chart && other);
        QVERIFY(scene.show());
        QTest::qWait(7 * i);
        if (what == 1 || what == 3) {
            delete chart;
            if (i % 2)
                QTest::qWait(3);
        } else if (what == 2) {
            scene.window().hide();
            delete chart;
        }
        if (what == 3)
            delete other;
        if (i % 3 == 0)
            scene.window().update();
    }
}

QTEST_MAIN(tst_Lifetimes_gl)
#include "tst_Lifetimes_gl.moc"
