// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "plotters/AreaPlotter.h"
#include "plotters/BarPlotter.h"
#include "plotters/BarPlotterDx.h"
#include "tests/support/Dialect.h"
#include "tests/support/Scene.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

// Pictures of long series, far from their beginning and far from the origin, against an oracle that computes every
// column in double precision. Where the oracle has an edge nearer to the middle of a pixel than it may be drawn aside,
// either of what lies beside that edge is right.

namespace {

/// How far an edge may be drawn aside, in pixels: by us, and by the rasteriser's grid.
constexpr double aside = 2.0 / 256;

/// Eighths of the view's height, without a pattern.
double levelOf(qint64 element)
{
    return double((quint64(element) * 2654435761u >> 13) % 8 + 1) / 8.0;
}

struct SExtremes
{
    double low;
    double high;
};

/// What is drawn between two x, counted in elements from the first of `count`.
using Oracle = std::function<SExtremes(double from, double to, int count)>;

SExtremes extremesOf(qint64 first, qint64 last)
{
    SExtremes found{2.0, -1.0};
    for (qint64 element = first; element <= last; ++element) {
        found.low = std::min(found.low, levelOf(element));
        found.high = std::max(found.high, levelOf(element));
    }
    return found;
}

/// Outside the series nothing is drawn.
SExtremes clipped(SExtremes found, double from, double to, double begin, double end)
{
    if (from < begin || to >= end)
        found.low = 0.0;
    if (to < begin || from >= end)
        found.high = 0.0;
    return found;
}

SExtremes bars(double from, double to, int count)
{
    const auto bar = [count](double x) { return std::clamp(qint64(std::floor(x)), qint64(0), qint64(count - 1)); };
    return clipped(extremesOf(bar(from), bar(to)), from, to, 0.0, count);
}

/// Bars half a unit and one and a half units wide, in turn.
SExtremes unevenBars(double from, double to, int count)
{
    const auto bar = [count](double x) {
        const double pair = std::floor(x / 2.0);
        return std::clamp(qint64(2 * pair) + (x - 2 * pair >= 0.5 ? 1 : 0), qint64(0), qint64(count - 1));
    };
    return clipped(extremesOf(bar(from), bar(to)), from, to, 0.0, count);
}

double lineAt(double x)
{
    const double point = std::floor(x);
    return levelOf(qint64(point)) + (x - point) * (levelOf(qint64(point) + 1) - levelOf(qint64(point)));
}

SExtremes area(double from, double to, int count)
{
    SExtremes found{std::min(lineAt(from), lineAt(to)), std::max(lineAt(from), lineAt(to))};
    for (double point = std::ceil(from); point <= to; point += 1.0) {
        found.low = std::min(found.low, levelOf(qint64(point)));
        found.high = std::max(found.high, levelOf(qint64(point)));
    }
    return clipped(found, from, to, 0.0, count - 1);
}

bool isInk(QRgb pixel)
{
    return qRed(pixel) > 100;
}

} // namespace

class tst_LongSeries_gl : public QObject
{
    Q_OBJECT

public:
    static void initMain() { useTestDialect(); }

private slots:
    void initTestCase();
    void cleanupTestCase();
    void everyColumnIsWhereTheSeriesHasIt_data();
    void everyColumnIsWhereTheSeriesHasIt();
    void aBorderFollowsItsPoints_data();
    void aBorderFollowsItsPoints();

private:
    static constexpr int width = 640;
    static constexpr int height = 64;

    /// Shows `elements` of `count` elements from number `first` on, and says what the chart made of it.
    void show(IPlotter &plotter, int count, double origin, double &first, double &elements)
    {
        plotter.setColor(Qt::white);
        plotter.setPlotterArea({origin, 0.0, double(count), 1.0});
        m_chart->setChartRect({origin, 0.0, double(count), 1.0});
        m_chart->setZoomRect({origin + first, 0.0, elements, 1.0});
        plotter.setChartArea(m_chart);
        first = m_chart->zoomRect().left() - origin;
        elements = m_chart->zoomRect().width();
    }

    /// Of what is set now: nothing is pending, because the chart takes requests at any moment.
    QImage picture() { return m_scene->window().grabWindow().convertToFormat(QImage::Format_RGB32); }

    const QVector<double> &seriesOf(int count, bool uneven);

    std::unique_ptr<Scene> m_scene;
    ChartArea *m_chart = nullptr;
    QVector<double> m_series; ///< of the row before
};

void tst_LongSeries_gl::initTestCase()
{
    m_scene = std::make_unique<Scene>(QSize(width, height));
    m_chart = &m_scene->add(new ChartArea);
    m_chart->setAdaptAreaToPlotters(false);
    m_chart->setAdaptChartHeight(false);
    m_chart->setUpdateIntervalMs(0);
    QVERIFY(m_scene->show());
}

void tst_LongSeries_gl::cleanupTestCase()
{
    m_scene->close();
    m_scene.reset();
}

/// `count` levels, with widths before them if the bars are uneven.
const QVector<double> &tst_LongSeries_gl::seriesOf(int count, bool uneven)
{
    const bool wasUneven = !m_series.isEmpty() && m_series.at(0) == 0.5;
    if (m_series.size() == (uneven ? 2 * count : count) && wasUneven == uneven)
        return m_series;
    m_series = QVector<double>(uneven ? 2 * count : count);
    double *value = m_series.data();
    for (int i = 0; i < count; ++i) {
        if (uneven)
            *value++ = i % 2 == 0 ? 0.5 : 1.5;
        *value++ = levelOf(i);
    }
    return m_series;
}

