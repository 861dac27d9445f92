// SPDX-License-Identifier: MIT
#include "EverySegment.h"
#include "PlainMarks.h"

#include "tests/support/FrameCount.h"
#include "tests/support/RandomSeries.h"
#include "views/items/AreaSeries.h"
#include "views/items/BarSeries.h"
#include "views/items/LineSeries.h"
#include "views/items/LogValueAxis.h"
#include "views/items/PlotPicture.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/RectsNode.h"

#include <QQuickWindow>
#include <QtTest>

#include <cmath>

namespace {

const QColor ink(255, 0, 0);

/// A view in a window, and what its plot area shows, at the window's own pixel ratio.
class Stage
{
public:
    /// By default with a size that a ratio of 1.25 or 1.5 leaves no whole number of pixels.
    explicit Stage(const QSize &size = QSize(241, 157))
    {
        frames.follow(window, window);
        window.setColor(Qt::white);
        window.resize(size);
        view.setParentItem(window.contentItem());
        view.setSize(window.size());
        view.axisX()->setLabelsVisible(false);
        view.axisY()->setLabelsVisible(false);
        view.axisX()->setGridVisible(false);
        view.axisY()->setGridVisible(false);
        window.show();
    }
    bool isReady() { return QTest::qWaitForWindowExposed(&window, patience); }

    double ratio() const { return window.effectiveDevicePixelRatio(); }
    int columns() const { return int(std::lround(view.plotArea().width() * ratio())); }
    int rows() const { return int(std::lround(view.plotArea().height() * ratio())); }

    /// `first` and `step` of the columns; values are rows from the bottom.
    void show(double first, double step)
    {
        view.axisX()->setMin(first * step);
        view.axisX()->setMax((first + columns()) * step);
        view.axisY()->setMin(0.0);
        view.axisY()->setMax(rows());
    }

    QImage plotArea()
    {
        const QImage all = window.grabWindow();
        const QPoint corner(int(std::lround(view.plotArea().x() * ratio())),
                            int(std::lround(view.plotArea().y() * ratio())));
        return all.copy(QRect(corner, QSize(columns(), rows())));
    }

    PlainMarks marks()
    {
        QCoreApplication::processEvents(); // values that were set are there with the next event
        const QImage picture = plotArea();
        PlainMarks found(columns(), rows());
        for (int row = 0; row < rows(); ++row) {
            for (int column = 0; column < columns(); ++column) {
                if (picture.pixelColor(column, row) == ink)
                    found.mark(column, row);
            }
        }
        return found;
    }

    FrameCount frames;
    QQuickWindow window;
    PlotView view;
};

struct Series
{
    QVector<double> values;
    QVector<double> xs; ///< in device pixels
    QVector<double> ys;
};

/// Values on a sixteenth of a pixel plus a little: the backend's own grid holds them exactly, and the line never
/// crosses the middle of a column just on the edge of a pixel, where either one may be marked.
Series randomSeries(RandomSeries &random, const Stage &stage, double first, double step, int kind, bool leavesView)
{
    Series series;
    const int count = int(std::ceil((first + stage.columns()) * step)) + random.whole(2, 9);
    const double aLittle = step < 0.25 ? 0.0012345 : 1.0 / 256.0;
    double level = stage.rows() / 2;
    for (int i = 0; i < count; ++i) {
        level = kind == 0 ? random.real(0.0, stage.rows()) : level + random.real(-1.0, 1.0) * (1.0 + 3.0 / step);
        level = std::clamp(level, 0.0, stage.rows() - 1.0);
        const double shown = leavesView && random.oneIn(100) ? random.real(-5.0, 6.0) * stage.rows() : level;
        double value = std::floor(shown) + random.whole(0, 15) / 16.0 + aLittle;
        if (kind == 2 && random.oneIn(9))
            value = std::nan("");
        series.values.append(value);
        series.xs.append(i / step - first);
        series.ys.append(stage.rows() - value);
    }
    series.xs.append(count / step - first);
    return series;
}

/// What `drawn` is to mark, which is bars, an area or a line of the series.
PlainMarks plainMarks(const PlotSeries &drawn, const Series &series, const Stage &stage, double base)
{
    PlainMarks plain(stage.columns(), stage.rows());
    if (drawn.isBars())
        plain.markBars(series.xs, series.ys, stage.rows() - base);
    else if (qobject_cast<const AreaSeries *>(&drawn))
        plain.markArea(series.xs, series.ys, stage.rows() - base);
    else
        plain.markLine(series.xs, series.ys);
    return plain;
}

void showX(Stage &stage, double from, double to)
{
    stage.view.axisX()->setMin(from);
    stage.view.axisX()->setMax(to);
    stage.view.axisX()->setMin(from); // the other end may have been in the way
}

} // namespace

