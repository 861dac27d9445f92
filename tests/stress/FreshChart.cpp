// SPDX-License-Identifier: MIT
#include "stress/FreshChart.h"

#include "stress/Stage.h"

#include <QImage>

namespace {

constexpr int chartWidth = 200;
constexpr int chartHeight = 105; // the largest value is 4 and the chart 5 % higher, so a unit is 25 pixels
constexpr int unit = 25;
constexpr double values[] = {1.0, 4.0, 2.0, 3.0};

const char chart[] = R"(
    ChartArea {
        width: 200; height: 105
        property var shown: BarPlotter { color: "#ff8000"; plotterArea: Qt.rect(0, 0, 4, 1); data: [1, 4, 2, 3] }
        Component.onCompleted: { addPlotter(shown); resetZoomView() }
    })";

QString sampleFault(const QImage &picture, int x, int y, const QColor &expected)
{
    const QColor found = picture.pixelColor(int(x * picture.devicePixelRatio()), int(y * picture.devicePixelRatio()));
    if (found == expected)
        return {};
    return QStringLiteral("%1 at (%2, %3) instead of %4").arg(found.name()).arg(x).arg(y).arg(expected.name());
}

} // namespace

QStringList freshChartFaults(Stage &stage)
{
    const auto window = stage.open({chartWidth, chartHeight});
    stage.makeIn(*window, QString::fromUtf8(chart));
    stage.frames(*window, 2);
    const QImage picture = window->grabWindow();
    if (picture.isNull())
        return {QStringLiteral("the fresh window has no picture")};
    QStringList faults;
    for (int bar = 0; bar < 4; ++bar) {
        const int x = chartWidth / 4 * bar + chartWidth / 8;
        const int top = chartHeight - int(values[bar] * unit);
        faults << sampleFault(picture, x, top + 1, QColor("#ff8000")) << sampleFault(picture, x, chartHeight - 1, QColor("#ff8000"))
               << sampleFault(picture, x, top - 2, Qt::black);
    }
    faults.removeAll(QString());
    return faults;
}
