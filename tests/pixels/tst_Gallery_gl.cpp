// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"
#include "tests/support/Scene.h"

#include <QtTest>

namespace {

constexpr int cell = 10; // pixels

// Six charts of 100 x 50 pixels, each of which shows (0, 0) to (10, 5).
const QByteArray gallery = R"(
Item {
    width: 300; height: 100

    component Chart : ChartArea {
        width: 100; height: 50; updateIntervalMs: 0
        adaptAreaToPlotters: false; adaptChartHeight: false; chartRect: Qt.rect(0, 0, 10, 5)
        Component.onCompleted: zoomRect = chartRect
    }

    Chart {
        id: pyramids
        BarPlotter { id: bars; color: "blue"; chartArea: pyramids }
    }
    Chart {
        id: averages; x: 100
        AreaPlotter { id: area; color: "#00ff00"; borderEnable: false; chartArea: averages }
    }
    Chart {
        id: parts; x: 200
        BarPlotter { id: fiveBars; color: "blue"; chartArea: parts }
    }
    Chart {
        id: widths; y: 50
        BarPlotterDx { id: wideBars; color: "red"; chartArea: widths }
    }
    Chart {
        id: resampled; x: 100; y: 50
        BarPlotter { id: fourNumbers; color: "red"; chartArea: resampled }
    }
    Chart {
        id: hovered; x: 200; y: 50
        BarPlotter { id: steps; color: "blue"; chartArea: hovered; plotterArea: Qt.rect(0, 0, 10, 1); data: [1, 2, 3, 4] }
        AreaPlotter {
            color: "transparent"; borderColor: "white"; borderWidth: 4; zOrder: 1
            chartArea: hovered; plotterArea: Qt.rect(0, 0, 10, 1); data: [4.5, 4.5, 4.5]
        }
        BarDecorator {
            id: highlight
            plotters: [steps]; zOrder: 2; chartArea: hovered; active: true; mouseY: 45
            Component.onCompleted: Qt.callLater(() => highlight.mouseX = 60)
        }
    }

    Filter1D { // a thousand values: 1, then 2, and a peak of twenty
        area: Qt.rect(0, 0, 10, 5)
        Component.onCompleted: {
            addFilter(pyramid); addFilter(average); addFilter(fiveParts);
            data = Array.from({length: 1000}, (_, i) => i >= 340 && i < 360 ? 5 : i < 500 ? 1 : 2);
        }
    }
    DecimatorU64 { id: pyramid; chartArea: pyramids; Component.onCompleted: addPlotter(bars) }
    MovingAvarangeU64 { id: average; depth: 40; Component.onCompleted: addPlotter(area) }
    FixedDecimatorU64 { id: fiveParts; numPoint: 5; Component.onCompleted: addPlotter(fiveBars) }

    Filter1D { // pairs of a width and a value
        area: Qt.rect(0, 0, 10, 5)
        Component.onCompleted: {
            addFilter(atLeastTwo); addFilter(fourEqual);
            data = [0.5, 1, 0.5, 4, 1, 2, 3, 3, 5, 1];
        }
    }
    MinimalWidth2D { id: atLeastTwo; mergeWidth: 2; Component.onCompleted: addPlotter(wideBars) }
    FixedDecimator2D { id: fourEqual; numPoint: 4; Component.onCompleted: addPlotter(fourNumbers) }
})";

QColor colorOf(QChar letter)
{
    switch (letter.unicode()) {
    case 'R':
        return {255, 0, 0};
    case 'G':
        return {0, 255, 0};
    case 'B':
        return {0, 0, 255};
    case 'W':
        return {255, 255, 255};
    case 'H': // the highlight, added to a blue bar
        return {70, 70, 255};
    default:
        return {0, 0, 0};
    }
}

bool isClose(const QColor &a, const QColor &b)
{
    constexpr int rounding = 2; // of a blended channel
    return qAbs(a.red() - b.red()) <= rounding && qAbs(a.green() - b.green()) <= rounding
        && qAbs(a.blue() - b.blue()) <= rounding;
}

} // namespace

/// Every plotter and every filter on one screen, in a context in which the highlight is drawn.
class tst_Gallery_gl : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("MESA_GL_VERSION_OVERRIDE", "3.3COMPAT"); }

private slots:
    void everythingOnOneScreen();
};

void tst_Gallery_gl::everythingOnOneScreen()
{
    // A letter is the pixel in the middle of ten by ten. From the left, above: all values with their peak, averaged
    // over forty, in five parts; below: bins of at least 2, four numbers of the resampling, a highlight and a border.
    const QStringList picture = {
        "   B                  BB      ", //
        "   B                  BB      ", //
        "   B         G        BB      ", //
        "   B BBBBB   G GGGGG  BBBBBBBB", //
        "BBBBBBBBBBGGGGGGGGGGBBBBBBBBBB", //
        "                    WWWWWWW   ", //
        "RR                         BBB", //
        "RRRRR     RR             HHBBB", //
        "RRRRR     RR          BBBHHBBB", //
        "RRRRRRRRRRRR   RR   BBBBBHHBBB", //
    };
    LogCatcher log;
    Scene stage({30 * cell, 10 * cell});
    QVERIFY(stage.load(gallery));
    QVERIFY(stage.show());
    const QImage seen = stage.grab();
    QVERIFY2(log.messages().isEmpty(), qPrintable(log.messages().join('\n')));
    QStringList found;
    for (int line = 0; line < 10; ++line) {
        found.append(QString());
        for (int column = 0; column < 30; ++column) {
            const QColor pixel = seen.pixelColor(column * cell + cell / 2, line * cell + cell / 2);
            QChar letter('?');
            for (const QChar candidate : QStringLiteral(" RGBWH")) {
                if (isClose(pixel, colorOf(candidate)))
                    letter = candidate;
            }
            found.last().append(letter);
        }
    }
    QCOMPARE(found.join('\n'), picture.join('\n'));
}

QTEST_MAIN(tst_Gallery_gl)
#include "tst_Gallery_gl.moc"
