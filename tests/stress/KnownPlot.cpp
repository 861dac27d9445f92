// SPDX-License-Identifier: MIT
#include "stress/KnownPlot.h"

#include "stress/Stage.h"
#include "views/store/SeriesStore.h"

#include <QImage>
#include <QQuickItem>

#include <cmath>

namespace {

constexpr int partLength = 8;
const QColor barColor(QStringLiteral("#ff8000"));
const QColor groundColor(QStringLiteral("#102030"));

QString plotText(int x, double maxX, double maxY, const char *values)
{
    return QStringLiteral(R"(import VorlixPlugin.Views 1.0
        PlotView {
            x: %1; width: 150; height: 100
            legendVisible: false; readoutVisible: false; interactive: false
            theme: PlotTheme { plotAreaBackgroundColor: "#102030" }
            axisX { min: 0; max: %2; labelsVisible: false; gridVisible: false }
            axisY { min: 0; max: %3; labelsVisible: false; gridVisible: false }
            BarSeries { objectName: "bars"; color: "#ff8000"; %4 }
        })")
        .arg(x)
        .arg(maxX)
        .arg(maxY)
        .arg(QLatin1String(values));
}

QString sampleFault(const QImage &picture, const QPointF &at, const QColor &expected)
{
    const QPoint pixel = (at * picture.devicePixelRatio()).toPoint();
    if (!picture.rect().contains(pixel))
        return QStringLiteral("no pixel (%1, %2)").arg(pixel.x()).arg(pixel.y());
    const QColor found = picture.pixelColor(pixel);
    if (found == expected)
        return {};
    return QStringLiteral("%1 at (%2, %3) instead of %4")
        .arg(found.name())
        .arg(pixel.x())
        .arg(pixel.y())
        .arg(expected.name());
}

/// Looks at the middle of each bar, at its foot, under its top and above it.
QStringList barFaults(const QImage &picture, const QQuickItem &plot, const QVector<double> &values, double maxY)
{
    if (picture.isNull())
        return {QStringLiteral("no picture")};
    constexpr double near = 3.0; // pixels
    const QRectF area = plot.mapRectToScene(plot.property("plotArea").toRectF());
    if (area.width() < 100 || area.height() < 50)
        return {QStringLiteral("the plot area is %1 by %2").arg(area.width()).arg(area.height())};
    QStringList faults;
    for (int i = 0; i < values.size(); ++i) {
        const double x = area.left() + area.width() * (i + 0.5) / values.size();
        const double height = std::isnan(values[i]) ? 0.0 : area.height() * values[i] / maxY;
        const double top = area.bottom() - height;
        faults << sampleFault(picture, {x, top - near}, groundColor);
        if (height > 2 * near)
            faults << sampleFault(picture, {x, top + near}, barColor)
                   << sampleFault(picture, {x, area.bottom() - near}, barColor);
    }
    faults.removeAll(QString());
    return faults;
}

} // namespace

QQuickItem *placeKnownPlot(Stage &stage, QQuickWindow &window)
{
    return stage.makeIn(window, plotText(0, 4, 5, "values: [1, 4, 2, 3]"));
}

QQuickItem *placePartPlot(Stage &stage, QQuickWindow &window, SeriesStore &store)
{
    QQuickItem *plot = stage.makeIn(window, plotText(160, partLength, 110, ""));
    plot->findChild<QObject *>(QStringLiteral("bars"))->setProperty("store", QVariant::fromValue(&store));
    return plot;
}

QStringList knownPlotFaults(const QImage &picture, const QQuickItem &plot)
{
    return barFaults(picture, plot, {1, 4, 2, 3}, 5);
}

void showPart(QQuickItem &plot, qint64 index)
{
    QMetaObject::invokeMethod(&plot, "zoomTo", Q_ARG(double, double(index)), Q_ARG(double, double(index + partLength)));
}

QStringList partPlotFaults(const QImage &picture, const QQuickItem &plot, const QVector<double> &values)
{
    return barFaults(picture, plot, values, 110);
}
