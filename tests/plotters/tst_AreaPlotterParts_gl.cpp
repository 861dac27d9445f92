// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "plotters/AreaPlotter.h"
#include "plotters/SAreaGradientProgram.h"
#include "plotters/SAreaPlotterProgram.h"
#include "plotters/ShaderProgramRegistry.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

#include <limits>
#include <memory>

// A series of one point more than `wholeSeries` is drawn by parts; the same without that point is uploaded and drawn as
// a whole. Where the last points are not in view, the pictures must be the same. Colours are half transparent, so that
// what is drawn twice would show, too.

class tst_AreaPlotterParts_gl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ShaderProgramRegistry &registry = ShaderProgramRegistry::instance();
        registry.registerProgram(new SAreaPlotterProgram);
        registry.registerProgram(new SAreaGradientProgram);
    }

    void partsLookLikeTheWhole_data();
    void partsLookLikeTheWhole();
    void valuesThatAreNotFiniteLookLikeTheWhole();
    void aLongSeriesNeedsNoBuffersOfItsLength();
    void anotherSeriesInTheSameViewIsUploaded();
    void theBorderIsUploadedWithItsView();
    void aSeriesMayGrowLongAndShortAgain();
    void anotherContextGetsItsOwnBuffers();

private:
    void open(const QSize &size)
    {
        m_plotter.reset();
        m_gl.reset();
        m_gl = std::make_unique<OffscreenGL>(size);
        QVERIFY(m_gl->isValid());
        ShaderProgramRegistry::instance().compileAllPrograms();
        m_chart = std::make_unique<ChartArea>();
        m_plotter = std::make_unique<AreaPlotter>();
        m_plotter->setColor(QColor(10, 200, 250, 128));
        m_plotter->setBorderColor(QColor(250, 100, 0, 128));
        m_plotter->setBorderWidth(1.0);
        m_plotter->setChartArea(m_chart.get());
    }

    /// Bins are one unit wide, whatever the size.
    void show(const QVector<double> &series)
    {
        m_plotter->setPlotterArea(QRectF(0.0, 0.0, series.size(), 1.0));
        m_plotter->setData(series);
        m_plotter->synchronize();
    }

    QImage drawn(const QRectF &view)
    {
        return m_gl->picture([&] { m_plotter->drawFrame(view); });
    }

    QVector<double> longSeries(quint64 seed)
    {
        RandomSeries random(seed);
        QVector<double> series;
        for (int i = 0; i <= AreaPlotter::wholeSeries; ++i)
            series << random.real(-0.2, 1.0) * (random.oneIn(50) ? 0.0 : 1.0);
        return series;
    }

    static bool hasInk(const QImage &picture)
    {
        QImage black = picture;
        black.fill(Qt::black);
        return picture.convertToFormat(QImage::Format_RGB32) != black.convertToFormat(QImage::Format_RGB32);
    }

    static QVector<double> withoutLast(QVector<double> series)
    {
        series.removeLast();
        return series;
    }

    std::unique_ptr<OffscreenGL> m_gl;
    std::unique_ptr<ChartArea> m_chart;
    std::unique_ptr<AreaPlotter> m_plotter;
};

void tst_AreaPlotterParts_gl::partsLookLikeTheWhole_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("border");
    QTest::addColumn<bool>("gradient");
    QTest::addColumn<int>("views");
    QTest::newRow("fill") << 100 << false << false << 30;
    QTest::newRow("fill, 97 pixels") << 97 << false << false << 30;
    QTest::newRow("fill, 1000 pixels") << 1000 << false << false << 8;
    QTest::newRow("gradient") << 101 << false << true << 30;
    QTest::newRow("border and fill") << 100 << true << false << 6;
}

void tst_AreaPlotterParts_gl::partsLookLikeTheWhole()
{
    QFETCH(int, width);
    QFETCH(bool, border);
    QFETCH(bool, gradient);
    QFETCH(int, views);
    open(QSize(width, 60));
    m_plotter->setBorderEnable(border);
    m_plotter->setEnableGradient(gradient);
    m_plotter->setGradientColor(QColor(255, 0, 0, 200));
    const QVector<double> series = longSeries(quint64(width));
    RandomSeries random(9);
    QVector<QRectF> shown;
    for (int i = 0; i < views; ++i) {
        const double part = std::pow(10.0, random.real(-2.5, -0.2)) * AreaPlotter::wholeSeries;
        const double most = border ? 3.9 * width : part; // a border with more points to a pixel is drawn by columns
        shown << QRectF(random.real(-0.1, 0.3) * AreaPlotter::wholeSeries, 0.0, std::min(part, most), 1.05);
    }
    show(withoutLast(series));
    QVector<QImage> whole;
    for (const QRectF &view : shown)
        whole << drawn(view);
    QVERIFY(hasInk(whole.last()));
    show(series);
    for (int i = 0; i < views; ++i)
        QCOMPARE(drawn(shown.at(i)), whole.at(i));
}

