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
#include <QSet>
#include <QtTest>

#include <algorithm>
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

bool isInk(const QImage &picture, int x, int y)
{
    return qRed(picture.pixel(x, y)) > 0; // of the border's colour, however transparent
}

/// How many pixels are marked in one picture, and neither they nor any beside them in the other.
int marksFarFrom(const QImage &other, const QImage &marked)
{
    const QRect whole = other.rect();
    int far = 0;
    for (int y = 0; y < whole.height(); ++y) {
        for (int x = 0; x < whole.width(); ++x) {
            if (!isInk(marked, x, y))
                continue;
            const QRect around = QRect(x - 1, y - 1, 3, 3).intersected(whole);
            bool found = false;
            for (int row = around.top(); row <= around.bottom(); ++row) {
                for (int column = around.left(); column <= around.right(); ++column)
                    found |= isInk(other, column, row);
            }
            far += !found;
        }
    }
    return far;
}

int marks(const QImage &picture)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += isInk(picture, x, y);
    }
    return count;
}

/// How many pixels are marked in one picture only.
int differences(const QImage &a, const QImage &b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            count += isInk(a, x, y) != isInk(b, x, y);
    }
    return count;
}

} // namespace

Q_DECLARE_METATYPE(Function)

// A series of one point more than `wholeSeries` is drawn by parts; the same series without that point is drawn as one
// strip. Where the last points are not in view, every pixel must be the same. With many points to a pixel the border of
// the longer one is drawn column by column instead; then it must mark what its segments mark, but for their ends.

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
    void aDenseBorderMarksWhatItsSegmentsMark_data();
    void aDenseBorderMarksWhatItsSegmentsMark();
    void aDenseBorderIsAsTransparentEverywhere();
    void drawsAsManyColumnsAsThereArePixels();
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

    QVector<double> seriesOf(Function next, RandomSeries &random)
    {
        QVector<double> series;
        double value = 0.0;
        for (int i = 0; i < longCount; ++i)
            series << (value = next(random, i, value));
        return series;
    }

    /// Of 18 points or more. The last points of the series lie in none of them.
    QVector<QRectF> randomViews(RandomSeries &random, int count, double mostPoints, double bottom)
    {
        QVector<QRectF> views;
        for (int i = 0; i < count; ++i) {
            const double part = 18.0 * std::pow(mostPoints / 18.0, random.real(0.0, i == 0 ? 1.0 : 0.85));
            const double top = 1.05 * std::pow(10.0, random.oneIn(3) ? random.real(-1.0, 1.0) : 0.0);
            views << QRectF(random.real(-0.02, 0.29) * longCount, bottom, part, top - (bottom < 0.0 ? bottom : 0.0));
        }
        return views;
    }

    QVector<QImage> drawnWhole(QVector<double> series, const QVector<QRectF> &views)
    {
        series.removeLast();
        show(series);
        QVector<QImage> pictures;
        for (const QRectF &view : views)
            pictures << drawn(view);
        return pictures;
    }

    QString described(double width, bool opaque, const QRectF &view)
    {
        return QStringLiteral("width %1, opaque %2, view %3 %4 %5 %6")
            .arg(width)
            .arg(opaque)
            .arg(view.x(), 0, 'g', 17)
            .arg(view.y(), 0, 'g', 17)
            .arg(view.width(), 0, 'g', 17)
            .arg(view.height(), 0, 'g', 17);
    }

    bool canCountPrimitives() { return !m_gl->context().isOpenGLES(); }

    /// Of the border alone, with the blend state of a chart. The border is gone then.
    int primitivesOfTheBorder(const QRectF &view)
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

void tst_AreaPlotterBorder_gl::aDenseBorderMarksWhatItsSegmentsMark_data()
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
    row(
        "far away", [](RandomSeries &random, int, double) { return 1000.0 + random.real(0.0, 1.0); }, 1000.0);
    row(
        "far away and cut on both sides", [](RandomSeries &random, int, double) { return random.real(-4.0, 6.0); },
        0.0);
}

