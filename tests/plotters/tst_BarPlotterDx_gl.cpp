// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "plotters/BarPlotterDx.h"
#include "tests/support/LayerRecorder.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Scene.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <memory>

namespace {

constexpr QSize pixels(400, 60);
constexpr double viewHeight = 10.0;

/// A chart of 400 x 60 pixels that shows what show() says, on black, with one green plotter.
struct SBarScene
{
    LayerRecorder<BarPlotterDx> plotter; // outlives the scene: nothing draws it any more
    Scene scene{pixels};
    IChartArea &chart = scene.add(new IChartArea);

    explicit SBarScene(const QVector<double> &data, double left = 0.0)
    {
        chart.setAdaptAreaToPlotters(false);
        chart.setUpdateIntervalMs(0);
        chart.addPlotter(&plotter);
        plotter.setColor(Qt::green);
        plotter.setPlotterArea(QRectF(left, 0.0, 0.0, 0.0));
        plotter.setData(data);
    }
    void look(double left, double width)
    {
        chart.setChartRect(QRectF(left, 0.0, width, viewHeight));
        chart.requestUpdate();
    }
};

/// What the picture must be, computed in double: which columns are checked, and the value of the bar there.
struct SColumn
{
    bool isSure = false; ///< no edge of a bar comes near the pixel's centre
    double value = 0.0;
};

/// `view` as seen from `left`, the plotter's left edge.
QVector<SColumn> expectedColumns(const QVector<double> &pairs, double left, const QRectF &view)
{
    constexpr double doubt = 0.05; // pixels
    QVector<SColumn> columns(pixels.width());
    const double pixelWidth = view.width() / pixels.width();
    const double viewLeft = view.left() - left;
    int bar = 0;
    double barLeft = 0.0;
    for (int column = 0; column < columns.size(); ++column) {
        const double x = viewLeft + (column + 0.5) * pixelWidth;
        while (bar < pairs.size() / 2 && barLeft + pairs.at(2 * bar) < x)
            barLeft += pairs.at(2 * bar++);
        const bool inside = bar < pairs.size() / 2 && x > 0.0;
        const double barRight = inside ? barLeft + pairs.at(2 * bar) : barLeft;
        const double nearest = std::min(std::abs(x - barLeft), std::abs(barRight - x));
        columns[column] = {nearest > doubt * pixelWidth, inside ? pairs.at(2 * bar + 1) : 0.0};
    }
    return columns;
}

/// Empty when the picture is as expected.
QString difference(const QImage &image, const QVector<SColumn> &columns, int leastSure)
{
    int sure = 0;
    for (int column = 0; column < columns.size(); ++column) {
        if (!columns.at(column).isSure)
            continue;
        ++sure;
        for (int row = 0; row < image.height(); ++row) {
            const double value = (1.0 - (row + 0.5) / image.height()) * viewHeight;
            if (std::abs(value - columns.at(column).value) < 0.02)
                continue;
            const QColor expected = value < columns.at(column).value ? Qt::green : Qt::black;
            if (image.pixelColor(column, row) != expected)
                return QStringLiteral("(%1, %2) is %3, not %4")
                    .arg(column)
                    .arg(row)
                    .arg(image.pixelColor(column, row).name(), expected.name());
        }
    }
    return sure < leastSure ? QStringLiteral("only %1 columns were checked").arg(sure) : QString();
}

/// Bars of about `width` and values between 0 and 9.5, after a first bar that ends at `start`.
QVector<double> barsFrom(double start, double width, int count)
{
    QRandomGenerator random(31337);
    QVector<double> pairs;
    if (start > 0.0)
        pairs << start << 1.0;
    for (int i = 0; i < count; ++i)
        pairs << width * (0.5 + random.generateDouble()) << std::round(random.generateDouble() * 19.0) / 2.0;
    return pairs;
}

} // namespace

