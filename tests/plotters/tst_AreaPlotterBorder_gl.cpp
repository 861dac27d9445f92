// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "gl/CoreProfile.h"
#include "plotters/AreaPlotter.h"
#include "plotters/SAreaGradientProgram.h"
#include "plotters/SAreaPlotterProgram.h"
#include "plotters/ShaderProgramRegistry.h"
#include "tests/support/Dialect.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/RandomSeries.h"

#include <QOpenGLVertexArrayObject>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr int longCount = AreaPlotter::wholeSeries + 1;
constexpr double infinity = std::numeric_limits<double>::infinity();

using Function = double (*)(RandomSeries &, int, double before);

double spike(RandomSeries &random)
{
    return random.oneIn(50) ? random.real(-1.0, 1.0) : 0.0;
}

bool hasInk(const QImage &picture)
{
    QImage black = picture;
    black.fill(Qt::black);
    return picture != black;
}

} // namespace

Q_DECLARE_METATYPE(Function)

// A series of one point more than `wholeSeries` is drawn by parts, and segments of its border that mark nothing of
// their own are left out; the same series without that point is drawn as one strip. Where the last points are not in
// view, every pixel must be the same.

class tst_AreaPlotterBorder_gl : public QObject
{
    Q_OBJECT

public:
    static void initMain() { useTestDialect(); }

private slots:
    void initTestCase()
    {
        ShaderProgramRegistry &registry = ShaderProgramRegistry::instance();
        registry.registerProgram(new SAreaPlotterProgram);
        registry.registerProgram(new SAreaGradientProgram);
    }
    void cleanup()
    {
        m_plotter.reset();
        m_vertexArray.reset();
        m_gl.reset();
    }

