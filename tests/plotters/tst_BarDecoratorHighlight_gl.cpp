// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/BarDecorator.h"
#include "plotters/BarPlotter.h"
#include "tests/support/Dialect.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Scene.h"

#include <QElapsedTimer>
#include <QOpenGLContext>
#include <QtTest>

#include <atomic>
#include <cmath>
#include <memory>

// In a context of an older dialect: desktop OpenGL 3.3 unless another kind is asked for.

namespace {

const QColor barColor(100, 50, 20);
const QColor highlightColor(255, 255, 255, 70);

/// The highlight adds its colour, as far as it is not faded, to what is opaque.
QColor lit(const QColor &ground = barColor, const QColor &color = highlightColor)
{
    const auto sum = [&](double under, double over) { return std::min(under + over * color.alphaF(), 1.0); };
    return QColor::fromRgbF(sum(ground.redF(), color.redF()), sum(ground.greenF(), color.greenF()),
                            sum(ground.blueF(), color.blueF()));
}

bool isClose(const QColor &a, const QColor &b, int tolerance = 2)
{
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance
        && std::abs(a.blue() - b.blue()) <= tolerance;
}

/// Ten bars of width 1 and values 1 to 10 in a chart of 100 x 100 pixels that shows (0, 0) to (10, 20), on black:
/// 10 pixels per bar, 5 per unit of value.
struct SHoverScene
{
    BarPlotter bars; // outlive the scene: nothing draws them any more
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
        bars.setData({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
        decorator.setZOrder(1.0);
        decorator.addPlotter(&bars);
        decorator.setActive(true);
        decorator.setMouseY(99.0);
        decorator.setMouseX(5.0); // bar 0
    }
    /// What the chart last drew, without waiting for anything.
    QImage now() { return scene.window().grabWindow(); }
    QColor footOfBar(const QImage &image, int bar) const { return image.pixelColor(10 * bar + 5, 97); }
};

} // namespace

class tst_BarDecoratorHighlight_gl : public QObject
{
    Q_OBJECT

public:
    static void initMain();

private slots:
    void init() { m_log = std::make_unique<LogCatcher>(); }
    void cleanup()
    {
        QCOMPARE(m_log->messages(), QStringList());
        m_log.reset();
    }

    void theContextIsOfAnOlderDialect();
    void theHighlightCoversTheHoveredBarAndStays();
    void theHighlightHasTheColorOfTheDecorator();
    void overTwoPlottersTheLastHighlightIsAllThatStays();
    void theReleasedHighlightFadesOnItsOwn();
    void itFadesInFramesThatComeRarely();
    void whileItFadesItIsBetweenLitAndGone();
    void switchedOffTheLastHighlightFades();
    void theHighlightStaysOnItsBarWhenTheViewMoves();
    void anInvisibleDecoratorShowsNoHighlight();
    void withoutAChartAreaNothingIsDrawn();
    void theBlendFunctionStaysForWhatIsDrawnLater();
    void aWindowThatIsReopenedShowsItAgain();

private:
    std::unique_ptr<LogCatcher> m_log;
};

void tst_BarDecoratorHighlight_gl::initMain()
{
    if (testDialect().isEmpty())
        qputenv("VORLIX_TEST_DIALECT", "3.3");
    useTestDialect();
}

void tst_BarDecoratorHighlight_gl::theContextIsOfAnOlderDialect()
{
    SHoverScene hover;
    QVERIFY(hover.scene.show());
    QVERIFY(hover.isRight);
}

void tst_BarDecoratorHighlight_gl::theHighlightCoversTheHoveredBarAndStays()
{
    SHoverScene hover;
    QVERIFY(hover.scene.show());
    hover.decorator.setMouseX(35.0); // bar 3, value 4: 20 pixels high
    QTest::qWait(500);
    const QImage image = hover.scene.grab();
    for (int column = 0; column < 100; ++column) {
        for (int row = 0; row < 100; ++row) {
            const int bar = column / 10;
            const bool inside = 99 - row < 5 * (bar + 1);
            const QColor expected = !inside ? QColor(Qt::black) : bar == 3 ? lit() : barColor;
            const QColor seen = image.pixelColor(column, row);
            QVERIFY2(
                isClose(seen, expected),
                qPrintable(
                    QStringLiteral("(%1, %2) is %3, not %4").arg(column).arg(row).arg(seen.name(), expected.name())));
        }
    }
}

void tst_BarDecoratorHighlight_gl::theHighlightHasTheColorOfTheDecorator()
{
    SHoverScene hover;
    const QColor blue(0, 0, 255, 200);
    hover.decorator.setColor(blue);
    QVERIFY(hover.scene.show());
    hover.decorator.setMouseX(35.0);
    QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 3), lit(barColor, blue)));
}

