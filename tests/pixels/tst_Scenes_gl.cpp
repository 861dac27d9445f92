// SPDX-License-Identifier: MIT
#include "tests/support/Dialect.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Scene.h"

#include <QOpenGLContext>
#include <QtTest>

#include <atomic>
#include <memory>

namespace {

/// What a letter of an expected picture stands for.
QColor colorOf(QChar letter)
{
    switch (letter.unicode()) {
    case 'R':
        return {255, 0, 0};
    case 'G':
        return {0, 255, 0};
    case 'B':
        return {0, 0, 255};
    case 'M': // half of blue over red
        return {128, 0, 128};
    case 'W':
        return {255, 255, 255};
    case 'H': // half of blue over black
        return {0, 0, 128};
    case 'Q': // half of blue twice over black: three quarters
        return {0, 0, 192};
    case 'L': // half of blue over white
        return {127, 127, 255};
    case '1': // from blue on top to red: pixels 5, 15, 25, 35 and 45 of 50
        return {28, 0, 227};
    case '2':
        return {79, 0, 176};
    case '3':
        return {130, 0, 125};
    case '4':
        return {181, 0, 74};
    case '5':
        return {232, 0, 23};
    default:
        return {0, 0, 0};
    }
}

bool isClose(const QColor &a, const QColor &b)
{
    constexpr int rounding = 1; // of a blended channel
    return qAbs(a.red() - b.red()) <= rounding && qAbs(a.green() - b.green()) <= rounding
        && qAbs(a.blue() - b.blue()) <= rounding;
}

constexpr int cell = 10; // pixels

} // namespace

/// Scenes and how they look, in every kind of OpenGL. A scene has 100 x 50 pixels; a letter of its picture is the pixel
/// in the middle of ten by ten of them.
class tst_Scenes_gl : public QObject
{
    Q_OBJECT

public:
    static void initMain() { useTestDialect(); }

private slots:
    void theContextIsOfTheKindAskedFor();
    void pictures_data();
    void pictures();
};

void tst_Scenes_gl::theContextIsOfTheKindAskedFor()
{
    Scene stage;
    std::atomic<bool> isRight{false};
    connect(
        &stage.window(), &QQuickWindow::beforeRendering, this,
        [&] { isRight = isOfTestDialect(*QOpenGLContext::currentContext()); }, Qt::DirectConnection);
    QVERIFY(stage.show());
    QVERIFY(isRight);
}

