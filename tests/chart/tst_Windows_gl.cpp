// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "plotters/BarPlotter.h"
#include "tests/support/ProbePlotter.h"
#include "tests/support/QuietTest.h"
#include "tests/support/Scene.h"

#include <QtTest>

#include <QOpenGLContext>

#include <atomic>
#include <memory>

namespace {

const QColor black(0, 0, 0);
const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);

/// Two bars over the unit, the right one half as high, fitted.
struct Bars
{
    explicit Bars(const QColor &color)
    {
        plotter.setColor(color);
        plotter.setPlotterArea({0.0, 0.0, 1.0, 1.0});
        plotter.setData({1.0, 0.5});
    }
    BarPlotter plotter;
};

/// Whether the picture, or a part of it, shows Bars of that colour.
bool showsBars(const QImage &picture, const QColor &color, const QRect &part = {})
{
    const QRect where = part.isNull() ? picture.rect() : part;
    const auto at = [&](double x, double y) {
        return picture.pixelColor(where.left() + int(x * where.width()), where.top() + int(y * where.height()));
    };
    return at(0.25, 0.5) == color && at(0.25, 0.02) != color && at(0.75, 0.75) == color && at(0.75, 0.4) != color;
}

} // namespace

/// Several windows, contexts that come and go, items that move. In both render loops.
class tst_Windows_gl : public QuietTest
{
    Q_OBJECT

private slots:
    void twoWindowsDrawAtOnce();
    void aWindowThatFollowsAnotherDraws();
    void aWindowIsHiddenAndShown_data();
    void aWindowIsHiddenAndShown();
    void anItemMovesToAnotherWindow();
    void anItemMovesWhileBothWindowsDraw();
    void aPlotterMovesToAnAreaInAnotherWindow();
    void aPlotterInTheListsOfTwoWindowsEndsInPeace();
    void anItemLeavesItsWindowAndComesBack();
    void anInvisibleItemIsShownInANewContext();
};

void tst_Windows_gl::twoWindowsDrawAtOnce()
{
    Bars left(red), right(blue);
    Scene first({100, 100}), second({80, 60});
    auto &inFirst = first.add(new ChartArea);
    auto &inSecond = second.add(new ChartArea);
    inFirst.addPlotter(&left.plotter);
    inSecond.addPlotter(&right.plotter);
    QVERIFY(first.show());
    QVERIFY(second.show());
    QVERIFY(showsBars(first.grab(), red));
    QVERIFY(showsBars(second.grab(), blue));
    inFirst.setUpdateIntervalMs(0);
    inSecond.setUpdateIntervalMs(0);
    for (int i = 0; i < 10; ++i) { // both go on
        left.plotter.setData({1.0, 0.1 * i});
        right.plotter.setData({1.0, 0.1 * i});
        QVERIFY(first.frames(1));
        QVERIFY(second.frames(1));
    }
    left.plotter.setData({1.0, 0.5});
    right.plotter.setData({1.0, 0.5});
    QVERIFY(showsBars(first.grab(), red));
    QVERIFY(showsBars(second.grab(), blue));
    first.close();
    QVERIFY(second.frames(2));
    QVERIFY(showsBars(second.grab(), blue));
}

void tst_Windows_gl::aWindowThatFollowsAnotherDraws()
{
    Bars bars(blue); // outlives its windows
    for (int i = 0; i < 4; ++i) {
        Scene scene({100, 100});
        auto &area = scene.add(new ChartArea);
        area.addPlotter(&bars.plotter);
        QVERIFY(scene.show());
        QVERIFY2(showsBars(scene.grab(), blue), qPrintable(QString::number(i)));
    }
    QCOMPARE(bars.plotter.chartArea(), nullptr);
}

void tst_Windows_gl::aWindowIsHiddenAndShown_data()
{
    QTest::addColumn<bool>("persistentContext");
    QTest::addColumn<bool>("persistentGraph");
    QTest::newRow("all is kept") << true << true;
    QTest::newRow("the scene graph goes") << true << false;
    QTest::newRow("scene graph and context go") << false << false;
}

void tst_Windows_gl::aWindowIsHiddenAndShown()
{
    QFETCH(bool, persistentContext);
    QFETCH(bool, persistentGraph);
    Bars bars(blue);
    Scene scene({100, 100});
    scene.window().setPersistentOpenGLContext(persistentContext);
    scene.window().setPersistentSceneGraph(persistentGraph);
    auto &area = scene.add(new ChartArea);
    area.setUpdateIntervalMs(0);
    area.addPlotter(&bars.plotter);
    std::atomic<int> lostContexts{0};
    std::atomic<int> lostGraphs{0};
    connect(
        &scene.window(), &QQuickWindow::sceneGraphInvalidated, &area, [&] { ++lostGraphs; }, Qt::DirectConnection);
    for (int i = 0; i < 4; ++i) {
        QVERIFY(scene.show());
        QVERIFY2(showsBars(scene.grab(), blue), qPrintable(QString::number(i)));
        connect(
            scene.window().openglContext(), &QOpenGLContext::aboutToBeDestroyed, &area, [&] { ++lostContexts; },
            Qt::DirectConnection);
        if (i % 2)
            scene.window().hide();
        else
            scene.window().close();
        QTest::qWait(50);
        bars.plotter.setData({1.0, 0.1 * i}); // while the window is hidden
        bars.plotter.setData({1.0, 0.5});
        if (!isThreadedLoop())
            continue; // it keeps both until the window is destroyed
        QCOMPARE(lostGraphs > i, !persistentGraph);
        QCOMPARE(lostContexts > i, !persistentContext);
    }
}