    void looksLikeTheWhole_data();
    void looksLikeTheWhole();
    void leavesOutWhatCannotBeSeen_data();
    void leavesOutWhatCannotBeSeen();
    void drawsAllWhereOverdrawingShows();
    void needsNoBuffersOfItsLength();

private:
    void open(const QSize &size, double width)
    {
        cleanup();
        m_gl = std::make_unique<OffscreenGL>(size);
        QVERIFY(m_gl->isValid());
        QVERIFY(isOfTestDialect(m_gl->context()));
        m_vertexArray = std::make_unique<QOpenGLVertexArrayObject>();
        if (isCoreProfile())
            QVERIFY(m_vertexArray->create());
        if (m_vertexArray->isCreated())
            m_vertexArray->bind();
        ShaderProgramRegistry::instance().compileAllPrograms();
        m_chart = std::make_unique<ChartArea>();
        m_plotter = std::make_unique<AreaPlotter>();
        m_plotter->setColor(QColor(10, 200, 250, 128));
        m_plotter->setBorderColor(QColor(250, 100, 0));
        m_plotter->setBorderWidth(width);
        m_plotter->setChartArea(m_chart.get());
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

    bool canCountSegments() { return !m_gl->context().isOpenGLES(); }

    /// Of the border alone, with the blend state of a chart. The border is gone then.
    int segmentsDrawn(const QRectF &view)
    {
        int both = 0;
        int fill = 0;
        m_gl->picture([&] { both = m_gl->primitives([&] { m_plotter->drawFrame(view); }); });
        m_plotter->setBorderEnable(false);
        m_plotter->synchronize();
        m_gl->picture([&] { fill = m_gl->primitives([&] { m_plotter->drawFrame(view); }); });
        return both - fill;
    }

    std::unique_ptr<OffscreenGL> m_gl;
    std::unique_ptr<QOpenGLVertexArrayObject> m_vertexArray;
    std::unique_ptr<ChartArea> m_chart;
    std::unique_ptr<AreaPlotter> m_plotter;
};

void tst_AreaPlotterBorder_gl::looksLikeTheWhole_data()
{
    QTest::addColumn<Function>("next");
    QTest::addColumn<double>("bottom");
    const auto row = [](const char *name, Function next, double bottom = 0.0) {
        QTest::newRow(name) << next << bottom;
    };
    row("noise", [](RandomSeries &random, int, double) { return random.real(0.0, 1.0); });
    row(
        "noise around zero", [](RandomSeries &random, int, double) { return random.real(-1.0, 1.0); }, -1.05);
    row("noise, cut below", [](RandomSeries &random, int, double) { return random.real(-1.0, 1.0); });
    row("two levels", [](RandomSeries &random, int i, double) {
        return (i / 3000) % 2 != 0 ? 0.75 + 0.25 * random.real(0.0, 1.0) : 0.2 * random.real(0.0, 1.0);
    });
    row("thin noise",
        [](RandomSeries &random, int i, double) { return 0.5 + 1e-5 * i + 0.03 * random.real(-1.0, 1.0); });
    row("few values", [](RandomSeries &random, int, double) { return 0.1 * random.whole(0, 10); });
    row(
        "spikes", [](RandomSeries &random, int, double) { return spike(random); }, -1.0);
    row("constant", [](RandomSeries &, int, double) { return 0.5; });
    row("waves", [](RandomSeries &, int i, double) { return 0.5 + 0.5 * std::sin(i / 700.0); });
    row("ripples", [](RandomSeries &, int i, double) { return 0.5 + 0.4 * std::sin(i / 3.0); });
    row("a straight line", [](RandomSeries &, int i, double) { return i / double(longCount); });
    row(
        "a random walk", [](RandomSeries &random, int, double before) { return before + random.real(-1e-2, 1e-2); },
        -1.0);
    row(
        "a random walk in small steps",
        [](RandomSeries &random, int, double before) { return before + random.real(-1e-3, 1e-3); }, -1.0);
    row(
        "a random walk on a grid",
        [](RandomSeries &random, int, double before) { return before + 0.015625 * random.whole(-1, 1); }, -1.0);
    row("gaps",
        [](RandomSeries &random, int, double) { return random.oneIn(9) ? std::nan("") : random.real(0.0, 1.0); });
    row("rare gaps and infinities", [](RandomSeries &random, int, double) {
        const double strange[] = {std::nan(""), infinity, -infinity, 1e300, -1e300, 1e38, 1e30, -1e9, 1e5, 100.0};
        return random.oneIn(100) ? strange[random.whole(0, 9)] : random.real(0.0, 1.0);
    });
    row(
        "far away", [](RandomSeries &random, int, double) { return 1000.0 + random.real(0.0, 1.0); }, 1000.0);
    row(
        "far away and cut on both sides", [](RandomSeries &random, int, double) { return random.real(-4.0, 6.0); },
        0.0);
}

void tst_AreaPlotterBorder_gl::looksLikeTheWhole()
{
    QFETCH(Function, next);
    QFETCH(double, bottom);
    const int views = std::max(qEnvironmentVariableIntValue("VORLIX_TEST_VIEWS"), 5);
    RandomSeries random(quint64(qHash(QByteArray(QTest::currentDataTag()))) + quint64(views));
    int inked = 0;
    for (const double width : {3.0, 1.0, 2.0, 2.5, 7.0, 0.0}) {
        for (const bool opaque : {true, false}) {
            const QSize size(random.whole(9, 80), random.whole(20, 90));
            open(size, width);
            m_plotter->setBorderColor(QColor(250, 100, 0, opaque ? 255 : 100));
            m_plotter->setEnableGradient(random.oneIn(2));
            QVector<double> series;
            double value = 0.0;
            for (int i = 0; i < longCount; ++i)
                series << (value = next(random, i, value));
            QVector<QRectF> shown;
            for (int i = 0; i < views; ++i) {
                const double part = std::pow(10.0, random.real(-2.5, i == 0 ? 0.0 : -0.4)) * longCount * 0.7;
                const double top = 1.05 * std::pow(10.0, random.oneIn(3) ? random.real(-1.0, 1.0) : 0.0);
                shown << QRectF(random.real(-0.02, 0.29) * longCount, bottom, part,
                                top - (bottom < 0.0 ? bottom : 0.0));
            }
            QVector<double> whole = series;
            whole.removeLast();
            show(whole);
            QVector<QImage> expected;
            for (const QRectF &view : qAsConst(shown))
                expected << drawn(view);
            show(series);
            for (int i = 0; i < views; ++i) {
                const QRectF &view = shown.at(i);
                const QImage seen = drawn(view);
                inked += hasInk(seen);
                QVERIFY2(seen == expected.at(i),
                         qPrintable(QString("width %1, opaque %2, %3 x %4 pixels, view %5 %6 %7 %8")
                                        .arg(width)
                                        .arg(opaque)
                                        .arg(size.width())
                                        .arg(size.height())
                                        .arg(view.x(), 0, 'g', 17)
                                        .arg(view.y(), 0, 'g', 17)
                                        .arg(view.width(), 0, 'g', 17)
                                        .arg(view.height(), 0, 'g', 17)));
            }
        }
    }
    QVERIFY(inked > 0);
}

void tst_AreaPlotterBorder_gl::leavesOutWhatCannotBeSeen_data()
{
    QTest::addColumn<Function>("next");
    QTest::addColumn<int>("segments");
    QTest::newRow("noise") << Function([](RandomSeries &random, int, double) { return random.real(0.0, 1.0); })
                           << 50'000;
    QTest::newRow("spikes") << Function([](RandomSeries &random, int, double) { return spike(random); }) << 50'000;
    QTest::newRow("constant") << Function([](RandomSeries &, int, double) { return 0.5; }) << 100'000;
    QTest::newRow("waves") << Function([](RandomSeries &, int i, double) { return 0.5 + 0.5 * std::sin(i / 1e5); })
                           << 100'000;
}

void tst_AreaPlotterBorder_gl::leavesOutWhatCannotBeSeen()
{
    QFETCH(Function, next);
    QFETCH(int, segments);
    constexpr int count = 1'000'000;
    open(QSize(100, 100), 3.0);
    if (!canCountSegments())
        QSKIP("OpenGL ES does not count primitives");
    QVector<double> series;
    RandomSeries random(1);
    double value = 0.0;
    for (int i = 0; i < count; ++i)
        series << (value = next(random, i, value));
    show(series);
    const int drawnSegments = segmentsDrawn({0.0, -0.02, count, 1.1});
    QVERIFY2(drawnSegments < segments, QByteArray::number(drawnSegments));
    QVERIFY(drawnSegments > 100);
}

void tst_AreaPlotterBorder_gl::drawsAllWhereOverdrawingShows()
{
    open(QSize(100, 100), 3.0);
    if (!canCountSegments())
        QSKIP("OpenGL ES does not count primitives");
    m_plotter->setBorderColor(QColor(250, 100, 0, 254));
    QVector<double> series;
    RandomSeries random(1);
    for (int i = 0; i < longCount; ++i)
        series << random.real(0.0, 1.0);
    show(series);
    const int drawnSegments = segmentsDrawn({0.0, 0.0, double(longCount), 1.0});
    QVERIFY2(drawnSegments > longCount * 9 / 10, QByteArray::number(drawnSegments));
}

void tst_AreaPlotterBorder_gl::needsNoBuffersOfItsLength()
{
    open(QSize(100, 100), 1.0);
    m_plotter->setBorderColor(QColor(250, 100, 0, 100));
    constexpr int count = 500'000;
    QVector<double> series;
    RandomSeries random(1);
    for (int i = 0; i < count; ++i)
        series << random.real(0.0, 1.0);
    show(series);
    drawn({0.0, 0.0, count, 1.0});
    int bytes = 0;
    for (const int size : m_gl->bufferSizes())
        bytes += size;
    QVERIFY2(bytes < 2'000'000, QByteArray::number(bytes));
}

QTEST_MAIN(tst_AreaPlotterBorder_gl)
#include "tst_AreaPlotterBorder_gl.moc"