void tst_BarDecoratorHighlight_gl::overTwoPlottersTheLastHighlightIsAllThatStays()
{
    SHoverScene hover;
    BarPlotter taller;
    taller.setZOrder(-1.0);
    taller.setPlotterArea(QRectF(0.0, 0.0, 10.0, 20.0));
    taller.setData(QVector<double>(10, 20.0));
    hover.chart.addPlotter(&taller);
    hover.decorator.addPlotter(&taller);
    QVERIFY(hover.scene.show());
    hover.decorator.setMouseX(35.0);
    QTRY_VERIFY(isClose(hover.footOfBar(hover.now(), 3), lit())); // the other one has faded
    QElapsedTimer time;
    time.start();
    for (double x = 32.0; time.elapsed() < 400; x = x < 38.0 ? x + 0.5 : 32.0) { // inside the bar
        hover.decorator.setMouseX(x);
        QTest::qWait(5);
        const QColor seen = hover.footOfBar(hover.now(), 3);
        QVERIFY2(isClose(seen, lit()), qPrintable(seen.name()));
    }
    hover.chart.removePlotter(&taller);
}

void tst_BarDecoratorHighlight_gl::theReleasedHighlightFadesOnItsOwn()
{
    SHoverScene hover;
    hover.chart.setUpdateIntervalMs(25);
    QVERIFY(hover.scene.show());
    hover.decorator.setMouseX(35.0);
    QTRY_VERIFY(isClose(hover.footOfBar(hover.now(), 3), lit()));
    hover.decorator.setMouseX(75.0); // only the decorator asks for frames from here on
    QTRY_VERIFY(isClose(hover.footOfBar(hover.now(), 3), barColor));
    QVERIFY(isClose(hover.footOfBar(hover.now(), 7), lit()));
}

void tst_BarDecoratorHighlight_gl::itFadesInFramesThatComeRarely()
{
    SHoverScene hover;
    hover.chart.setUpdateIntervalMs(90);
    QVERIFY(hover.scene.show());
    for (const int pause : {300, 330, 360, 390}) {
        hover.decorator.setMouseX(35.0);
        QTRY_VERIFY(isClose(hover.footOfBar(hover.now(), 3), lit()));
        QTest::qWait(pause);
        hover.decorator.setMouseX(75.0);
        QTRY_VERIFY(isClose(hover.footOfBar(hover.now(), 3), barColor));
        QVERIFY(isClose(hover.footOfBar(hover.now(), 7), lit()));
        QTest::qWait(pause);
    }
}

/// As far as the moment of its release and that of its frame are known.
void tst_BarDecoratorHighlight_gl::whileItFadesItIsBetweenLitAndGone()
{
    // A released highlight lives for 100 ms, and the shader counts down to 0 with it.
    const auto redAfter = [](double milliseconds) {
        const double left = std::min(std::max(1.0 - milliseconds / 100.0, 0.0), highlightColor.alphaF());
        return barColor.red() + 255.0 * left;
    };
    constexpr double clocks = 8.0; // ms: a float of a time of day is off by up to 6
    SHoverScene hover;
    QVERIFY(hover.scene.show());
    QElapsedTimer time;
    time.start();
    const auto now = [&] { return double(time.nsecsElapsed()) / 1e6; };
    for (int round = 0; round < 10; ++round) {
        hover.decorator.setMouseX(35.0);
        QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 3), lit()));
        const double before = now();
        hover.decorator.setMouseX(75.0);
        const double after = now();
        while (now() < after + 150.0) {
            hover.chart.requestUpdate(); // what is grabbed is drawn then
            const double begun = now();
            const int red = hover.footOfBar(hover.now(), 3).red();
            const double most = redAfter(begun - after - clocks) + 2.0;
            const double least = redAfter(now() - before + clocks) - 2.0;
            QVERIFY2(red >= least && red <= most,
                     qPrintable(QStringLiteral("%1 isn't from %2 to %3").arg(red).arg(least).arg(most)));
            QTest::qWait(2);
        }
        QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 3), barColor));
    }
}

