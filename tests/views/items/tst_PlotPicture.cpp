// SPDX-License-Identifier: MIT
#include "PlainMarks.h"

#include "tests/views/items/PlotFixture.h"
#include "views/items/AreaSeries.h"
#include "views/items/BarSeries.h"
#include "views/items/LogValueAxis.h"
#include "views/items/OverviewStrip.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotPicture.h"
#include "views/items/PlotRegion.h"
#include "views/items/PlotTheme.h"

#include <QtTest>

#include <cmath>
#include <memory>

namespace {

const QColor ink(255, 0, 0);

int countOf(const QImage &picture, const QColor &color, const QRectF &part = QRectF(0.0, 0.0, 1e6, 1e6))
{
    const QRect inside = part.toRect().intersected(picture.rect());
    int count = 0;
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            count += picture.pixelColor(x, y) == color;
    }
    return count;
}

/// How many pixels of a part differ.
int differences(const QImage &a, const QImage &b, const QRectF &part)
{
    const QRect inside = part.toRect().intersected(a.rect());
    int count = 0;
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            count += a.pixelColor(x, y) != b.pixelColor(x, y);
    }
    return count;
}

QRectF scaled(const QRectF &rect, double scale)
{
    return {rect.topLeft() * scale, rect.size() * scale};
}

} // namespace

/// A view painted into a picture: no window, no OpenGL.
class tst_PlotPicture : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void hasTheSizeThatWasAskedFor_data();
    void hasTheSizeThatWasAskedFor();
    void saysWhatCantBe_data();
    void saysWhatCantBe();
    void isSharperWhenLarger();
    void drawsEachPixelOfTheSeries();
    void hasTheGroundOfTheTheme();
    void isTransparentWhereTheThemeIs();
    void writesTitlesAndLabels();
    void growsItsLinesWithTheScale();
    void namesTheSeriesThatAreSeen();
    void tellsOfCursorsAndRegions();
    void showsTheOverview();
    void hasTheOrderAndTheOpacityOfTheSeries();
    void showsWhatIsNow();
    void leavesTheViewAsItIs();
    void writesPicturesToLookAt();

private:
    QImage picture(double scale = 1.0)
    {
        QString error;
        const QImage picture = pictureOf(*m_view, scale, error);
        if (!error.isEmpty())
            qWarning().noquote() << error;
        return picture;
    }
    void switchOffTheFrame();

    std::unique_ptr<PlotView> m_view;
};

void tst_PlotPicture::init()
{
    m_view = std::make_unique<PlotView>();
    m_view->setSize(QSizeF(301.0, 199.0));
    m_view->theme()->setColorScheme(PlotTheme::Light);
}

void tst_PlotPicture::switchOffTheFrame()
{
    for (PlotAxis *axis : {m_view->axisX(), m_view->axisY()}) {
        axis->setLabelsVisible(false);
        axis->setGridVisible(false);
    }
}

void tst_PlotPicture::hasTheSizeThatWasAskedFor_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QSize>("size");
    QTest::newRow("as it is") << 1.0 << QSize(301, 199);
    QTest::newRow("larger") << 3.0 << QSize(903, 597);
    QTest::newRow("in between") << 1.25 << QSize(376, 249);
    QTest::newRow("smaller") << 0.1 << QSize(30, 20);
    QTest::newRow("a pixel") << 0.004 << QSize(1, 1);
}

void tst_PlotPicture::hasTheSizeThatWasAskedFor()
{
    QFETCH(double, scale);
    QFETCH(QSize, size);
    StoredSeries<> line(*m_view, ramp(10));
    QCOMPARE(picture(scale).size(), size);
}

void tst_PlotPicture::saysWhatCantBe_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QString>("words");
    QTest::newRow("zero") << 0.0 << QStringLiteral("the scale of a picture is a number above 0, not 0");
    QTest::newRow("negative") << -2.0 << QStringLiteral("the scale of a picture is a number above 0, not -2");
    QTest::newRow("no number") << qQNaN() << QStringLiteral("the scale of a picture is a number above 0, not nan");
    QTest::newRow("infinite") << qInf() << QStringLiteral("the scale of a picture is a number above 0, not inf");
    QTest::newRow("tiny") << 1e-6 << QStringLiteral("the picture would have no pixels: 0 x 0");
    QTest::newRow("huge") << 1000.0
                          << QStringLiteral("a picture has at most 32767 pixels to a side, not 301000 x 199000");
}

