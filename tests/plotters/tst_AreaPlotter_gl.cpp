// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/AreaPlotter.h"
#include "tests/support/LayerRecorder.h"
#include "tests/support/QuietTest.h"
#include "tests/support/Scene.h"

#include <QtTest>

#include <cmath>
#include <functional>
#include <memory>

namespace {

constexpr QSize pixels(200, 100);

/// A chart of 200 x 100 pixels that shows (0, 0) to (10, 10) on black, with one plotter over its whole width.
struct SAreaScene
{
    LayerRecorder<AreaPlotter> plotter; // outlives the scene: nothing draws it any more
    Scene scene{pixels};
    IChartArea &chart = scene.add(new IChartArea);

    explicit SAreaScene(const QVector<double> &data)
    {
        chart.setAdaptAreaToPlotters(false);
        chart.setUpdateIntervalMs(0);
        chart.setChartRect(QRectF(0.0, 0.0, 10.0, 10.0));
        chart.addPlotter(&plotter);
        plotter.setPlotterArea(QRectF(0.0, 0.0, 10.0, 10.0));
        plotter.setColor(Qt::green);
        plotter.setBorderEnable(false);
        plotter.setData(data);
    }
    double x(int column) const
    {
        const QRectF view = chart.viewRect();
        return view.left() + (column + 0.5) / pixels.width() * view.width();
    }
    double value(int row) const { return (1.0 - (row + 0.5) / pixels.height()) * chart.viewRect().height(); }
};

bool isClose(const QColor &a, const QColor &b, int tolerance = 2)
{
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance
        && std::abs(a.blue() - b.blue()) <= tolerance;
}

QString described(int column, int row, const QColor &seen, const QColor &expected)
{
    return QStringLiteral("(%1, %2) is %3, not %4").arg(column).arg(row).arg(seen.name(), expected.name());
}

/// `color` on black.
QColor faded(const QColor &color, double alpha)
{
    return QColor::fromRgbF(color.redF() * alpha, color.greenF() * alpha, color.blueF() * alpha);
}

/// The value of the polyline through (first + i * step, data[i]) at x, or no number outside it.
double polyline(const QVector<double> &data, double first, double step, double x)
{
    const double slot = (x - first) / step;
    const int i = int(std::floor(slot));
    if (i < 0 || i + 1 >= data.size())
        return std::nan("");
    return data.at(i) + (data.at(i + 1) - data.at(i)) * (slot - i);
}

} // namespace

class tst_AreaPlotter_gl : public QuietTest
{
    Q_OBJECT

private slots:
    void theFillLiesBetweenZeroAndTheLine();
    void theFillFollowsTheOffsetAndTheView();
    void theStripEndsWithTheLastVisibleSlot();
    void aTranslucentFillHasItsAlpha();
    void theGradientRunsFromTheBottomOfTheValuesToTheTopOfTheView();
    void aGradientIsSeenWithTheNextFrameOnly();

    void theLayersAreBuiltAsDescribed();
    void theBorderKeepsTheWidthOfTheFirstFrame();
    void aBorderThatWasOffStaysOff();
    void aBorderThatIsSwitchedOffStaysOff();
    void theBorderColorFollowsItsProperty();

    void theHeightBelongsToTheDataOnceDrawn();
    void aShorterSeriesDrawsNothingOfTheLongerOne();
    void anEmptySeriesDrawsNothing();
    void aSeriesOfHeightZeroIsNotDrawn();
    void anInvisiblePlotterIsNotDrawn();
    void withoutAChartAreaNothingIsDrawn();
};

void tst_AreaPlotter_gl::theFillLiesBetweenZeroAndTheLine()
{
    const QVector<double> data{1.0, 7.0, 3.0, 3.0, 9.0, 0.0, 5.0, 8.0, 2.0, 6.0};
    SAreaScene area(data);
    QVERIFY(area.scene.show());
    const QImage image = area.scene.grab();
    int checked = 0;
    for (int column = 0; column < image.width(); ++column) {
        const double line = polyline(data, 0.0, 1.0, area.x(column));
        for (int row = 0; row < image.height(); ++row) {
            if (std::abs(area.value(row) - line) < 0.02)
                continue; // the edge runs through this pixel's centre
            const QColor expected = area.value(row) < line ? Qt::green : Qt::black;
            const QColor seen = image.pixelColor(column, row);
            QVERIFY2(seen == expected, qPrintable(described(column, row, seen, expected)));
            ++checked;
        }
    }
    QVERIFY(checked > 19000);
}

