// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/BarDecorator.h"
#include "plotters/BarPlotter.h"
#include "tests/support/Dialect.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Scene.h"

#include <QOpenGLContext>
#include <QtTest>

#include <atomic>

// In a context that calls itself OpenGL ES 3.3: the highlight takes its newer dialect, which no OpenGL ES compiles.

class tst_BarDecoratorUnlinked_gl : public QObject
{
    Q_OBJECT

public:
    static void initMain()
    {
        qputenv("VORLIX_TEST_DIALECT", "es3.3");
        useTestDialect();
    }

private slots:
    void theFailureIsSaidOnceAndEverythingElseGoesOn();
    void everyWindowSaysItOnce();
};

namespace {

const QString failure = QStringLiteral("Link shader program for BarDecorator failed with log:\n ");
const QColor barColor(100, 50, 20);

/// Bars of value 10 under a decorator that hovers the first of them.
struct SHoverScene
{
    BarPlotter bars;
    BarDecorator decorator;
    Scene scene{QSize(100, 100)};
    IChartArea &chart = scene.add(new IChartArea);
    std::atomic<bool> isRight{false};

    SHoverScene()
    {
        QObject::connect(
            &scene.window(), &QQuickWindow::beforeRendering, &decorator,
            [this] { isRight = isOfTestDialect(*QOpenGLContext::currentContext()); }, Qt::DirectConnection);
        chart.setAdaptAreaToPlotters(false);
        chart.setUpdateIntervalMs(0);
        chart.setChartRect(QRectF(0.0, 0.0, 10.0, 20.0));
        chart.addPlotter(&bars);
        chart.addPlotter(&decorator);
        bars.setPlotterArea(QRectF(0.0, 0.0, 10.0, 10.0));
        bars.setColor(barColor);
        bars.setData(QVector<double>(10, 10.0));
        decorator.setZOrder(1.0);
        decorator.addPlotter(&bars);
        decorator.setActive(true);
        decorator.setMouseY(99.0);
        decorator.setMouseX(5.0);
    }
};

} // namespace

void tst_BarDecoratorUnlinked_gl::theFailureIsSaidOnceAndEverythingElseGoesOn()
{
    const LogCatcher log;
    SHoverScene hover;
    QVERIFY(hover.scene.show());
    QVERIFY(hover.isRight);
    const int said = log.messages().size();
    QVERIFY(said >= 1);
    for (int bar = 1; bar < 10; ++bar) {
        hover.decorator.setMouseX(10.0 * bar + 5.0);
        hover.chart.setSize(QSizeF(100.0 - bar, 100.0)); // another framebuffer
        hover.chart.requestUpdate();
        QVERIFY(hover.scene.frames(2));
    }
    hover.chart.setSize(QSizeF(100.0, 100.0));
    hover.decorator.setMouseX(95.5);
    QCOMPARE(hover.decorator.infoMap().size(), 1);
    const QImage image = hover.scene.grab();
    for (int column = 0; column < 100; ++column) {
        QCOMPARE(image.pixelColor(column, 52), barColor);
        QCOMPARE(image.pixelColor(column, 48), QColor(Qt::black));
    }
    QCOMPARE(log.ofType(QtCriticalMsg).size(), 1);
    QVERIFY(log.ofType(QtCriticalMsg).first().startsWith(failure + '"'));
    QVERIFY(log.ofType(QtCriticalMsg).first().contains("error"));
    QCOMPARE(log.messages().size(), said);
}

void tst_BarDecoratorUnlinked_gl::everyWindowSaysItOnce()
{
    const LogCatcher log;
    for (int window = 1; window <= 2; ++window) {
        SHoverScene hover;
        QVERIFY(hover.scene.show());
        QVERIFY(hover.scene.frames(3));
        QCOMPARE(log.count(failure), window);
        QCOMPARE(hover.scene.grab().pixelColor(50, 90), barColor);
    }
}

QTEST_MAIN(tst_BarDecoratorUnlinked_gl)
#include "tst_BarDecoratorUnlinked_gl.moc"