void tst_BarDecoratorHighlight_gl::switchedOffTheLastHighlightFades()
{
    SHoverScene hover;
    QVERIFY(hover.scene.show());
    hover.decorator.setMouseX(35.0);
    QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 3), lit()));
    hover.decorator.setActive(false);
    QTRY_VERIFY(isClose(hover.footOfBar(hover.now(), 3), barColor));
    const QImage image = hover.now();
    for (int bar = 0; bar < 10; ++bar)
        QVERIFY(isClose(hover.footOfBar(image, bar), barColor));
}

void tst_BarDecoratorHighlight_gl::theHighlightStaysOnItsBarWhenTheViewMoves()
{
    SHoverScene hover;
    QVERIFY(hover.scene.show());
    hover.decorator.setMouseX(35.0);
    QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 3), lit()));
    hover.chart.setChartRect(QRectF(2.0, 0.0, 4.0, 10.0)); // bar 3 now lies from 25 to 50 pixels, 40 high
    hover.chart.requestUpdate();
    const QImage image = hover.scene.grab();
    for (int column = 0; column < 100; ++column) {
        QVERIFY(isClose(image.pixelColor(column, 90), column >= 25 && column < 50 ? lit() : barColor));
        if (column >= 25 && column < 50)
            QVERIFY(isClose(image.pixelColor(column, 61), lit()) && image.pixelColor(column, 59) == QColor(Qt::black));
    }
}

void tst_BarDecoratorHighlight_gl::anInvisibleDecoratorShowsNoHighlight()
{
    SHoverScene hover;
    QVERIFY(hover.scene.show());
    hover.decorator.setMouseX(35.0);
    hover.decorator.setVisible(false);
    QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 3), barColor));
    hover.decorator.setMouseX(75.0);
    hover.decorator.setVisible(true);
    const QImage image = hover.scene.grab();
    QVERIFY(isClose(hover.footOfBar(image, 3), barColor));
    QVERIFY(isClose(hover.footOfBar(image, 7), lit()));
}

void tst_BarDecoratorHighlight_gl::withoutAChartAreaNothingIsDrawn()
{
    SHoverScene hover;
    QVERIFY(hover.scene.show());
    hover.decorator.setMouseX(35.0);
    hover.decorator.setChartArea(nullptr);
    hover.chart.setPlotter({&hover.bars, &hover.decorator});
    QCOMPARE(hover.decorator.chartArea(), nullptr);
    QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 3), barColor));
}

void tst_BarDecoratorHighlight_gl::theBlendFunctionStaysForWhatIsDrawnLater()
{
    SHoverScene hover;
    BarPlotter late;
    late.setZOrder(2.0);
    late.setColor(QColor(0, 60, 0));
    late.setPlotterArea(QRectF(0.0, 0.0, 10.0, 10.0));
    late.setData({1.0, 1.0});
    hover.chart.addPlotter(&late);
    QVERIFY(hover.scene.show());
    const QColor seen = hover.footOfBar(hover.scene.grab(), 6);
    QVERIFY2(isClose(seen, QColor(100, 110, 20)), qPrintable(seen.name())); // added to the opaque bar below
    hover.decorator.setVisible(false);
    QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 6), QColor(0, 60, 0)));
    hover.chart.removePlotter(&late);
}

void tst_BarDecoratorHighlight_gl::aWindowThatIsReopenedShowsItAgain()
{
    SHoverScene hover;
    hover.scene.window().setPersistentOpenGLContext(false);
    hover.scene.window().setPersistentSceneGraph(false);
    QVERIFY(hover.scene.show());
    hover.decorator.setMouseX(35.0);
    QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 3), lit()));
    hover.scene.window().hide();
    QTest::qWait(300);
    QVERIFY(hover.scene.show());
    QVERIFY(isClose(hover.footOfBar(hover.scene.grab(), 3), lit()));
}

QTEST_MAIN(tst_BarDecoratorHighlight_gl)
#include "tst_BarDecoratorHighlight_gl.moc"
