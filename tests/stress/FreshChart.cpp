// SPDX-License-Identifier: MIT
#include "stress/FreshChart.h"

#include "stress/Stage.h"

namespace {

constexpr int chartWidth = 200;
constexpr int chartHeight = 105; // the largest value is 4 and the chart 5 % higher, so a unit is 25 pixels
constexpr int unit = 25;
constexpr double values[] = {1.0, 4.0, 2.0, 3.0};

QString sampleFault(const QImage &picture, int x, int y, const QColor &expected)
{
    const QPoint pixel(int((x + 0.5) * picture.devicePixelRatio()), int((y + 0.5) * picture.devicePixelRatio()));
    if (!picture.rect().contains(pixel))
        return QStringLiteral("no pixel (%1, %2)").arg(x).arg(y);
    const QColor found = picture.pixelColor(pixel);
    if (found == expected)
        return {};
    return QStringLiteral("%1 at (%2, %3) instead of %4").arg(found.name()).arg(x).arg(y).arg(expected.name());
}

} // namespace

QString knownChart()
{
    return QStringLiteral(R"(
        ChartArea {
            width: 200; height: 105
            property var shown: BarPlotter { color: "#ff8000"; plotterArea: Qt.rect(0, 0, 4, 1); data: [1, 4, 2, 3] }
            Component.onCompleted: { addPlotter(shown); resetZoomView() }
        })");
}

QQuickItem *placeKnownChart(Stage &stage, QQuickWindow &window)
{
    return stage.makeIn(window, knownChart());
}

QStringList pictureFaults(const QImage &picture)
{
    if (picture.isNull())
        return {QStringLiteral("no picture")};
    const QColor colour("#ff8000");
    QStringList faults;
    for (int bar = 0; bar < 4; ++bar) {
        const int x = chartWidth / 4 * bar + chartWidth / 8;
        const int top = chartHeight - int(values[bar] * unit);
        faults << sampleFault(picture, x, top + 1, colour) << sampleFault(picture, x, chartHeight - 1, colour)
               << sampleFault(picture, x, top - 2, Qt::black);
    }
    faults.removeAll(QString());
    return faults;
}

QStringList windowFaults(Stage &stage, QQuickWindow &window)
{
    stage.frames(window, 2);
    return pictureFaults(window.grabWindow());
}

QStringList freshChartFaults(Stage &stage)
{
    const auto window = stage.open({chartWidth, chartHeight});
    placeKnownChart(stage, *window);
    return windowFaults(stage, *window);
}