class tst_BarPlotterDx_gl : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_log = std::make_unique<LogCatcher>(); }
    void cleanup()
    {
        QCOMPARE(m_log->messages(), QStringList());
        m_log.reset();
    }

    void barsStandWhereTheSumsInDoubleSay_data();
    void barsStandWhereTheSumsInDoubleSay();
    void smallBarsFarOutAreAllThere();
    void aHalfUnitFarOutIsExact();
    void theZoomRectangleIsWhatIsSeen();
    void onlyVisibleBarsAreDrawn_data();
    void onlyVisibleBarsAreDrawn();
    void theLayerIsBuiltAsDescribed();
    void theOffsetPlaysNoPart();
    void theTopOfTheViewPlaysNoPart();
    void negativeValuesAreDrawnDownwards();
    void widthsThatAreNoWidthsDrawWithoutHarm_data();
    void widthsThatAreNoWidthsDrawWithoutHarm();
    void aNewSeriesReplacesTheOldOne();
    void anEmptySeriesDrawsNothing();
    void withoutAChartAreaNothingIsDrawn();
    void aLongSeriesLooksLikeAShortOne();
    void aMillionBarsScroll();
    void theSeriesMayChangeWhileFramesAreDrawn();

private:
    std::unique_ptr<LogCatcher> m_log;
};

void tst_BarPlotterDx_gl::barsStandWhereTheSumsInDoubleSay_data()
{
    QTest::addColumn<double>("left");  // of the plotter
    QTest::addColumn<double>("start"); // of the bars that are looked at, from there
    QTest::addColumn<double>("width"); // of a bar
    QTest::newRow("near the origin") << 0.0 << 0.0 << 1.0;
    QTest::newRow("wide bars") << 0.0 << 0.0 << 1e12;
    QTest::newRow("tiny bars at the origin") << 0.0 << 0.0 << 1e-12;
    QTest::newRow("tiny bars near the origin") << 0.0 << 1e-3 << 1e-12;
    QTest::newRow("tiny bars at one") << 0.0 << 1.0 << 1e-12;
    QTest::newRow("at a million") << 0.0 << 1e6 << 1e-4;
    QTest::newRow("at a hundred million") << 0.0 << 1e8 << 0.25;
    QTest::newRow("at a billion") << 0.0 << 1e9 << 1.0;
    QTest::newRow("at a thousand billion") << 0.0 << 1e12 << 1.0;
    QTest::newRow("plotter far right") << 1e12 << 0.0 << 1.0;
    QTest::newRow("plotter far right, small bars") << 1e12 << 0.0 << 0.05;
    QTest::newRow("plotter far left") << -1e12 << 0.0 << 0.05;
    QTest::newRow("plotter far left, bars back at the origin") << -1e12 << 1e12 << 1.0;
    QTest::newRow("plotter at a million, tiny bars") << 1e6 << 0.0 << 1e-6;
}

void tst_BarPlotterDx_gl::barsStandWhereTheSumsInDoubleSay()
{
    QFETCH(double, left);
    QFETCH(double, start);
    QFETCH(double, width);
    const QVector<double> pairs = barsFrom(start, width, 100);
    SBarScene bars(pairs, left);
    bars.look(left + start + 20.3 * width, 40.0 * width);
    QVERIFY(bars.scene.show());
    for (const double bar : {20.3, 0.0, 71.9, -3.0}) {
        bars.look(left + start + bar * width, 40.0 * width);
        const QImage image = bars.scene.grab();
        const QString fault = difference(image, expectedColumns(pairs, left, bars.chart.viewRect()), 300);
        QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("from bar %1: %2").arg(bar).arg(fault)));
    }
}