void tst_Windows_gl::anItemMovesToAnotherWindow()
{
    Bars bars(blue);
    Scene first({100, 100}), second({100, 100});
    auto *area = new ChartArea;
    first.add(area);
    area->addPlotter(&bars.plotter);
    QVERIFY(first.show());
    QVERIFY(second.show());
    QVERIFY(showsBars(first.grab(), blue));
    for (int i = 0; i < 3; ++i) {
        second.add(area);
        QVERIFY(showsBars(second.grab(), blue));
        QCOMPARE(first.grab().pixelColor(25, 50), black);
        first.add(area);
        QVERIFY(showsBars(first.grab(), blue));
        QCOMPARE(second.grab().pixelColor(25, 50), black);
    }
}

void tst_Windows_gl::anItemMovesWhileBothWindowsDraw()
{
    Bars bars(blue);
    Scene first({100, 100}), second({100, 100});
    auto *area = new ChartArea;
    area->setUpdateIntervalMs(0);
    first.add(area);
    area->addPlotter(&bars.plotter);
    QVERIFY(first.show());
    QVERIFY(second.show());
    for (int i = 0; i < 60; ++i) {
        bars.plotter.setData(QVector<double>(1 + i * 37 % 500, 1.0));
        first.window().update();
        second.window().update();
        QTest::qWait(i % 5);
        (i % 2 ? first : second).add(area);
    }
    bars.plotter.setData({1.0, 0.5});
    first.add(area);
    QVERIFY(showsBars(first.grab(), blue));
}

void tst_Windows_gl::aPlotterMovesToAnAreaInAnotherWindow()
{
    Bars bars(blue);
    Scene first({100, 100}), second({100, 100});
    auto &inFirst = first.add(new ChartArea);
    auto &inSecond = second.add(new ChartArea);
    for (ChartArea *area : {&inFirst, &inSecond}) {
        area->setUpdateIntervalMs(0);
        area->setAdaptAreaToPlotters(false); // without plotters the rectangle would be another one
    }
    QVERIFY(first.show());
    QVERIFY(second.show());
    for (int i = 0; i < 3; ++i) {
        bars.plotter.setChartArea(&inFirst);
        QVERIFY(showsBars(first.grab(), blue));
        QCOMPARE(second.grab().pixelColor(25, 50), black);
        bars.plotter.setChartArea(&inSecond);
        QVERIFY(showsBars(second.grab(), blue));
        QCOMPARE(first.grab().pixelColor(25, 50), black);
    }
}

void tst_Windows_gl::aPlotterInTheListsOfTwoWindowsEndsInPeace()
{
    Bars shared(blue), own(red);
    Scene first({100, 100}), second({100, 100});
    auto &inFirst = first.add(new ChartArea);
    auto &inSecond = second.add(new ChartArea);
    inFirst.setPlotter({&shared.plotter});
    inSecond.setPlotter({&shared.plotter, &own.plotter});
    QVERIFY(first.show());
    QVERIFY(second.show());
    for (int i = 0; i < 30; ++i) {
        shared.plotter.setData(QVector<double>(1 + i * 37 % 500, 1.0));
        inFirst.update();
        inSecond.update();
        QTest::qWait(i % 7);
    }
    inSecond.setPlotter({&own.plotter});
    shared.plotter.setData({1.0, 0.5});
    inFirst.update();
    QVERIFY(showsBars(first.grab(), blue));
    inSecond.update();
    QVERIFY(showsBars(second.grab(), red));
}

void tst_Windows_gl::anItemLeavesItsWindowAndComesBack()
{
    Bars bars(blue);
    ChartArea area; // without a parent in between
    area.setSize({100.0, 100.0});
    area.addPlotter(&bars.plotter);
    Scene scene({100, 100});
    QVERIFY(scene.show());
    for (int i = 0; i < 3; ++i) {
        area.setParentItem(scene.root());
        QVERIFY(showsBars(scene.grab(), blue));
        area.setParentItem(nullptr);
        bars.plotter.setData({1.0, 0.01 * i});
        QCOMPARE(scene.grab().pixelColor(25, 50), black);
        bars.plotter.setData({1.0, 0.5});
    }
}

void tst_Windows_gl::anInvisibleItemIsShownInANewContext()
{
    Bars bars(blue);
    bars.plotter.setVisible(false);
    Scene scene({100, 100});
    scene.window().setPersistentOpenGLContext(false);
    scene.window().setPersistentSceneGraph(false);
    auto &area = scene.add(new ChartArea);
    area.setUpdateIntervalMs(0);
    area.addPlotter(&bars.plotter);
    QVERIFY(scene.show());
    QCOMPARE(scene.grab().pixelColor(25, 50), black);
    scene.window().hide();
    QTest::qWait(50);
    bars.plotter.setData(QVector<double>(1000, 1.0));
    QVERIFY(scene.show());
    scene.settle();
    bars.plotter.setData({1.0, 0.5});
    bars.plotter.setVisible(true);
    QVERIFY(showsBars(scene.grab(), blue));
}

QTEST_MAIN(tst_Windows_gl)
#include "tst_Windows_gl.moc"