void tst_AreaPlotter_gl::theFillFollowsTheOffsetAndTheView()
{
    const QVector<double> data{4.0, 8.0, 2.0, 6.0, 5.0, 9.0, 1.0, 7.0};
    SAreaScene area(data);
    area.plotter.setPlotterArea(QRectF(10.0, 0.0, 4.0, 10.0));
    area.plotter.setXOffset(2.0);
    area.chart.setChartRect(QRectF(11.0, 0.0, 6.0, 12.0));
    QVERIFY(area.scene.show());
    const QImage image = area.scene.grab();
    for (int column = 0; column < image.width(); ++column) {
        const double line = polyline(data, 12.0, 0.5, area.x(column)); // the left edge and the offset to the right
        for (int row = 0; row < image.height(); ++row) {
            if (std::abs(area.value(row) - line) < 0.05)
                continue;
            const QColor expected = area.value(row) < line ? Qt::green : Qt::black;
            const QColor seen = image.pixelColor(column, row);
            QVERIFY2(seen == expected, qPrintable(described(column, row, seen, expected)));
        }
    }
}

void tst_AreaPlotter_gl::theStripEndsWithTheLastVisibleSlot()
{
    SAreaScene area(QVector<double>(10, 8.0));
    area.chart.setChartRect(QRectF(3.2, 0.0, 4.3, 10.0)); // to 7.5: points 3 to 7
    QVERIFY(area.scene.show());
    const QVector<SRenderLayerDefinition> layers = area.plotter.layers();
    QCOMPARE(layers.at(0).first, 6);
    QCOMPARE(layers.at(0).count, 10);
    QCOMPARE(layers.at(1).first, 3);
    QCOMPARE(layers.at(1).count, 5);
    const QImage image = area.scene.grab();
    for (int column = 0; column < image.width(); ++column) {
        if (std::abs(area.x(column) - 7.0) > 0.02)
            QCOMPARE(image.pixelColor(column, 60), QColor(area.x(column) < 7.0 ? Qt::green : Qt::black));
    }
}

void tst_AreaPlotter_gl::aTranslucentFillHasItsAlpha()
{
    SAreaScene area(QVector<double>(10, 8.0));
    const QColor own = AreaPlotter().color();
    area.plotter.setColor(own);
    QVERIFY(area.scene.show());
    const QColor seen = area.scene.grab().pixelColor(90, 60);
    QVERIFY2(isClose(seen, faded(QColor(7, 203, 242), 0.5)), qPrintable(seen.name()));
}

void tst_AreaPlotter_gl::theGradientRunsFromTheBottomOfTheValuesToTheTopOfTheView()
{
    SAreaScene area(QVector<double>(10, 9.0));
    const QColor top(255, 0, 40);
    const QColor bottom(0, 200, 240, 128);
    area.plotter.setColor(top);
    area.plotter.setGradientColor(bottom);
    area.plotter.setEnableGradient(true);
    QVERIFY(area.scene.show());
    const QImage image = area.scene.grab();
    for (int row = 12; row < image.height(); ++row) {
        const double part = area.value(row) / 10.0; // 1 at the top of the view
        const double alpha = bottom.alphaF() + (top.alphaF() - bottom.alphaF()) * part;
        const auto mix = [&](double from, double to) { return (from + (to - from) * part) * alpha; };
        const QColor expected = QColor::fromRgbF(mix(bottom.redF(), top.redF()), mix(bottom.greenF(), top.greenF()),
                                                 mix(bottom.blueF(), top.blueF()));
        for (const int column : {5, 77, 170}) {
            const QColor seen = image.pixelColor(column, row);
            QVERIFY2(isClose(seen, expected, 3), qPrintable(described(column, row, seen, expected)));
        }
    }
}

void tst_AreaPlotter_gl::aGradientIsSeenWithTheNextFrameOnly()
{
    SAreaScene area(QVector<double>(10, 9.0));
    QVERIFY(area.scene.show());
    area.scene.settle();
    area.plotter.setGradientColor(Qt::red);
    area.plotter.setEnableGradient(true);
    QCOMPARE(area.scene.grab().pixelColor(90, 95), QColor(Qt::green));
    area.chart.requestUpdate();
    QVERIFY(area.scene.grab().pixelColor(90, 95).red() > 200);
}

