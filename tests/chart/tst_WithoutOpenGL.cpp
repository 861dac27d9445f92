// SPDX-License-Identifier: MIT
// Windows that Qt Quick draws without OpenGL: charts are missing there, and the rest of the scene is not.
#include "chart/ChartArea.h"
#include "plotters/BarDecorator.h"
#include "plotters/BarPlotter.h"
#include "tests/support/LogCatcher.h"

#include <QImage>
#include <QQuickItemGrabResult>
#include <QQuickWindow>
#include <QtTest>

class tst_WithoutOpenGL : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software); }
    void aChartDrawsNothingAndSaysSoOnce();
    void aChartCanBeGrabbedAndMoved();
};

namespace {

/// A chart that fills a red window.
class ChartWindow : public QQuickWindow
{
public:
    ChartWindow()
    {
        setColor(Qt::red);
        resize(120, 80);
        chart.setParentItem(contentItem());
        chart.setSize(QSizeF(size()));
        chart.setUpdateIntervalMs(0);
        bars.setChartArea(&chart);
        bars.setData({3.0, 1.0, 4.0});
        bars.setPlotterArea(QRectF(0.0, 0.0, 3.0, 4.0));
        decorator.setChartArea(&chart);
    }

    BarPlotter bars;
    BarDecorator decorator;
    ChartArea chart;
};

bool canGrabWindows()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

/// Of a picture that has only one.
QColor colorOf(const QImage &image)
{
    const QColor first = image.pixelColor(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != first)
                return {};
        }
    }
    return first;
}

/// Red, as far as can be seen.
bool isRed(QQuickWindow &window)
{
    const QImage image = window.grabWindow();
    return !canGrabWindows() || (image.size() == window.size() && colorOf(image) == QColor(Qt::red));
}

} // namespace

void tst_WithoutOpenGL::aChartDrawsNothingAndSaysSoOnce()
{
    const LogCatcher log;
    for (int round = 0; round < 2; ++round) {
        ChartWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window, patience));
        QCOMPARE(window.rendererInterface()->graphicsApi(), QSGRendererInterface::Software);
        QVERIFY(isRed(window));
        window.bars.setData({1.0, 5.0});
        QVERIFY(isRed(window));
        QCOMPARE(window.chart.chartRect().width(), 3.0);
    }
    QCOMPARE(log.messages(), QStringList(QStringLiteral("A chart is not drawn: its window is drawn without OpenGL")));
}

void tst_WithoutOpenGL::aChartCanBeGrabbedAndMoved()
{
    ChartWindow window;
    ChartWindow other;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, patience));
    const QSharedPointer<QQuickItemGrabResult> grab = window.chart.grabToImage();
    QVERIFY(grab);
    QSignalSpy ready(grab.data(), &QQuickItemGrabResult::ready);
    window.chart.exportImage(QStringLiteral("unused"));
    QTRY_COMPARE(ready.size(), 1);
    QCOMPARE(grab->image().size(), QSize(120, 80));
    QCOMPARE(colorOf(grab->image()).alpha(), 0);
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other, patience));
    window.chart.setParentItem(other.contentItem());
    QVERIFY(isRed(other));
}

QTEST_MAIN(tst_WithoutOpenGL)
#include "tst_WithoutOpenGL.moc"
