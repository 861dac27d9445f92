// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/BarDecorator.h"
#include "plotters/BarPlotter.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Scene.h"

#include <QOpenGLContext>
#include <QtTest>

#include <atomic>
#include <memory>

// In a context of desktop OpenGL 4 or later, where the highlight is never drawn.

class tst_BarDecorator_gl : public QObject
{
    Q_OBJECT

private slots:
    void hoveringIsAnsweredAndNothingIsDrawn();
    void aDecoratorThatComesAndGoesLeavesThePictureAlone();
};

void tst_BarDecorator_gl::hoveringIsAnsweredAndNothingIsDrawn()
{
    const LogCatcher log;
    BarPlotter bars;
    BarDecorator decorator;
    Scene scene(QSize(100, 100));
    IChartArea &chart = scene.add(new IChartArea);
    std::atomic<int> majorVersion{0};
    connect(
        &scene.window(), &QQuickWindow::beforeRendering, this,
        [&] { majorVersion = QOpenGLContext::currentContext()->format().majorVersion(); }, Qt::DirectConnection);
    chart.setAdaptAreaToPlotters(false);
    chart.setUpdateIntervalMs(0);
    chart.setChartRect(QRectF(0.0, 0.0, 10.0, 20.0));
    chart.addPlotter(&bars);
    chart.addPlotter(&decorator);
    bars.setPlotterArea(QRectF(0.0, 0.0, 10.0, 10.0));
    bars.setColor(QColor(100, 50, 20));
    bars.setData(QVector<double>(10, 10.0));
    decorator.setZOrder(1.0);
    decorator.addPlotter(&bars);
    decorator.setActive(true);
    QVERIFY(scene.show());
    QVERIFY2(majorVersion >= 4, "this test is about newer contexts");

    const QImage before = scene.grab();
    decorator.setMouseY(80.0);
    decorator.setMouseX(35.0);
    QCOMPARE(decorator.infoMap().size(), 1);
    QCOMPARE(decorator.infoMap().at(0).toMap().value("rect").toRectF(), QRectF(3.0, 0.0, 1.0, 10.0));
    QCOMPARE(scene.grab(), before);
    decorator.setMouseY(10.0);
    QVERIFY(decorator.infoMap().isEmpty());
    decorator.setActive(false);
    QCOMPARE(scene.grab(), before);
    QCOMPARE(log.messages(), QStringList());
}

void tst_BarDecorator_gl::aDecoratorThatComesAndGoesLeavesThePictureAlone()
{
    const LogCatcher log;
    BarPlotter bars;
    Scene scene(QSize(100, 100));
    IChartArea &chart = scene.add(new IChartArea);
    chart.setUpdateIntervalMs(0);
    chart.addPlotter(&bars);
    bars.setPlotterArea(QRectF(0.0, 0.0, 10.0, 10.0));
    bars.setData(QVector<double>(10, 10.0));
    QVERIFY(scene.show());
    const QImage before = scene.grab();
    for (int i = 0; i < 5; ++i) {
        auto decorator = std::make_unique<BarDecorator>();
        decorator->setChartArea(&chart);
        decorator->addPlotter(&bars);
        decorator->setActive(true);
        decorator->setMouseX(5.0 + 10.0 * i);
        QVERIFY(scene.frames(2));
        decorator.reset();
        chart.requestUpdate();
        QVERIFY(scene.frames(1));
    }
    QCOMPARE(scene.grab(), before);
    QCOMPARE(log.messages(), QStringList());
}

QTEST_MAIN(tst_BarDecorator_gl)
#include "tst_BarDecorator_gl.moc"