// layers and border

void tst_AreaPlotter_gl::theLayersAreBuiltAsDescribed()
{
    SAreaScene area(QVector<double>(10, 8.0));
    area.plotter.setBorderEnable(true);
    area.plotter.setBorderWidth(2.5);
    QVERIFY(area.scene.show());
    const QVector<SRenderLayerDefinition> layers = area.plotter.layers();
    QCOMPARE(layers.size(), 2);
    const SRenderLayerDefinition &fill = layers.at(0);
    QCOMPARE(fill.order, 0);
    QCOMPARE(fill.first, 0);
    QCOMPARE(fill.count, 20);
    QCOMPARE(fill.lineWidth, -1.0f);
    QCOMPARE(fill.secondWidth, -1.0f);
    QCOMPARE(fill.programName, QStringLiteral("area_gradient"));
    QCOMPARE(fill.mode, 0x1005u);
    QCOMPARE(fill.attributes, QVector<int>{0});
    QCOMPARE(fill.indexBuffer, -1);
    const SRenderLayerDefinition &border = layers.at(1);
    QCOMPARE(border.order, 1);
    QCOMPARE(border.first, 0);
    QCOMPARE(border.count, 10);
    QCOMPARE(border.lineWidth, 2.5f);
    QCOMPARE(border.secondWidth, -1.0f);
    QCOMPARE(border.programName, QStringLiteral("area"));
    QCOMPARE(border.mode, 0x1003u);
    QCOMPARE(border.attributes, QVector<int>{1});
    QCOMPARE(border.indexBuffer, -1);
}

namespace {

/// A level line at a row's centre, so that a line of 3 pixels covers whole rows.
constexpr double levelOfRow50 = 4.95;

/// The rows of column 90 in the colour of the border.
QVector<int> borderRows(const QImage &image, const QColor &border)
{
    QVector<int> rows;
    for (int row = 0; row < image.height(); ++row) {
        if (image.pixelColor(90, row) == border)
            rows.append(row);
    }
    return rows;
}

} // namespace

void tst_AreaPlotter_gl::theBorderKeepsTheWidthOfTheFirstFrame()
{
    SAreaScene area(QVector<double>(10, levelOfRow50));
    area.plotter.setBorderEnable(true);
    area.plotter.setBorderColor(Qt::red);
    QVERIFY(area.scene.show());
    QCOMPARE(borderRows(area.scene.grab(), Qt::red), (QVector<int>{49, 50, 51}));
    area.plotter.setBorderWidth(7.0);
    QCOMPARE(borderRows(area.scene.grab(), Qt::red), (QVector<int>{49, 50, 51}));
    QCOMPARE(area.plotter.layers().at(1).lineWidth, 3.0f);
}

void tst_AreaPlotter_gl::aBorderThatWasOffStaysOff()
{
    SAreaScene area(QVector<double>(10, levelOfRow50));
    area.plotter.setBorderColor(Qt::red);
    QVERIFY(area.scene.show());
    QCOMPARE(area.plotter.layers().size(), 2);
    QCOMPARE(area.plotter.layers().at(1).mode, 0u);
    QVERIFY(borderRows(area.scene.grab(), Qt::red).isEmpty());
    area.plotter.setBorderEnable(true);
    QVERIFY(borderRows(area.scene.grab(), Qt::red).isEmpty());
    QCOMPARE(area.plotter.layers().at(1).mode, 0u);
    QCOMPARE(area.scene.grab().pixelColor(90, 70), QColor(Qt::green)); // the fill is drawn all the same
}

void tst_AreaPlotter_gl::aBorderThatIsSwitchedOffStaysOff()
{
    SAreaScene area(QVector<double>(10, levelOfRow50));
    area.plotter.setBorderEnable(true);
    area.plotter.setBorderColor(Qt::red);
    QVERIFY(area.scene.show());
    QCOMPARE(borderRows(area.scene.grab(), Qt::red).size(), 3);
    area.plotter.setBorderEnable(false);
    QVERIFY(borderRows(area.scene.grab(), Qt::red).isEmpty());
    area.plotter.setBorderEnable(true);
    QVERIFY(borderRows(area.scene.grab(), Qt::red).isEmpty());
}