#define COMPARE_MARKS(actual, expected) \
  do { \
    const PlainMarks actual_ = actual; \
    const PlainMarks expected_ = expected; \
    QVERIFY(expected_.count() > 0); \
    QVERIFY2(actual_ == expected_, actual_.difference(expected_).constData()); \
  } while (false)

/// What the scene graph makes of the series. Run with several pixel ratios.
class tst_SeriesPixels : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void drawsAThinLineAsEverySegment_data();
    void drawsAThinLineAsEverySegment();
    void drawsMoreDotsThanANodeHolds();
    void drawsBarsAndAreasAsEachByItself();
    void drawsEverythingOnALogScaleOfX_data();
    void drawsEverythingOnALogScaleOfX();
    void drawsALineAsWideAsItIs();
    void drawsASingleValueAsADot();
    void coversWhatALineCovers();
    void drawsTheSameInAPicture();
    void blendsNoPixelTwice_data();
    void blendsNoPixelTwice();
    void keepsItsColumnsInAPan();
    void isOpaqueOnEveryGround();
    void staysInsideThePlotArea();
    void asksForNoFrameWhileNothingChanges();
    void asksForNoFrameForValuesOutOfView();
    void showsTheNewestValue();
    void outlivesItsStoreSeriesAndView();
};

void tst_SeriesPixels::initTestCase()
{
    const QByteArray wanted = qgetenv("QT_SCALE_FACTOR");
    Stage stage;
    QVERIFY(stage.isReady());
    QCOMPARE(stage.ratio(), wanted.isEmpty() ? 1.0 : wanted.toDouble());
}

void tst_SeriesPixels::drawsAThinLineAsEverySegment_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<int>("kind");
    for (const double step : {1.0 / 64, 0.25, 0.5, 1.0, 2.0, 4.0, 8.0, 16.0, 128.0}) {
        QTest::addRow("noise, %g values a pixel", step) << step << 0;
        QTest::addRow("smooth, %g values a pixel", step) << step << 1;
        QTest::addRow("gaps, %g values a pixel", step) << step << 2;
    }
}

void tst_SeriesPixels::drawsAThinLineAsEverySegment()
{
    QFETCH(double, step);
    QFETCH(int, kind);
    Stage stage(QSize(240, 156));
    QVERIFY(stage.isReady());
    LineSeries line;
    line.setWidth(0.0);
    line.setColor(ink);
    EverySegment segments(stage.view.seriesLayer(), stage.ratio(), ink);
    for (quint64 seed = 0; seed < 3; ++seed) {
        RandomSeries random(seed);
        const double first = step < 0.1 ? -20.0 : random.whole(-20, 60);
        // What leaves the view is cut by the backend, not always on its own grid.
        const bool isForTheBackend = step >= 0.25 && seed < 2 && drawsGeometry(stage.window);
        const Series series = randomSeries(random, stage, first, step, kind, !isForTheBackend);
        stage.show(first, step);
        line.setValues(QVariant::fromValue(series.values));
        stage.view.addSeries(&line);
        segments.setVisible(false);
        const PlainMarks drawn = stage.marks();
        PlainMarks plain(stage.columns(), stage.rows());
        plain.markLine(series.xs, series.ys);
        COMPARE_MARKS(drawn, plain);
        stage.view.removeSeries(&line);
        if (!isForTheBackend)
            continue;
        segments.show(series.xs, series.ys);
        segments.setVisible(true);
        COMPARE_MARKS(drawn, stage.marks());
    }
}