void tst_BarPlotterDx_gl::smallBarsFarOutAreAllThere()
{
    // A sum that starts at 1e12 rounds each of these widths by 2 percent: after 1500 bars it is 36 bars behind.
    QVector<double> pairs;
    for (int i = 0; i < 2000; ++i)
        pairs << 0.001 << double(i % 9 + 1);
    SBarScene bars(pairs, 1e12);
    bars.look(1e12 + 1.5, 0.0205);
    QVERIFY(bars.scene.show());
    const QRectF view = bars.chart.viewRect();
    const QString fault = difference(bars.scene.grab(), expectedColumns(pairs, 1e12, view), 300);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void tst_BarPlotterDx_gl::aHalfUnitFarOutIsExact()
{
    const QVector<double> pairs{100000000.5, 9.0, 1.0, 5.0, 1.0, 7.0};
    SBarScene bars(pairs);
    bars.look(100000000.25, 1.0);
    QVERIFY(bars.scene.show());
    const QImage image = bars.scene.grab();
    for (int column = 0; column < image.width(); ++column)
        QCOMPARE(image.pixelColor(column, 20), QColor(column < 100 ? Qt::green : Qt::black)); // values 9 and 5
}

void tst_BarPlotterDx_gl::theZoomRectangleIsWhatIsSeen()
{
    const QVector<double> pairs = barsFrom(1e9, 0.5, 100);
    BarPlotterDx plotter;
    Scene scene(pixels);
    ChartArea &chart = scene.add(new ChartArea);
    chart.setUpdateIntervalMs(0);
    chart.setAdaptChartHeight(false);
    chart.addPlotter(&plotter);
    plotter.setColor(Qt::green);
    plotter.setData(pairs);
    QVERIFY(scene.show());
    chart.setAdaptAreaToPlotters(false);
    chart.setChartRect(QRectF(0.0, 0.0, 2e9, viewHeight));
    chart.setZoomRect(QRectF(1e9 + 10.1, 0.0, 20.0, viewHeight));
    const QImage image = scene.grab();
    QCOMPARE(chart.zoomRect(), QRectF(1e9 + 10.1, 0.0, 20.0, viewHeight));
    const QString fault = difference(image, expectedColumns(pairs, 0.0, chart.zoomRect()), 300);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void tst_BarPlotterDx_gl::onlyVisibleBarsAreDrawn_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::newRow("inside") << 3.2 << 7.5 << 3 << 8;
    QTest::newRow("edges belong to the bar on their left") << 3.0 << 7.0 << 2 << 7;
    QTest::newRow("all") << -5.0 << 50.0 << 0 << 10;
    QTest::newRow("the first") << -5.0 << 0.5 << 0 << 1;
    QTest::newRow("the last") << 9.5 << 30.0 << 9 << 10;
}

void tst_BarPlotterDx_gl::onlyVisibleBarsAreDrawn()
{
    QFETCH(double, left);
    QFETCH(double, right);
    QFETCH(int, start);
    QFETCH(int, end);
    QVector<double> pairs;
    for (int i = 0; i < 10; ++i)
        pairs << 1.0 << 5.0;
    SBarScene bars(pairs, 100.0);
    bars.look(100.0 + left, right - left);
    QVERIFY(bars.scene.show());
    QCOMPARE(bars.plotter.layers().at(0).first, start * 24);
    QCOMPARE(bars.plotter.layers().at(0).count, (end - start) * 6);
}

void tst_BarPlotterDx_gl::theLayerIsBuiltAsDescribed()
{
    SBarScene bars({1.0, 5.0, 2.0, 3.0});
    bars.look(0.0, 3.0);
    QVERIFY(bars.scene.show());
    QCOMPARE(bars.plotter.layers().size(), 1);
    const SRenderLayerDefinition layer = bars.plotter.layers().at(0);
    QCOMPARE(layer.order, 0);
    QCOMPARE(layer.first, 0);
    QCOMPARE(layer.count, 12);
    QCOMPARE(layer.lineWidth, -1.0f);
    QCOMPARE(layer.secondWidth, -1.0f);
    QCOMPARE(layer.programName, QStringLiteral("hresbar"));
    QCOMPARE(layer.mode, 0x2004u);
    QCOMPARE(layer.attributes, QVector<int>{0});
    QCOMPARE(layer.indexBuffer, 1);
}

void tst_BarPlotterDx_gl::theOffsetPlaysNoPart()
{
    const QVector<double> pairs = barsFrom(0.0, 1.0, 20);
    SBarScene bars(pairs);
    bars.look(0.0, 20.0);
    bars.plotter.setXOffset(5.0);
    QVERIFY(bars.scene.show());
    const QString fault = difference(bars.scene.grab(), expectedColumns(pairs, 0.0, bars.chart.viewRect()), 300);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void tst_BarPlotterDx_gl::theTopOfTheViewPlaysNoPart()
{
    const QVector<double> pairs = barsFrom(0.0, 1.0, 20);
    SBarScene bars(pairs);
    bars.chart.setChartRect(QRectF(0.0, 3.0, 20.0, viewHeight));
    QVERIFY(bars.scene.show());
    const QString fault = difference(bars.scene.grab(), expectedColumns(pairs, 0.0, bars.chart.viewRect()), 300);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void tst_BarPlotterDx_gl::negativeValuesAreDrawnDownwards()
{
    // Downwards is out of sight: value 0 is the lower edge. What is left to see is the positive bar between them.
    const QVector<double> pairs{1.0, -4.0, 1.0, 6.0, 1.0, -2.0};
    SBarScene bars(pairs);
    bars.look(0.0, 3.0);
    QVERIFY(bars.scene.show());
    QCOMPARE(bars.plotter.layers().at(0).count, 18);
    const QString fault = difference(bars.scene.grab(), expectedColumns(pairs, 0.0, bars.chart.viewRect()), 300);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void tst_BarPlotterDx_gl::widthsThatAreNoWidthsDrawWithoutHarm_data()
{
    QTest::addColumn<QVector<double>>("pairs");
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("no number") << QVector<double>{1.0, 5.0, notANumber, 3.0, 1.0, 2.0};
    QTest::newRow("no number first") << QVector<double>{notANumber, notANumber, 1.0, 3.0};
    QTest::newRow("infinite") << QVector<double>{1.0, 5.0, infinity, 3.0, 1.0, 2.0};
    QTest::newRow("infinite both ways") << QVector<double>{-infinity, 5.0, infinity, 3.0, 1.0, 2.0};
    QTest::newRow("negative") << QVector<double>{4.0, 5.0, -6.0, 3.0, 1.0, 2.0};
    QTest::newRow("zero") << QVector<double>{0.0, 5.0, 0.0, 3.0, 0.0, 2.0};
    QTest::newRow("beyond single precision") << QVector<double>{1e300, 5.0, 1e300, 1e300, -2e300, 2.0};
}

void tst_BarPlotterDx_gl::widthsThatAreNoWidthsDrawWithoutHarm()
{
    QFETCH(QVector<double>, pairs);
    SBarScene bars(pairs);
    bars.look(-1.0, 5.0);
    QVERIFY(bars.scene.show());
    bars.scene.grab();
    const QVector<SRenderLayerDefinition> layers = bars.plotter.layers();
    if (!layers.isEmpty()) {
        QVERIFY(layers.at(0).first >= 0);
        QVERIFY(layers.at(0).first / 24 + layers.at(0).count / 6 <= pairs.size() / 2);
    }
    bars.plotter.setData({1.0, 5.0, 1.0, 5.0}); // and it recovers
    QCOMPARE(bars.scene.grab().pixelColor(150, 50), QColor(Qt::green));
}

void tst_BarPlotterDx_gl::aNewSeriesReplacesTheOldOne()
{
    SBarScene bars(barsFrom(0.0, 1.0, 40));
    bars.look(0.0, 20.0);
    QVERIFY(bars.scene.show());
    for (const int count : {8, 90, 90, 1, 13}) {
        const QVector<double> pairs = barsFrom(0.0, 20.0 / count, count);
        bars.plotter.setData(pairs);
        const QString fault = difference(bars.scene.grab(), expectedColumns(pairs, 0.0, bars.chart.viewRect()), 250);
        QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("%1 bars: %2").arg(count).arg(fault)));
    }
}

void tst_BarPlotterDx_gl::anEmptySeriesDrawsNothing()
{
    SBarScene bars({1.0, 5.0, 2.0, 3.0});
    bars.look(0.0, 3.0);
    QVERIFY(bars.scene.show());
    QCOMPARE(bars.scene.grab().pixelColor(20, 50), QColor(Qt::green));
    bars.plotter.setData({});
    QCOMPARE(bars.scene.grab().pixelColor(20, 50), QColor(Qt::black));
    QCOMPARE(bars.plotter.layers().at(0).count, 0);
    bars.plotter.setData({7.0});
    QCOMPARE(bars.scene.grab().pixelColor(20, 50), QColor(Qt::black));
}

void tst_BarPlotterDx_gl::withoutAChartAreaNothingIsDrawn()
{
    SBarScene bars({1.0, 5.0, 2.0, 3.0});
    bars.look(0.0, 3.0);
    QVERIFY(bars.scene.show());
    bars.plotter.setChartArea(nullptr);
    bars.chart.setPlotter({&bars.plotter});
    QCOMPARE(bars.plotter.chartArea(), nullptr);
    QCOMPARE(bars.scene.grab().pixelColor(20, 50), QColor(Qt::black));
}

void tst_BarPlotterDx_gl::aLongSeriesLooksLikeAShortOne()
{
    QVector<double> pairs;
    for (int bar = 0; 2 * bar < BarPlotterDx::wholeSeries; ++bar)
        pairs << 0.25 * (bar * 37 % 11) << 0.5 * (bar * 53 % 20);
    SBarScene bars(pairs);
    const QVector<QRectF> views{{0.0, 0.0, 5000.0, 1.0}, {17.3, 0.0, 40.0, 1.0}, {300.1, 0.0, 2000.0, 1.0}};
    bars.look(0.0, 1.0);
    QVERIFY(bars.scene.show());
    QVector<QImage> whole;
    for (const QRectF &view : views) {
        bars.look(view.left(), view.width());
        whole << bars.scene.grab();
    }
    QVERIFY(whole.at(0) != whole.at(1));
    bars.plotter.setData(pairs + QVector<double>{1.0, 1.0}); // beyond the views
    for (int view = 0; view < views.size(); ++view) {
        bars.look(views.at(view).left(), views.at(view).width());
        QVERIFY2(bars.scene.grab() == whole.at(view), QByteArray::number(view));
    }
    QCOMPARE(bars.plotter.layers().at(0).count % 6, 0);
    QVERIFY(bars.plotter.layers().at(0).draw);
}

void tst_BarPlotterDx_gl::aMillionBarsScroll()
{
    constexpr int count = 1'000'000;
    QVector<double> pairs;
    pairs.reserve(2 * count);
    for (int i = 0; i < count; ++i)
        pairs << 0.5 << double(i % 9 + 1);
    SBarScene bars(pairs);
    bars.look(0.0, 10.0);
    QVERIFY(bars.scene.show());
    for (const double left : {100'000.25, 499'995.1, 3.7}) {
        bars.look(left, 10.0);
        const QImage image = bars.scene.grab();
        QVERIFY(bars.plotter.layers().at(0).count <= 6 * 22);
        const QString fault = difference(image, expectedColumns(pairs, 0.0, bars.chart.viewRect()), 300);
        QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("from %1: %2").arg(left).arg(fault)));
    }
}

void tst_BarPlotterDx_gl::theSeriesMayChangeWhileFramesAreDrawn()
{
    SBarScene bars(barsFrom(0.0, 1.0, 20));
    bars.look(0.0, 20.0);
    QVERIFY(bars.scene.show());
    QRandomGenerator random(7);
    const int before = bars.scene.frameCount();
    for (int round = 0; round < 500; ++round) {
        bars.plotter.setData(barsFrom(0.0, 0.01, int(random.bounded(4000))));
        if (round % 3 == 0)
            QCoreApplication::processEvents();
    }
    QVERIFY(bars.scene.frameCount() > before);
    const QVector<double> last = barsFrom(0.0, 1.0, 20);
    bars.plotter.setData(last);
    const QString fault = difference(bars.scene.grab(), expectedColumns(last, 0.0, bars.chart.viewRect()), 300);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

QTEST_MAIN(tst_BarPlotterDx_gl)
#include "tst_BarPlotterDx_gl.moc"