void tst_AreaPlotter_gl::theBorderColorFollowsItsProperty()
{
    SAreaScene area(QVector<double>(10, levelOfRow50));
    area.plotter.setBorderEnable(true);
    QVERIFY(area.scene.show());
    QCOMPARE(borderRows(area.scene.grab(), QColor(7, 203, 242)).size(), 3);
    area.plotter.setBorderColor(Qt::yellow);
    QCOMPARE(borderRows(area.scene.grab(), Qt::yellow).size(), 3);
}

// areas and series

void tst_AreaPlotter_gl::theHeightBelongsToTheDataOnceDrawn()
{
    SAreaScene area({1.0, 6.0, 2.0});
    QVERIFY(area.scene.show());
    QCOMPARE(area.plotter.plotterArea(), QRectF(0.0, 0.0, 10.0, 6.0));
    const QSignalSpy changed(&area.plotter, &IPlotter::plotterAreaChanged);
    area.plotter.setPlotterArea(QRectF(0.0, 0.0, 10.0, 99.0));
    QCOMPARE(changed.count(), 0);
    area.plotter.setPlotterArea(QRectF(1.0, 2.0, 3.0, 99.0));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(area.plotter.plotterArea(), QRectF(1.0, 2.0, 3.0, 6.0));
    area.plotter.setData({9.0});
    QCOMPARE(area.plotter.plotterArea(), QRectF(1.0, 2.0, 3.0, 9.0));
}

void tst_AreaPlotter_gl::aShorterSeriesDrawsNothingOfTheLongerOne()
{
    SAreaScene area(QVector<double>(10, 9.0));
    QVERIFY(area.scene.show());
    area.plotter.setData(QVector<double>(5, 4.0));
    const QImage image = area.scene.grab();
    QCOMPARE(area.plotter.layers().at(0).count, 10);
    for (int column = 0; column < image.width(); ++column) {
        QCOMPARE(image.pixelColor(column, 50), QColor(Qt::black)); // above the value 4
        if (std::abs(area.x(column) - 8.0) > 0.05)                 // the last of 5 points
            QCOMPARE(image.pixelColor(column, 70), QColor(area.x(column) < 8.0 ? Qt::green : Qt::black));
    }
}

void tst_AreaPlotter_gl::anEmptySeriesDrawsNothing()
{
    SAreaScene area(QVector<double>(10, 9.0));
    QVERIFY(area.scene.show());
    area.plotter.setData({});
    const QImage image = area.scene.grab();
    QCOMPARE(image.pixelColor(90, 70), QColor(Qt::black));
    area.plotter.setData(QVector<double>(10, 9.0));
    QCOMPARE(area.scene.grab().pixelColor(90, 70), QColor(Qt::green));
}

void tst_AreaPlotter_gl::aSeriesOfHeightZeroIsNotDrawn()
{
    SAreaScene area({-1.0, -2.0, -3.0});
    area.chart.setChartRect(QRectF(0.0, -5.0, 10.0, 10.0));
    QVERIFY(area.scene.show());
    QCOMPARE(area.plotter.plotterArea().height(), 0.0);
    QVERIFY(area.plotter.layers().isEmpty());
}

void tst_AreaPlotter_gl::anInvisiblePlotterIsNotDrawn()
{
    SAreaScene area(QVector<double>(10, 9.0));
    area.plotter.setVisible(false);
    QVERIFY(area.scene.show());
    QCOMPARE(area.scene.grab().pixelColor(90, 70), QColor(Qt::black));
    QVERIFY(area.plotter.layers().isEmpty());
    area.plotter.setData(QVector<double>(10, 5.0));
    area.plotter.setVisible(true);
    QCOMPARE(area.scene.grab().pixelColor(90, 70), QColor(Qt::green));
}

void tst_AreaPlotter_gl::withoutAChartAreaNothingIsDrawn()
{
    SAreaScene area(QVector<double>(10, 9.0));
    QVERIFY(area.scene.show());
    QCOMPARE(area.scene.grab().pixelColor(90, 70), QColor(Qt::green));
    area.plotter.setChartArea(nullptr);
    area.chart.setPlotter({&area.plotter});
    QCOMPARE(area.plotter.chartArea(), nullptr);
    QCOMPARE(area.scene.grab().pixelColor(90, 70), QColor(Qt::black));
    area.plotter.setChartArea(&area.chart);
    area.chart.requestUpdate();
    QCOMPARE(area.scene.grab().pixelColor(90, 70), QColor(Qt::green));
}

QTEST_MAIN(tst_AreaPlotter_gl)
#include "tst_AreaPlotter_gl.moc"