void tst_SeriesPixels::drawsMoreDotsThanANodeHolds()
{
    Stage stage(QSize(480, 320));
    QVERIFY(stage.isReady());
    RandomSeries random(1);
    Series series = randomSeries(random, stage, 0.0, 128.0, 0, false);
    for (int i = 0; i < series.values.size(); i += 2)
        series.values[i] = series.ys[i] = std::nan("");
    LineSeries line;
    line.setWidth(0.0);
    line.setColor(ink);
    line.setValues(QVariant::fromValue(series.values));
    stage.view.addSeries(&line);
    stage.show(0.0, 128.0);
    PlainMarks plain(stage.columns(), stage.rows());
    plain.markLine(series.xs, series.ys);
    COMPARE_MARKS(stage.marks(), plain);
}

void tst_SeriesPixels::drawsBarsAndAreasAsEachByItself()
{
    Stage stage;
    QVERIFY(stage.isReady());
    BarSeries bars;
    AreaSeries area;
    for (const double step : {1.0 / 64, 0.3, 0.5, 1.0, 3.7, 16.0, 128.0}) {
        RandomSeries random(quint64(1000 * step));
        const double shortStep = double(float(step)); // few digits: what the columns make of it, too
        const double first = random.whole(-20, 60);
        const Series series = randomSeries(random, stage, first, shortStep, random.whole(0, 2), true);
        stage.show(first, shortStep);
        const double base = 30.0;
        for (PlotSeries *each : {static_cast<PlotSeries *>(&bars), static_cast<PlotSeries *>(&area)}) {
            each->setColor(ink);
            each->setProperty("baseline", base);
            each->setValues(QVariant::fromValue(series.values));
            stage.view.addSeries(each);
            const PlainMarks drawn = stage.marks();
            stage.view.removeSeries(each);
            COMPARE_MARKS(drawn, plainMarks(*each, series, stage, base));
        }
    }
}

void tst_SeriesPixels::drawsEverythingOnALogScaleOfX_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("end");
    for (const int count : {3, 40, 1000, 100'000}) {
        QTest::addRow("%d values", count) << count << 1.0 + count;
        QTest::addRow("the first of %d values", count) << count << 1.0 + count / 2.5;
    }
}

/// Far apart on the left and many to a pixel on the right.
void tst_SeriesPixels::drawsEverythingOnALogScaleOfX()
{
    QFETCH(int, count);
    QFETCH(double, end);
    Stage stage(QSize(240, 156));
    LogValueAxis axis;
    axis.setLabelsVisible(false);
    axis.setGridVisible(false);
    stage.view.setAxisX(&axis);
    QVERIFY(stage.isReady());
    showX(stage, 1.0, end);
    stage.view.axisY()->setMin(0.0);
    stage.view.axisY()->setMax(stage.rows());
    RandomSeries random(count);
    Series series;
    for (int i = 0; i < count; ++i) {
        series.values.append(random.whole(0, stage.rows() - 1) + random.whole(0, 15) / 16.0 + 1.0 / 256.0);
        series.ys.append(stage.rows() - series.values.last());
    }
    // Columns have a width of few digits; a hundred thousandth of a pixel may decide over one in a steep line.
    int exponent = 0;
    const double width = std::ldexp(std::frexp(std::log10(end) / stage.columns(), &exponent), 24);
    const double column = std::ldexp(std::floor(width), exponent - 24);
    for (int i = 0; i <= count; ++i)
        series.xs.append(std::log10(1.0 + i) / column);
    const double base = 30.0;
    BarSeries bars;
    AreaSeries area;
    LineSeries line;
    line.setWidth(0.0);
    for (PlotSeries *each : std::initializer_list<PlotSeries *>{&bars, &area, &line}) {
        each->setColor(ink);
        each->setStart(1.0);
        each->setProperty("baseline", base);
        each->setValues(QVariant::fromValue(series.values));
        stage.view.addSeries(each);
        const PlainMarks drawn = stage.marks();
        stage.view.removeSeries(each);
        COMPARE_MARKS(drawn, plainMarks(*each, series, stage, base));
    }
}