void tst_Scenes_gl::pictures_data()
{
    QTest::addColumn<QByteArray>("scene");
    QTest::addColumn<QStringList>("picture");
    const auto row = [](const char *name, const QByteArray &scene, const QStringList &picture) {
        QTest::newRow(name) << scene << picture;
    };

    row("five bars of a series; the largest leaves five hundredths free", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            BarPlotter { color: "blue"; chartArea: chart; plotterArea: Qt.rect(0, 0, 5, 1); data: [1, 2, 3, 4, 5] }
        })",
        {"        BB", "      BBBB", "    BBBBBB", "  BBBBBBBB", "BBBBBBBBBB"});

    row("a fixed chart rectangle", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 10, 10)
            BarPlotter { color: "blue"; chartArea: chart; plotterArea: Qt.rect(2, 0, 6, 1); data: [4, 10, 6] }
        })",
        {"    BB    ", "    BB    ", "    BBBB  ", "  BBBBBB  ", "  BBBBBB  "});

    row("a zoom rectangle cuts bars at both ends", R"(
        ChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; adaptChartHeight: false; chartRect: Qt.rect(0, 0, 10, 5)
            BarPlotter { color: "blue"; plotterArea: Qt.rect(0, 0, 10, 1); data: [5, 4, 3, 2, 1, 1, 2, 3, 4, 5] }
            Component.onCompleted: { addPlotter(data[0]); zoomRect = Qt.rect(2.5, 0, 5, 5) }
        })",
        {"          ", "          ", "B        B", "BBB    BBB", "BBBBBBBBBB"});

    row("the height follows the visible maximum", R"(
        ChartArea {
            width: 100; height: 50
            BarPlotter { color: "blue"; plotterArea: Qt.rect(0, 0, 4, 1); data: [100, 100, 2, 1] }
            Component.onCompleted: { updateIntervalMs = 0; addPlotter(data[0]); zoomRect = Qt.rect(2, 0, 2, 1) }
        })",
        {"BBBBB     ", "BBBBB     ", "BBBBB     ", "BBBBBBBBBB", "BBBBBBBBBB"});

    row("values that are not numbers or below zero leave gaps, huge ones reach the top", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 5, 5)
            BarPlotter { color: "blue"; chartArea: chart; plotterArea: Qt.rect(0, 0, 5, 1); data: [3, NaN, -4, 1e30, 2] }
        })",
        {"      BB  ", "      BB  ", "BB    BB  ", "BB    BBBB", "BB    BBBB"});

    row("a greater zOrder lies above, in whatever order they are added", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 4, 5)
            BarPlotter { color: "red"; zOrder: 2; chartArea: chart; plotterArea: Qt.rect(0, 0, 4, 1); data: [3, 3, 0, 0] }
            BarPlotter { color: "blue"; zOrder: 1; chartArea: chart; plotterArea: Qt.rect(0, 0, 4, 1); data: [5, 5, 5, 5] }
        })",
        {"BBBBBBBBBB", "BBBBBBBBBB", "RRRRRBBBBB", "RRRRRBBBBB", "RRRRRBBBBB"});

    row("a higher layer lies above a greater zOrder", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 1, 5)
            BarPlotter { color: "red"; zOrder: 9; drawLayer: 1; chartArea: chart; plotterArea: Qt.rect(0, 0, 1, 1); data: [5] }
            BarPlotter { color: "blue"; zOrder: 1; drawLayer: 2; chartArea: chart; plotterArea: Qt.rect(0, 0, 1, 1); data: [3] }
        })",
        {"RRRRRRRRRR", "RRRRRRRRRR", "BBBBBBBBBB", "BBBBBBBBBB", "BBBBBBBBBB"});

    row("a plotter in two layers lies below and above", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 2, 5)
            BarPlotter { color: "#800000ff"; drawLayer: 5; chartArea: chart; plotterArea: Qt.rect(0, 0, 1, 1); data: [5] }
            BarPlotter { color: "red"; drawLayer: 2; chartArea: chart; plotterArea: Qt.rect(0, 0, 2, 1); data: [3, 3] }
        })",
        {"QQQQQ     ", "QQQQQ     ", "MMMMMRRRRR", "MMMMMRRRRR", "MMMMMRRRRR"});

    row("half transparent bars over white and black", R"(
        Item {
            width: 100; height: 50
            Rectangle { width: 50; height: 50; color: "white" }
            IChartArea {
                id: chart
                anchors.fill: parent
                adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 1, 5)
                BarPlotter { color: "#800000ff"; chartArea: chart; plotterArea: Qt.rect(0, 0, 1, 1); data: [3] }
            }
        })",
        {"WWWWW     ", "WWWWW     ", "LLLLLHHHHH", "LLLLLHHHHH", "LLLLLHHHHH"});

    row("an invisible plotter and one that was removed", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 2, 5)
            BarPlotter { color: "red"; visible: false; chartArea: chart; plotterArea: Qt.rect(0, 0, 2, 1); data: [5, 5] }
            BarPlotter { color: "green"; plotterArea: Qt.rect(0, 0, 2, 1); data: [5, 5] }
            BarPlotter { color: "blue"; chartArea: chart; plotterArea: Qt.rect(0, 0, 2, 1); data: [0, 3] }
            Component.onCompleted: { addPlotter(data[1]); removePlotter(data[1]) }
        })",
        {"          ", "          ", "     BBBBB", "     BBBBB", "     BBBBB"});

    row("an offset moves bars to the left", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 10, 5)
            BarPlotter { color: "blue"; xOffset: 3; chartArea: chart; plotterArea: Qt.rect(0, 0, 10, 1); data: [1, 2, 3, 4, 5] }
        })",
        {"     BB   ", "   BBBB   ", " BBBBBB   ", "BBBBBBB   ", "BBBBBBB   "});

    row("a node feeds plotters and their areas", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 10, 5)
            BarPlotter { id: bars; color: "blue"; chartArea: chart }
            Filter1D { id: child }
            Filter1D {
                id: node; area: Qt.rect(5, 0, 5, 1); data: [5, 4, 3, 2, 1]
                Component.onCompleted: { addFilter(child); child.addPlotter(bars) }
            }
        })",
        {"     B    ", "     BB   ", "     BBB  ", "     BBBB ", "     BBBBB"});

    row("two charts beside each other, with other items between and above", R"(
        Item {
            width: 100; height: 50
            IChartArea {
                id: chart
                width: 40; height: 50
                adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 2, 5)
                BarPlotter { color: "blue"; chartArea: chart; plotterArea: Qt.rect(0, 0, 2, 1); data: [5, 2] }
            }
            IChartArea {
                id: other
                x: 60; y: 10; width: 40; height: 40
                adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 2, 4)
                BarPlotter { color: "red"; chartArea: other; plotterArea: Qt.rect(0, 0, 2, 1); data: [1, 3] }
            }
            Rectangle { x: 10; y: 30; width: 80; height: 10; color: "#00ff00" }
        })",
        {"BB        ", "BB        ", "BB      RR", "BGGGGGGGGR", "BBBB  RRRR"});

    row("a chart that is turned, clipped and half transparent", R"(
        Item {
            width: 100; height: 50; clip: true
            IChartArea {
                id: chart
                x: 50; y: 0; width: 100; height: 50; rotation: 180; opacity: 128 / 255
                adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 2, 5)
                BarPlotter { color: "blue"; chartArea: chart; plotterArea: Qt.rect(0, 0, 2, 1); data: [1, 3] }
            }
        })",
        {"     HHHHH", "     HHHHH", "     HHHHH", "          ", "          "});

    row("a list that is set, with a plotter that has no chart area", R"(
        IChartArea {
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 2, 5)
            property list<QtObject> kept: [
                BarPlotter { color: "blue"; plotterArea: Qt.rect(0, 0, 2, 1); data: [5, 2] },
                BarPlotter { color: "red"; zOrder: 1; plotterArea: Qt.rect(0, 0, 2, 1); data: [1, 1] }
            ]
            Component.onCompleted: plotter = [kept[1], kept[0]]
        })",
        {"BBBBB     ", "BBBBB     ", "BBBBB     ", "BBBBBBBBBB", "RRRRRRRRRR"});

    row("a series too long for buffers of its length", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 5, 5)
            BarPlotter { id: bars; color: "blue"; chartArea: chart; plotterArea: Qt.rect(0, 0, 5, 1) }
            Component.onCompleted: bars.data = Array.from({ length: 100000 }, (_, i) => 1 + Math.floor(i / 20000))
        })",
        {"        BB", "      BBBB", "    BBBBBB", "  BBBBBBBB", "BBBBBBBBBB"});

    row("an area and its border", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 10, 5)
            AreaPlotter {
                color: "blue"; borderColor: "red"; chartArea: chart; plotterArea: Qt.rect(0, 0, 10, 1)
                data: [2.45, 2.45, 2.45, 2.45, 2.45, 12.45, 12.45, 12.45, 12.45, 12.45]
            }
        })",
        {"    BBBBB ", "    BBBBB ", "RRRRBBBBB ", "BBBBBBBBB ", "BBBBBBBBB "});

    row("an area without a border, above bars", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 10, 5)
            BarPlotter { color: "red"; chartArea: chart; plotterArea: Qt.rect(0, 0, 10, 1); data: [4] }
            AreaPlotter {
                color: "#800000ff"; borderEnable: false; zOrder: 1; chartArea: chart
                plotterArea: Qt.rect(0, 0, 10, 1)
                data: [2, 2, 2, 2, 2, 2, 2, 2, 2, 2]
            }
        })",
        {"          ", "RRRRRRRRRR", "RRRRRRRRRR", "MMMMMMMMMR", "MMMMMMMMMR"});

    row("a gradient from blue to red", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 10, 5)
            AreaPlotter {
                color: "blue"; enableGradient: true; gradientColor: "red"; borderEnable: false; chartArea: chart
                plotterArea: Qt.rect(0, 0, 10, 1); data: [5, 5, 5, 5, 5, 5, 5, 5, 5, 5]
            }
        })",
        {"111111111 ", "222222222 ", "333333333 ", "444444444 ", "555555555 "});

    row("an area too long for buffers of its length", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 5, 5)
            AreaPlotter {
                id: surface; color: "blue"; borderColor: "blue"; chartArea: chart
                plotterArea: Qt.rect(0, 0, 5, 1)
            }
            Component.onCompleted: surface.data = Array.from({ length: 100000 }, (_, i) => 1 + Math.floor(i / 20000))
        })",
        {"        BB", "      BBBB", "    BBBBBB", "  BBBBBBBB", "BBBBBBBBBB"});

    row("bars of individual widths", R"(
        IChartArea {
            id: chart
            width: 100; height: 50
            adaptAreaToPlotters: false; chartRect: Qt.rect(100, 0, 10, 5)
            BarPlotterDx {
                color: "blue"; chartArea: chart; plotterArea: Qt.rect(101, 0, 0, 0)
                data: [1, 5, 3, 2, 2, 0, 2, 4]
            }
        })",
        {" B        ", " B     BB ", " B     BB ", " BBBB  BB ", " BBBB  BB "});
}

void tst_Scenes_gl::pictures()
{
    QFETCH(QByteArray, scene);
    QFETCH(QStringList, picture);
    LogCatcher log;
    Scene stage({10 * cell, 5 * cell});
    QVERIFY(stage.load(scene));
    QVERIFY(stage.show());
    const QImage seen = stage.grab();
    QVERIFY2(log.messages().isEmpty(), qPrintable(log.messages().join('\n')));
    for (int line = 0; line < picture.size(); ++line) {
        for (int column = 0; column < picture.at(line).size(); ++column) {
            const QChar letter = picture.at(line).at(column);
            const QColor pixel = seen.pixelColor(column * cell + cell / 2, line * cell + cell / 2);
            QVERIFY2(
                isClose(pixel, colorOf(letter)),
                qPrintable(
                    QString("line %1, column %2: %3 is not %4").arg(line).arg(column).arg(pixel.name()).arg(letter)));
        }
    }
}

QTEST_MAIN(tst_Scenes_gl)
#include "tst_Scenes_gl.moc"