void tst_AreaPlotterBorder_gl::looksLikeTheWhole_data()
{
    aDenseBorderMarksWhatItsSegmentsMark_data();
    const auto row = [](const char *name, Function next) { QTest::newRow(name) << next << 0.0; };
    row("gaps",
        [](RandomSeries &random, int, double) { return random.oneIn(9) ? std::nan("") : random.real(0.0, 1.0); });
    row("rare gaps and infinities", [](RandomSeries &random, int, double) {
        const double strange[] = {std::nan(""), infinity, -infinity, 1e300, -1e300, 1e38, 1e30, -1e9, 1e5, 100.0};
        return random.oneIn(100) ? strange[random.whole(0, 9)] : random.real(0.0, 1.0);
    });
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
            const QVector<double> series = seriesOf(next, random);
            const bool isFinite = std::all_of(series.begin(), series.end(), [](double value) {
                return std::abs(value) <= std::numeric_limits<float>::max();
            });
            const double most = isFinite ? 3.9 * size.width() : 0.7 * longCount; // points in view
            const QVector<QRectF> shown = randomViews(random, views, most, bottom);
            const QVector<QImage> expected = drawnWhole(series, shown);
            show(series);
            for (int i = 0; i < views; ++i) {
                const QImage seen = drawn(shown.at(i));
                inked += hasInk(seen);
                QVERIFY2(seen == expected.at(i), qPrintable(described(width, opaque, shown.at(i))));
            }
        }
    }
    QVERIFY(inked > 0);
}

void tst_AreaPlotterBorder_gl::aDenseBorderMarksWhatItsSegmentsMark()
{
    QFETCH(Function, next);
    QFETCH(double, bottom);
    RandomSeries random(quint64(qHash(QByteArray(QTest::currentDataTag()))));
    int marked = 0;
    int different = 0; // of a line one pixel wide
    for (const double width : {3.0, 1.0, 0.0}) {
        for (const bool opaque : {true, false}) {
            const QSize size(random.whole(9, 80), random.whole(20, 90));
            open(size, width);
            m_plotter->setColor(Qt::transparent);
            m_plotter->setBorderColor(QColor(250, 100, 0, opaque ? 255 : 100));
            const QVector<double> series = seriesOf(next, random);
            const QVector<QRectF> shown = randomViews(random, 5, 0.7 * longCount, bottom);
            const QVector<QImage> expected = drawnWhole(series, shown);
            show(series);
            for (int i = 0; i < shown.size(); ++i) {
                const QImage seen = drawn(shown.at(i));
                // Where a wide line bends within its own width, its segments turn their brushes.
                const int mayBeFar = width == 3.0 ? marks(expected.at(i)) / 100 : 0;
                const int far = marksFarFrom(expected.at(i), seen) + marksFarFrom(seen, expected.at(i));
                QVERIFY2(far <= mayBeFar, qPrintable(described(width, opaque, shown.at(i))));
                marked += width == 3.0 ? 0 : marks(expected.at(i));
                different += width == 3.0 ? 0 : differences(seen, expected.at(i));
            }
        }
    }
    QVERIFY(marked > 0);
    QVERIFY2(different <= marked / 8, qPrintable(QStringLiteral("%1 of %2").arg(different).arg(marked)));
}

void tst_AreaPlotterBorder_gl::aDenseBorderIsAsTransparentEverywhere()
{
    open(QSize(60, 40), 3.0);
    m_plotter->setColor(Qt::transparent);
    m_plotter->setBorderColor(QColor(250, 100, 0, 100));
    RandomSeries random(1);
    QVector<double> series;
    for (int i = 0; i < longCount; ++i)
        series << random.real(0.0, 1.0);
    show(series);
    const QImage seen = drawn({0.0, 0.0, double(longCount), 1.1});
    QSet<QRgb> colors;
    for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x)
            colors.insert(seen.pixel(x, y));
    }
    QCOMPARE(int(colors.size()), 2); // the ground, and the border once over it
}

void tst_AreaPlotterBorder_gl::drawsAsManyColumnsAsThereArePixels()
{
    open(QSize(100, 100), 3.0);
    if (!canCountPrimitives())
        QSKIP("OpenGL ES does not count primitives");
    QVector<double> series;
    RandomSeries random(1);
    for (int i = 0; i < 100'000; ++i)
        series << random.real(0.0, 1.0);
    show(series);
    QCOMPARE(primitivesOfTheBorder({0.0, -0.02, double(series.size()), 1.1}), 200); // two triangles a column
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