/// Edges that lie on the edges of pixels: no pixel is half covered.
void tst_SeriesPixels::drawsALineAsWideAsItIs()
{
    Stage stage(QSize(240, 156));
    QVERIFY(stage.isReady());
    LineSeries line;
    line.setColor(ink);
    stage.view.addSeries(&line);
    stage.show(0.0, 1.0);
    const QColor ground = stage.view.theme()->plotAreaBackgroundColor();
    for (const int width : {2, 3, 4, 7, 20}) {
        for (const bool isSmooth : {true, false}) {
            const int middle = 60;
            line.setWidth(width / stage.ratio());
            line.setAntialiasing(isSmooth);
            line.setValues(QVariant::fromValue(QVector<double>(600, middle + (width % 2) * 0.5)));
            QCoreApplication::processEvents();
            const QImage picture = stage.plotArea();
            const int bottom = stage.rows() - middle + width / 2;
            for (int row = 0; row < stage.rows() - 2; ++row) {
                const bool isLine = row >= bottom - width && row < bottom;
                for (int column = 2; column < stage.columns(); ++column)
                    QCOMPARE(picture.pixelColor(column, row), isLine ? ink : ground);
            }
        }
    }
}

void tst_SeriesPixels::drawsASingleValueAsADot()
{
    Stage stage(QSize(240, 156));
    QVERIFY(stage.isReady());
    LineSeries line;
    line.setColor(ink);
    line.setWidth(6.0 / stage.ratio());
    line.setStart(50.0);
    line.setValues(QVariant::fromValue(QVector<double>{40.0}));
    stage.view.addSeries(&line);
    stage.show(0.0, 1.0);
    const PlainMarks marks = stage.marks();
    QCOMPARE(marks.count(), 36);
    QVERIFY(marks.at(47, stage.rows() - 43));
    QVERIFY(marks.at(52, stage.rows() - 38));
}

/// A slanted line covers its length times its width, whatever pixels that is divided among.
void tst_SeriesPixels::coversWhatALineCovers()
{
    Stage stage(QSize(240, 156));
    QVERIFY(stage.isReady());
    stage.view.theme()->setPlotAreaBackgroundColor(Qt::black);
    LineSeries line;
    line.setColor(Qt::white);
    stage.view.addSeries(&line);
    stage.show(0.0, 1.0);
    for (const double slope : {0.1, 0.5, 1.0, 3.0}) {
        for (const double width : {1.5, 2.0, 5.0}) {
            const double rise = 80.0;
            const double run = rise / slope;
            line.setWidth(width / stage.ratio());
            line.setStart(20.0);
            line.setStep(std::min(run, 150.0));
            line.setValues(QVariant::fromValue(QVector<double>{20.0, 20.0 + line.step() * slope}));
            QCoreApplication::processEvents();
            const QImage picture = stage.plotArea();
            double covered = 0.0;
            for (int row = 0; row < stage.rows() - 2; ++row) { // without the axes' own lines
                for (int column = 2; column < stage.columns(); ++column)
                    covered += picture.pixelColor(column, row).greenF();
            }
            const double length = line.step() * std::hypot(1.0, slope) + width; // ends reach half a width further
            QVERIFY2(std::abs(covered / (length * width) - 1.0) < 0.03,
                     qPrintable(QStringLiteral("%1 instead of %2").arg(covered).arg(length * width)));
        }
    }
}

