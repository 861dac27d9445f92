// SPDX-License-Identifier: MIT
#include "geometry/Vertices.h"
#include "geometry/VisibleElements.h"
#include "gl/BarProgram.h"
#include "gl/ElementLayouts.h"
#include "gl/PixelRow.h"
#include "plotters/BarPlotter.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <memory>

// Leaving out bars that can't be seen must change no pixel: every picture here is compared with one for which all bars
// were drawn. The colour is half transparent, so that a bar drawn twice would show, too.

namespace {

/// Bars of one unit each, from 0 on, placed by their numbers.
SPlacedEdges placeIn(const QRectF &view)
{
    return {0.0, 1.0, float(2.0 * (-view.left() / view.width()) - 1.0), float(2.0 * (1.0 / view.width()))};
}

QSurfaceFormat dialect(const QByteArray &name)
{
    QSurfaceFormat format;
    if (name == "es") {
        format.setRenderableType(QSurfaceFormat::OpenGLES);
        format.setVersion(2, 0);
    } else if (name == "2.1") {
        format.setVersion(2, 1);
    }
    return format;
}

} // namespace

class tst_ElementStream_gl : public QObject
{
    Q_OBJECT

private slots:
    void aLongSeriesIsDrawnAsIfAllBarsWere_data();
    void aLongSeriesIsDrawnAsIfAllBarsWere();
    void aShortSeriesCouldBeDrawnByParts();
    void valuesThatAreNotFiniteAreAllDrawn();
    void aLongSeriesNeedsNoBuffersOfItsLength();
    void whatWasDrawnLastIsNotUploadedAgain();
    void aSeriesMayGrowLongAndShortAgain();

private:
    void open(const QSize &size, const QByteArray &name = {})
    {
        m_plotter.reset();
        m_gl.reset();
        m_gl = std::make_unique<OffscreenGL>(size, dialect(name));
        QVERIFY(m_gl->isValid());
        m_plotter = std::make_unique<BarPlotter>();
        m_plotter->setColor(QColor(10, 200, 250, 128));
    }

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

    /// With the plotter's program and state, but bars of the test's choice, placed by their numbers.
    QImage drawnBars(const QVector<double> &series, const QRectF &view, const QVector<SIndexRange> &bars)
    {
        return m_gl->picture([&] {
            m_plotter->drawFrame(view);
            m_gl->gl().glClear(GL_COLOR_BUFFER_BIT);
            const SPlacedEdges placed = placeIn(view);
            QOpenGLShaderProgram &program = barProgram().program();
            program.setUniformValue("screen_x", placed.start);
            program.setUniformValue("screen_dx", placed.step);
            ElementStream stream(barLayout());
            const auto write = [&](const SIndexRange &some, float *corners) {
                writeBars(series.constData(), some, placed, corners);
            };
            stream.draw({series, bars, {}}, write, program, m_gl->gl());
        });
    }

    QVector<SIndexRange> visible(int count, const QRectF &view)
    {
        return elementsOnPixelCentres(placeIn(view), {0, count}, currentPixelRow(m_gl->gl()));
    }

    std::unique_ptr<OffscreenGL> m_gl;
    std::unique_ptr<BarPlotter> m_plotter;
};

void tst_ElementStream_gl::aLongSeriesIsDrawnAsIfAllBarsWere_data()
{
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("views");
    QTest::newRow("100 pixels") << QByteArray() << 100 << 60'000 << 30;
    QTest::newRow("97 pixels") << QByteArray() << 97 << 20'011 << 40;
    QTest::newRow("1000 pixels") << QByteArray() << 1000 << 100'000 << 6;
    QTest::newRow("a million bars") << QByteArray() << 500 << 1'000'000 << 2;
    QTest::newRow("OpenGL ES 2") << QByteArray("es") << 128 << 60'000 << 20;
    QTest::newRow("OpenGL 2.1") << QByteArray("2.1") << 101 << 60'000 << 20;
}