void tst_PlotPicture::saysWhatCantBe()
{
    QFETCH(double, scale);
    QFETCH(QString, words);
    QString error;
    QVERIFY(pictureOf(*m_view, scale, error).isNull());
    QCOMPARE(error, words);
}

/// Four bars in a pixel of the view: as one at its scale, each by itself at four times.
void tst_PlotPicture::isSharperWhenLarger()
{
    switchOffTheFrame();
    StoredSeries<BarSeries> bars(*m_view);
    bars.series.setColor(ink);
    picture(); // lays the plot area out
    const QRectF area = m_view->plotArea();
    QVector<double> values;
    for (int i = 0; i < int(area.width()) * 4; ++i)
        values.append(i % 2);
    bars.add(values);
    m_view->axisX()->setMin(0.0);
    m_view->axisX()->setMax(area.width() * 4.0);
    m_view->axisY()->setMin(-1.0);
    m_view->axisY()->setMax(0.5);
    const auto shareOf = [&](double scale) {
        const QRectF upper = scaled({area.left() + 10.0, area.top() + 2.0, area.width() - 20.0, 10.0}, scale);
        return countOf(picture(scale), ink, upper) / (upper.width() * upper.height());
    };
    QCOMPARE(shareOf(1.0), 1.0);
    QCOMPARE(shareOf(2.0), 1.0);
    QCOMPARE(shareOf(4.0), 0.5);
    QCOMPARE(shareOf(8.0), 0.5);
}

void tst_PlotPicture::drawsEachPixelOfTheSeries()
{
    switchOffTheFrame();
    std::unique_ptr<PlotSeries> all[] = {std::make_unique<BarSeries>(), std::make_unique<AreaSeries>(),
                                         std::make_unique<LineSeries>()};
    const QVector<double> values{3.0, 7.25, qQNaN(), -4.0, 9.5, 1.0, 1.0, 6.0, 8.0, 2.5, 3.0};
    for (const double scale : {1.0, 1.5, 2.0, 3.3}) {
        for (const std::unique_ptr<PlotSeries> &series : all) {
            series->setColor(ink);
            series->setProperty("width", 0.0);
            series->setValues(QVariant::fromValue(values));
            m_view->addSeries(series.get());
            QCoreApplication::processEvents(); // the values come with the next event
            m_view->axisX()->setMin(0.0);
            m_view->axisX()->setMax(10.0);
            m_view->axisY()->setMin(-6.0);
            m_view->axisY()->setMax(11.0);
            const QImage found = picture(scale);
            m_view->removeSeries(series.get());
            const QRectF area = m_view->plotArea();
            const QRect pixels(QPoint(qRound(area.left() * scale), qRound(area.top() * scale)),
                               QPoint(qRound(area.right() * scale) - 1, qRound(area.bottom() * scale) - 1));
            QVector<double> xs;
            QVector<double> ys;
            for (int i = 0; i <= values.size(); ++i)
                xs.append(i * pixels.width() / 10.0);
            for (const double value : values)
                ys.append((11.0 - value) * pixels.height() / 17.0);
            PlainMarks plain(pixels.width(), pixels.height());
            const double base = 11.0 * pixels.height() / 17.0;
            if (series == all[0])
                plain.markBars(xs, ys, base);
            else if (series == all[1])
                plain.markArea(xs, ys, base);
            else
                plain.markLine(xs, ys);
            PlainMarks drawn(pixels.width(), pixels.height());
            for (int y = 0; y < pixels.height(); ++y) {
                for (int x = 0; x < pixels.width(); ++x) {
                    if (found.pixelColor(pixels.left() + x, pixels.top() + y) == ink)
                        drawn.mark(x, y);
                }
            }
            QVERIFY(plain.count() > 100);
            QVERIFY2(drawn == plain, drawn.difference(plain).constData());
        }
    }
}