/// Bar by bar and pixel by pixel what the scene graph draws; of wide lines all but a few shades.
void tst_SeriesPixels::drawsTheSameInAPicture()
{
    Stage stage(QSize(240, 156));
    QVERIFY(stage.isReady());
    RandomSeries random(7);
    const Series series = randomSeries(random, stage, 0.0, 0.7, 1, true);
    BarSeries bars;
    AreaSeries area;
    LineSeries thin;
    LineSeries wide;
    thin.setWidth(0.0);
    wide.setWidth(3.0);
    for (PlotSeries *each : std::initializer_list<PlotSeries *>{&bars, &area, &thin, &wide}) {
        each->setColor(ink);
        each->setOpacity(each == &wide ? 1.0 : 0.75);
        each->setValues(QVariant::fromValue(series.values));
        stage.view.addSeries(each);
        stage.show(0.0, 0.7);
        QCoreApplication::processEvents();
        const QImage shown = stage.plotArea();
        QString error;
        const QImage picture = pictureOf(stage.view, stage.ratio(), error);
        stage.view.removeSeries(each);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        const QPoint corner(int(std::lround(stage.view.plotArea().x() * stage.ratio())),
                            int(std::lround(stage.view.plotArea().y() * stage.ratio())));
        int different = 0;
        const int shade = each == &wide ? 24 : 2;
        for (int row = 0; row < shown.height() - 2; ++row) { // without the axes' own lines
            for (int column = 2; column < shown.width(); ++column) {
                const QRgb a = shown.pixel(column, row);
                const QRgb b = picture.pixel(corner + QPoint(column, row));
                different += std::abs(qGreen(a) - qGreen(b)) > shade;
            }
        }
        const int allowed = each == &wide ? 40 : 0; // where a middle lies on an edge
        QVERIFY2(different <= allowed, qPrintable(QStringLiteral("%1 pixels").arg(different)));
    }
}

void tst_SeriesPixels::blendsNoPixelTwice_data()
{
    QTest::addColumn<double>("alpha");
    QTest::addColumn<double>("opacity");
    QTest::addColumn<bool>("isArea");
    QTest::newRow("color of a line") << 0.5 << 1.0 << false;
    QTest::newRow("opacity of a line") << 1.0 << 0.5 << false;
    QTest::newRow("color of a border") << 0.5 << 1.0 << true;
    QTest::newRow("opacity of an area with a border") << 1.0 << 0.5 << true;
}

/// The pieces of a wide line lie over each other at bends. It's translucent as a whole.
void tst_SeriesPixels::blendsNoPixelTwice()
{
    QFETCH(double, alpha);
    QFETCH(double, opacity);
    QFETCH(bool, isArea);
    Stage stage(QSize(240, 156));
    QVERIFY(stage.isReady());
    stage.view.theme()->setPlotAreaBackgroundColor(Qt::white);
    LineSeries line;
    AreaSeries area;
    PlotSeries &series = isArea ? static_cast<PlotSeries &>(area) : line;
    const QColor halfBlack = QColor::fromRgbF(0.0, 0.0, 0.0, alpha);
    series.setColor(isArea ? QColor(Qt::transparent) : halfBlack);
    area.setBorderColor(halfBlack);
    area.setBorderWidth(6.0);
    line.setWidth(6.0);
    series.setOpacity(opacity);
    QVector<double> values;
    for (int i = 0; i < 2000; ++i)
        values.append(i % 2 == 0 ? 20.0 : 120.0);
    series.setValues(QVariant::fromValue(values));
    stage.view.addSeries(&series);
    QString error;
    for (const double step : {0.05, 0.3, 4.0}) {
        stage.show(0.0, step);
        QCoreApplication::processEvents();
        const QImage shown = stage.plotArea();
        const QPoint corner(int(std::lround(stage.view.plotArea().x() * stage.ratio())),
                            int(std::lround(stage.view.plotArea().y() * stage.ratio())));
        const QImage saved = pictureOf(stage.view, stage.ratio(), error).copy(QRect(corner, shown.size()));
        for (const QImage &picture : {shown, saved}) {
            int darkest = 255;
            for (int row = 0; row < picture.height() - 2; ++row) { // without the axes' own lines
                for (int column = 2; column < picture.width(); ++column)
                    darkest = std::min(darkest, qGreen(picture.pixel(column, row)));
            }
            QVERIFY2(std::abs(darkest - 127) <= 1, qPrintable(QStringLiteral("%1 at %2").arg(darkest).arg(step)));
        }
    }
}