/// Where in a series, and where it lies: offsets, and how much is shown.
void addViews(const char *kind, const std::function<void(const QByteArray &, int, double, double, double)> &add)
{
    struct SPlace
    {
        const char *name;
        double origin;
        double first;
    };
    constexpr SPlace places[] = {
        {"0", 0.0, 0.0}, {"1e6", 0.0, 1e6}, {"7e6", 0.0, 7e6}, {"1e9", 1e9, 12'345.0}, {"7e6 and 1e9", 1e9, 7e6}};
    for (const SPlace &place : places) {
        const int count = place.first > 1e5 ? int(place.first) + 1'000'000 : 100'000;
        for (const double elements : {1.0, 1.37, 20.0, 100.0, 1003.0, 40'000.0, double(count)}) {
            const QByteArray name = QByteArray(kind) + ", " + QByteArray::number(elements) + " at " + place.name;
            const double first = elements == count ? 0.0 : place.first + 0.3; // no edge on the view's own edge
            add(name, count, place.origin, first, elements);
        }
    }
}

void tst_LongSeries_gl::everyColumnIsWhereTheSeriesHasIt_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("origin");
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("elements");
    for (const char *kind : {"bars", "uneven bars", "area"}) {
        addViews(kind, [kind](const QByteArray &name, int count, double origin, double first, double elements) {
            QTest::newRow(name.constData()) << QByteArray(kind) << count << origin << first << elements;
        });
    }
}

void tst_LongSeries_gl::everyColumnIsWhereTheSeriesHasIt()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, count);
    QFETCH(double, origin);
    QFETCH(double, first);
    QFETCH(double, elements);
    const bool uneven = kind == "uneven bars";
    std::unique_ptr<IPlotter> plotter;
    Oracle oracle = bars;
    if (uneven) {
        plotter = std::make_unique<BarPlotterDx>();
        oracle = unevenBars;
    } else if (kind == "area") {
        auto *made = new AreaPlotter;
        made->setBorderEnable(false);
        plotter.reset(made);
        oracle = area;
    } else {
        plotter = std::make_unique<BarPlotter>();
    }
    plotter->setChartArea(m_chart);
    plotter->setData(seriesOf(count, uneven));
    show(*plotter, count, origin, first, elements);
    const QImage image = picture();
    // Deliberate: an area ends at the last point in view, not at the view's edge.
    const int end = std::min(count, int(std::ceil(first + elements)));
    const double perPixel = elements / image.width();
    const double rowDoubt = 1.0 / 64;
    for (int x = 0; x < image.width(); ++x) {
        const double centre = x + 0.5;
        const SExtremes expected = oracle(first + (centre - aside) * perPixel, first + (centre + aside) * perPixel,
                                          kind == "area" ? end : count);
        for (int y = 0; y < image.height(); ++y) {
            const double row = image.height() - y - 0.5;
            const bool ink = isInk(image.pixel(x, y));
            const bool mayBe = row < expected.high * image.height() + rowDoubt;
            const bool mustBe = row < expected.low * image.height() - rowDoubt;
            if ((ink && !mayBe) || (!ink && mustBe)) {
                image.save(QStringLiteral("LongSeries-%1.png").arg(QTest::currentDataTag()));
                QFAIL(qPrintable(
                    QStringLiteral("pixel %1, %2: %3 to %4").arg(x).arg(y).arg(expected.low).arg(expected.high)));
            }
        }
    }
}

void tst_LongSeries_gl::aBorderFollowsItsPoints_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("origin");
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("elements");
    addViews("border", [](const QByteArray &name, int count, double origin, double first, double elements) {
        if (elements <= 100.0)
            QTest::newRow(name.constData()) << count << origin << first << elements;
    });
}

void tst_LongSeries_gl::aBorderFollowsItsPoints()
{
    QFETCH(int, count);
    QFETCH(double, origin);
    QFETCH(double, first);
    QFETCH(double, elements);
    AreaPlotter plotter;
    plotter.setBorderWidth(1.0);
    plotter.setBorderColor(Qt::white);
    plotter.setChartArea(m_chart);
    plotter.setData(seriesOf(count, false));
    show(plotter, count, origin, first, elements);
    plotter.setColor(Qt::transparent); // the border alone
    const QImage image = picture();

    // The exact line in small steps: ink within a pixel of each, and each within a pixel of ink.
    QImage nearLine(image.size(), QImage::Format_RGB32);
    nearLine.fill(Qt::black);
    const double steps = 16.0 * image.width();
    for (double step = 0.0; step < steps; step += 1.0) {
        const double x = step / 16.0;
        const double left = first + x * elements / image.width();
        const double y = image.height() * (1.0 - lineAt(left));
        bool found = false;
        for (int column = int(std::ceil(x - 1.5)); column <= int(std::floor(x + 0.5)); ++column) {
            for (int row = int(std::ceil(y - 1.5)); row <= int(std::floor(y + 0.5)); ++row) {
                if (!image.valid(column, row)) {
                    found = true; // beyond the picture
                    continue;
                }
                nearLine.setPixel(column, row, qRgb(255, 255, 255));
                found |= isInk(image.pixel(column, row));
            }
        }
        const bool drawn = left < double(count - 1) && left + 1.0 < std::ceil(first + elements);
        QVERIFY2(found || !drawn, qPrintable(QStringLiteral("no ink at %1, %2").arg(x).arg(y)));
    }
    for (int x = 1; x + 1 < image.width(); ++x) {
        for (int y = 1; y + 1 < image.height(); ++y) {
            if (isInk(image.pixel(x, y)) && !isInk(nearLine.pixel(x, y)))
                QFAIL(qPrintable(QStringLiteral("ink at %1, %2").arg(x).arg(y)));
        }
    }
}

QTEST_MAIN(tst_LongSeries_gl)
#include "tst_LongSeries_gl.moc"