void tst_ElementStream_gl::aLongSeriesIsDrawnAsIfAllBarsWere()
{
    QFETCH(QByteArray, context);
    QFETCH(int, width);
    QFETCH(int, count);
    QFETCH(int, views);
    open(QSize(width, 60), context);
    RandomSeries random(quint64(width + count));
    QVector<double> series;
    for (int i = 0; i < count; ++i)
        series << random.real(-0.3, 1.0) * (random.oneIn(50) ? 0.0 : 1.0);
    show(series);
    int selected = 0;
    for (int i = 0; i < views; ++i) {
        const double part = i == 0 ? 1.0 : std::pow(10.0, random.real(-1.5, 0.1));
        const double left = i == 0 ? 0.0 : random.real(-0.1, 1.0 - 0.5 * part);
        const QRectF view(left * count, 0.0, part * count, 1.05);
        const QImage all = drawnBars(series, view, {{0, count}});
        selected += visible(count, view).size() > 1 ? 1 : 0;
        QCOMPARE(drawn(view), all);
    }
    QVERIFY(selected > views / 3); // there was something to leave out
}

void tst_ElementStream_gl::aShortSeriesCouldBeDrawnByParts()
{
    open(QSize(100, 60));
    RandomSeries random(5);
    for (int round = 0; round < 20; ++round) {
        const int count = random.whole(1'000, BarPlotter::wholeSeries);
        QVector<double> series;
        for (int i = 0; i < count; ++i)
            series << random.real(0.0, 1.0);
        show(series);
        const QRectF view(random.real(-0.1, 0.3) * count, 0.0, random.real(0.4, 1.2) * count, 1.05);
        const QImage whole = drawn(view);
        QCOMPARE(drawnBars(series, view, {{0, count}}), whole);
        QCOMPARE(drawnBars(series, view, visible(count, view)), whole);
    }
}

void tst_ElementStream_gl::valuesThatAreNotFiniteAreAllDrawn()
{
    open(QSize(100, 60));
    constexpr int count = 20'000;
    for (const double strange : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN(), 1e300}) {
        QVector<double> series(count, 0.5);
        for (int i = 0; i < count; i += 997)
            series[i] = strange;
        show(series);
        const QRectF view(0.0, 0.0, count, 1.05);
        QCOMPARE(drawn(view), drawnBars(series, view, {{0, count}}));
    }
}

void tst_ElementStream_gl::aLongSeriesNeedsNoBuffersOfItsLength()
{
    open(QSize(100, 60));
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

void tst_ElementStream_gl::whatWasDrawnLastIsNotUploadedAgain()
{
    open(QSize(100, 60));
    QVector<double> series(20'000, 0.5);
    show(series);
    const QRectF view(0.0, 0.0, 20'000.0, 1.0);
    const QImage once = drawn(view);
    QCOMPARE(drawn(view), once);
    series.fill(0.25);
    show(series); // of the same length, in the same view
    const QImage lower = drawn(view);
    QVERIFY(lower != once);
    series.fill(0.5);
    show(series);
    QCOMPARE(drawn(view), once);
}

void tst_ElementStream_gl::aSeriesMayGrowLongAndShortAgain()
{
    open(QSize(100, 60));
    const auto pictureOf = [&](int count) {
        show(QVector<double>(count, 0.5));
        return drawn({0.0, 0.0, double(count), 1.0});
    };
    const QImage reference = pictureOf(100);
    for (const int count : {BarPlotter::wholeSeries + 1, 10, BarPlotter::wholeSeries, 50'000, 100})
        QCOMPARE(pictureOf(count), reference);
    QCOMPARE(pictureOf(0).pixelColor(50, 50), QColor(0, 0, 0));
}

QTEST_MAIN(tst_ElementStream_gl)
#include "tst_ElementStream_gl.moc"