void tst_SeriesPixels::keepsItsColumnsInAPan()
{
    Stage stage;
    QVERIFY(stage.isReady());
    RandomSeries random(3);
    const Series series = randomSeries(random, stage, 0.0, 500.0, 0, true);
    AreaSeries area;
    BarSeries bars;
    LineSeries line;
    line.setWidth(0.0);
    const QVariant values = QVariant::fromValue(series.values);
    for (PlotSeries *each : std::initializer_list<PlotSeries *>{&area, &bars, &line}) {
        each->setValues(values);
        each->setStart(1e9 + 1.0 / 3.0);
        each->setOpacity(0.6);
        stage.view.addSeries(each);
    }
    stage.view.axisY()->setMin(-30.0);
    stage.view.axisY()->setMax(stage.rows() * 1.3);
    for (const double step : {0.013, 0.7, 1.0, 3.3, 77.7}) {
        const double from = 1e9 + 1000.0;
        showX(stage, from, from + stage.columns() * step);
        QCoreApplication::processEvents();
        const QImage before = stage.plotArea();
        for (const int pixels : {1, 2, 37}) {
            showX(stage, from + pixels * step, from + (stage.columns() + pixels) * step);
            QCoreApplication::processEvents();
            const QImage after = stage.plotArea();
            const QRect shared(2, 0, stage.columns() - pixels - 2, stage.rows() - 2); // without the axes' own lines
            QCOMPARE(after.copy(shared), before.copy(shared.translated(pixels, 0)));
        }
    }
}

void tst_SeriesPixels::isOpaqueOnEveryGround()
{
    Stage stage;
    QVERIFY(stage.isReady());
    BarSeries bars;
    bars.setColor(QColor(10, 120, 200));
    bars.setValues(QVariant::fromValue(QVector<double>(100, 1.0)));
    stage.view.addSeries(&bars);
    stage.view.axisX()->setMin(0.0);
    stage.view.axisX()->setMax(100.0);
    stage.view.axisY()->setMin(0.0);
    stage.view.axisY()->setMax(1.0);
    for (const QColor &ground : {QColor(Qt::white), QColor(Qt::black), QColor(255, 0, 255)}) {
        stage.view.theme()->setPlotAreaBackgroundColor(ground);
        stage.view.theme()->setBackgroundColor(ground);
        QCoreApplication::processEvents();
        const QImage picture = stage.plotArea();
        QCOMPARE(picture.pixelColor(stage.columns() / 2, stage.rows() / 2), bars.color());
        QCOMPARE(picture.pixelColor(0, 0), bars.color());
    }
}

void tst_SeriesPixels::staysInsideThePlotArea()
{
    Stage stage;
    QVERIFY(stage.isReady());
    LineSeries line;
    line.setWidth(20.0);
    line.setColor(ink);
    line.setValues(QVariant::fromValue(QVector<double>{0.0, 1.0, 0.0, 1.0}));
    stage.view.addSeries(&line);
    stage.view.axisX()->setMin(0.0);
    stage.view.axisX()->setMax(3.0);
    stage.view.axisY()->setMin(0.0);
    stage.view.axisY()->setMax(1.0);
    QCoreApplication::processEvents();
    const QImage all = stage.window.grabWindow();
    const QRectF area(stage.view.plotArea().topLeft() * stage.ratio(), stage.view.plotArea().size() * stage.ratio());
    QVERIFY(area.left() > 2.0 && area.bottom() < all.height() - 2.0);
    int inside = 0;
    for (int y = 0; y < all.height(); ++y) {
        for (int x = 0; x < all.width(); ++x) {
            if (all.pixelColor(x, y) != ink)
                continue;
            QVERIFY(area.contains(QPointF(x + 0.5, y + 0.5)));
            ++inside;
        }
    }
    QVERIFY(inside > 100);
}