void tst_AreaPlotterParts_gl::valuesThatAreNotFiniteLookLikeTheWhole()
{
    open(QSize(100, 60));
    m_plotter->setBorderEnable(false);
    for (const double strange : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN(), 1e300}) {
        QVector<double> series = longSeries(3);
        for (int i = 0; i < series.size(); i += 997)
            series[i] = strange;
        const QRectF view(100.0, 0.0, 0.75 * AreaPlotter::wholeSeries, 1.05);
        show(withoutLast(series));
        const QImage whole = drawn(view);
        show(series);
        QCOMPARE(drawn(view), whole);
    }
}

void tst_AreaPlotterParts_gl::aLongSeriesNeedsNoBuffersOfItsLength()
{
    open(QSize(100, 60));
    m_plotter->setBorderEnable(false);
    constexpr int count = 1'000'000;
    show(QVector<double>(count, 0.5));
    const QImage picture = drawn({0.0, 0.0, count, 1.0});
    QCOMPARE(picture.pixelColor(50, 10), QColor(0, 0, 0));
    QVERIFY(picture.pixelColor(50, 50) != QColor(0, 0, 0));
    int bytes = 0;
    for (const int size : m_gl->bufferSizes())
        bytes += size;
    QVERIFY2(bytes < 2'000'000, QByteArray::number(bytes));
}

void tst_AreaPlotterParts_gl::anotherSeriesInTheSameViewIsUploaded()
{
    open(QSize(100, 60));
    const QRectF view(0.0, 0.0, 1000.0, 1.05);
    QVector<double> series(70'000, 0.5);
    show(series);
    const QImage high = drawn(view);
    QCOMPARE(drawn(view), high);
    series.fill(0.25);
    show(series);
    const QImage low = drawn(view);
    QVERIFY(low != high);
    series.fill(0.5);
    show(series);
    QCOMPARE(drawn(view), high);
}

void tst_AreaPlotterParts_gl::theBorderIsUploadedWithItsView()
{
    open(QSize(100, 60));
    const QVector<double> series = longSeries(4);
    show(series);
    const QImage first = drawn({100.0, 0.0, 50.0, 1.05});
    const QImage second = drawn({200.0, 0.0, 50.0, 1.05});
    QVERIFY(second != first);
    QCOMPARE(drawn({100.0, 0.0, 50.0, 1.05}), first);
}

void tst_AreaPlotterParts_gl::aSeriesMayGrowLongAndShortAgain()
{
    open(QSize(100, 60));
    const auto pictureOf = [&](int count) {
        show(QVector<double>(count, 0.5));
        return drawn({0.0, 0.0, 100.0, 1.0});
    };
    const QImage reference = pictureOf(1000);
    QVERIFY(reference.pixelColor(50, 50) != QColor(0, 0, 0));
    for (const int count : {AreaPlotter::wholeSeries + 1, 500, AreaPlotter::wholeSeries, 300'000, 1000})
        QCOMPARE(pictureOf(count), reference);
    QCOMPARE(pictureOf(0).pixelColor(50, 50), QColor(0, 0, 0));
}

void tst_AreaPlotterParts_gl::anotherContextGetsItsOwnBuffers()
{
    open(QSize(100, 60));
    const QRectF view(0.0, 0.0, 1000.0, 1.05);
    show(longSeries(5));
    const QImage here = drawn(view);
    QVERIFY(hasInk(here));
    m_gl.reset(); // the context is gone, and the next may get its address
    m_gl = std::make_unique<OffscreenGL>(QSize(100, 60));
    ShaderProgramRegistry::instance().compileAllPrograms();
    m_plotter->synchronize();
    QCOMPARE(drawn(view), here);
    OffscreenGL second(QSize(100, 60));
    ShaderProgramRegistry::instance().compileAllPrograms();
    m_plotter->synchronize();
    QCOMPARE(second.picture([&] { m_plotter->drawFrame(view); }), here);
}

QTEST_MAIN(tst_AreaPlotterParts_gl)
#include "tst_AreaPlotterParts_gl.moc"