void tst_PlotPicture::hasTheGroundOfTheTheme()
{
    m_view->theme()->setBackgroundColor(QColor(10, 20, 30));
    m_view->theme()->setPlotAreaBackgroundColor(QColor(40, 50, 60));
    const QImage found = picture(2.0);
    QVERIFY(!found.hasAlphaChannel());
    QCOMPARE(found.pixelColor(0, 0), QColor(10, 20, 30));
    QCOMPARE(found.pixelColor(found.width() - 1, found.height() - 1), QColor(10, 20, 30));
    QVERIFY(countOf(found, QColor(40, 50, 60), scaled(m_view->plotArea(), 2.0)) > 20'000);
}

void tst_PlotPicture::isTransparentWhereTheThemeIs()
{
    m_view->theme()->setBackgroundColor(QColor(255, 0, 0, 0));
    QCOMPARE(picture().pixelColor(0, 0).alpha(), 0);
}

void tst_PlotPicture::writesTitlesAndLabels()
{
    StoredSeries<> line(*m_view, ramp(10));
    const int plain = countOf(picture(2.0), m_view->theme()->labelTextColor());
    QVERIFY(plain > 20); // the labels
    m_view->setTitle(QStringLiteral("A title"));
    const int titled = countOf(picture(2.0), m_view->theme()->labelTextColor());
    QVERIFY2(titled > plain, qPrintable(QString::number(titled)));
    m_view->axisY()->setTitleText(QStringLiteral("beside"));
    const QRectF left(0.0, 0.0, 44.0, 398.0);
    QVERIFY(countOf(picture(2.0), m_view->theme()->labelTextColor(), left) > 20);
}

void tst_PlotPicture::growsItsLinesWithTheScale()
{
    StoredSeries<> line(*m_view, ramp(10));
    m_view->axisY()->setGridVisible(false);
    line.series.setVisible(false);
    m_view->theme()->setGridColor(ink);
    const auto thicknessOf = [&](double scale) {
        const QImage found = picture(scale);
        const int row = int((m_view->plotArea().top() + 10.0) * scale);
        return countOf(found, ink, QRectF(0.0, row, found.width(), 1.0))
            / double(countOf(picture(), ink, QRectF(0.0, 60.0, 301.0, 1.0)));
    };
    QCOMPARE(thicknessOf(1.0), 1.0);
    QCOMPARE(thicknessOf(3.0), 3.0);
}

void tst_PlotPicture::namesTheSeriesThatAreSeen()
{
    StoredSeries<> line(*m_view, ramp(10));
    m_view->axisY()->setMax(100.0); // the line stays below
    const QImage without = picture(3.0);
    const QRectF corner(m_view->plotArea().right() - 60.0, m_view->plotArea().top(), 60.0, 40.0);
    const auto legend = [&] { return differences(picture(3.0), without, scaled(corner, 3.0)); };
    line.series.setName(QStringLiteral("line"));
    QVERIFY(legend() > 500);
    m_view->setLegendVisible(false);
    QCOMPARE(legend(), 0);
    m_view->setLegendVisible(true);
    line.series.setVisible(false);
    QCOMPARE(legend(), 0);
}

void tst_PlotPicture::tellsOfCursorsAndRegions()
{
    StoredSeries<> line(*m_view, ramp(10));
    const QColor accent = m_view->theme()->accentColor();
    const QImage without = picture(2.0);
    PlotCursor cursor;
    PlotRegion region;
    cursor.setX(7.0);
    region.setFrom(2.0);
    region.setTo(4.0);
    emit m_view->elementAdded(&cursor);
    emit m_view->elementAdded(&region);
    const QImage found = picture(2.0);
    const int height = int(m_view->plotArea().height() * 2.0);
    QVERIFY(countOf(found, accent) - countOf(without, accent) > height * 3);
    const QRectF panel = scaled({m_view->plotArea().topLeft(), QSizeF(150.0, 100.0)}, 2.0);
    QVERIFY(differences(found, without, panel) > 2000);
}

void tst_PlotPicture::showsTheOverview()
{
    StoredSeries<BarSeries> bars(*m_view, ramp(100, 1.0));
    bars.series.setColor(ink);
    m_view->setOverviewVisible(true);
    m_view->axisX()->setMin(20.0);
    m_view->axisX()->setMax(40.0);
    const QImage found = picture(2.0);
    const OverviewStrip &strip = *m_view->overview();
    const QRectF small = scaled({strip.position(), strip.size()}, 2.0);
    QVERIFY(countOf(found, m_view->theme()->accentColor(), small) > 100); // around the part that's shown
    QVERIFY(countOf(found, ink, small) > 200);                            // in it; around it, they're dimmed
    QVERIFY(countOf(found, ink, small) < 0.3 * small.width() * small.height());
}

void tst_PlotPicture::hasTheOrderAndTheOpacityOfTheSeries()
{
    switchOffTheFrame();
    m_view->theme()->setPlotAreaBackgroundColor(Qt::white);
    StoredSeries<BarSeries> below(*m_view, {1.0, 1.0});
    StoredSeries<BarSeries> above(*m_view, {1.0});
    below.series.setColor(ink);
    above.series.setColor(QColor(0, 0, 255));
    picture();
    const QRectF area = m_view->plotArea();
    const QPoint left(int(area.left() + area.width() * 0.25), int(area.center().y()));
    const QPoint right(int(area.left() + area.width() * 0.75), int(area.center().y()));
    QCOMPARE(picture().pixelColor(left), QColor(0, 0, 255));
    QCOMPARE(picture().pixelColor(right), ink);
    below.series.setOpacity(0.5);
    const QColor half = picture().pixelColor(right);
    QVERIFY(half.red() == 255 && std::abs(half.green() - 128) <= 1);
}

void tst_PlotPicture::showsWhatIsNow()
{
    switchOffTheFrame();
    StoredSeries<BarSeries> bars(*m_view, QVector<double>(10, 1.0));
    bars.series.setColor(ink);
    QVERIFY(countOf(picture(), ink) > 10'000);
    m_view->axisX()->setMin(20.0);
    m_view->axisX()->setMax(30.0); // and no frame in between
    QCOMPARE(countOf(picture(), ink), 0);
}

void tst_PlotPicture::leavesTheViewAsItIs()
{
    StoredSeries<> line(*m_view, ramp(10));
    picture();
    const QRectF area = m_view->plotArea();
    const SAxisRange x = m_view->axisX()->range();
    QSignalSpy ranges(m_view.get(), &PlotView::rangesChanged);
    QSignalSpy areas(m_view.get(), &PlotView::plotAreaChanged);
    picture(3.7);
    QCOMPARE(m_view->plotArea(), area);
    QCOMPARE(m_view->axisX()->range().min, x.min);
    QCOMPARE(ranges.size() + areas.size(), 0);
}

/// Into the folder VORLIX_TEST_PICTURES, if that is set.
void tst_PlotPicture::writesPicturesToLookAt()
{
    m_view->setSize(QSizeF(640.0, 400.0));
    m_view->setTitle(QStringLiteral("Two series and a region"));
    m_view->axisX()->setTitleText(QStringLiteral("energy"));
    m_view->axisX()->setUnit(QStringLiteral("keV"));
    m_view->axisY()->setTitleText(QStringLiteral("counts"));
    m_view->setOverviewVisible(true);
    StoredSeries<BarSeries> bars(*m_view);
    StoredSeries<> line(*m_view);
    QVector<double> counts;
    QVector<double> smooth;
    for (int i = 0; i < 2000; ++i) {
        const double peak = 900.0 * std::exp(-std::pow((i - 700) / 40.0, 2.0)) + 400.0 * std::exp(-i / 600.0);
        counts.append(std::round(peak * (1.0 + 0.2 * std::sin(i * 12.9))));
        smooth.append(peak * 1.1);
    }
    bars.add(counts);
    line.add(smooth);
    bars.series.setName(QStringLiteral("sample"));
    line.series.setName(QStringLiteral("fit"));
    line.series.setWidth(2.0);
    PlotRegion region;
    region.setFrom(620.0);
    region.setTo(780.0);
    PlotCursor cursor;
    cursor.setX(1200.0);
    emit m_view->elementAdded(&cursor);
    emit m_view->elementAdded(&region);
    const QString folder = qEnvironmentVariable("VORLIX_TEST_PICTURES");
    for (const bool dark : {false, true}) {
        m_view->theme()->setColorScheme(dark ? PlotTheme::Dark : PlotTheme::Light);
        for (const double scale : {1.0, 3.0}) {
            const QImage found = picture(scale);
            QVERIFY(!found.isNull());
            if (!folder.isEmpty())
                QVERIFY(
                    found.save(QStringLiteral("%1/plot-%2-%3.png").arg(folder, dark ? "dark" : "light").arg(scale)));
        }
    }
}

QTEST_MAIN(tst_PlotPicture)
#include "tst_PlotPicture.moc"