void tst_SeriesPixels::asksForNoFrameWhileNothingChanges()
{
    Stage stage;
    QVERIFY(stage.isReady());
    LineSeries line;
    line.setValues(QVariant::fromValue(QVector<double>{0.0, 1.0, 0.5}));
    stage.view.addSeries(&line);
    QTest::qWait(1300); // a range that shrinks after a rest may ask for a frame
    stage.frames.settle(stage.window);
    const int before = stage.frames.shown();
    line.setName(QStringLiteral("another name"));
    QTest::qWait(300);
    QCOMPARE(stage.frames.shown(), before);
    line.setColor(ink); // and now it does
    QTRY_VERIFY(stage.frames.shown() > before);
}

void tst_SeriesPixels::asksForNoFrameForValuesOutOfView()
{
    Stage stage;
    QVERIFY(stage.isReady());
    SeriesStore store;
    for (int i = 0; i < 1000; ++i)
        store.append(double(i % 7));
    LineSeries line;
    line.setStore(&store);
    stage.view.addSeries(&line);
    stage.view.axisX()->setMin(0.0);
    stage.view.axisX()->setMax(500.0);
    stage.view.axisY()->setMin(0.0);
    stage.view.axisY()->setMax(7.0);
    stage.frames.settle(stage.window);
    const int before = stage.frames.shown();
    QSignalSpy changes(&store, &SeriesStore::changed);
    store.append(3.0);
    QTRY_COMPARE(changes.size(), 1);
    QTest::qWait(300);
    QCOMPARE(stage.frames.shown(), before);
    stage.view.axisX()->setMax(1500.0);
    QTRY_VERIFY(stage.frames.shown() > before);
    stage.frames.settle(stage.window);
    const int then = stage.frames.shown();
    store.append(3.0); // this one can be seen
    QTRY_VERIFY(stage.frames.shown() > then);
}

void tst_SeriesPixels::showsTheNewestValue()
{
    Stage stage;
    QVERIFY(stage.isReady());
    SeriesStore store;
    BarSeries bars;
    bars.setColor(ink);
    bars.setStore(&store);
    stage.view.addSeries(&bars);
    const double step = 100.0;
    stage.show(0.0, step);
    for (int i = 0; i < 20 * int(step) + 3; ++i)
        store.append(1.0);
    store.append(double(stage.rows()));
    QCoreApplication::processEvents();
    const PlainMarks marks = stage.marks();
    QVERIFY(marks.at(20, 0));
    QVERIFY(!marks.at(19, 0));
    QVERIFY(!marks.at(21, stage.rows() - 1));
}

void tst_SeriesPixels::outlivesItsStoreSeriesAndView()
{
    for (int order = 0; order < 6; ++order) {
        auto stage = std::make_unique<Stage>();
        QVERIFY(stage->isReady());
        auto store = std::make_unique<SeriesStore>();
        auto line = std::make_unique<LineSeries>();
        store->append(1.0);
        line->setStore(store.get());
        stage->view.addSeries(line.get());
        stage->window.grabWindow();
        const auto drop = [&](int which) {
            if (which == 0)
                stage.reset();
            else if (which == 1)
                store.reset();
            else
                line.reset();
            QCoreApplication::processEvents();
            if (stage)
                stage->window.grabWindow();
        };
        static constexpr int orders[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
        for (const int which : orders[order])
            drop(which);
    }
}

QTEST_MAIN(tst_SeriesPixels)
#include "tst_SeriesPixels_gl.moc"
