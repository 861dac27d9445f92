// SPDX-License-Identifier: MIT
#include "tests/views/items/PlotFixture.h"
#include "views/items/BarSeries.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotRegion.h"

#include <QtTest>

#include <memory>

namespace {

/// Three triangles, 21 wide, around 50, 150 and 250; each higher than the one before.
QVector<double> triangles()
{
    QVector<double> values(300);
    for (int i = 0; i < 300; ++i)
        values[i] = std::max(0, 21 - std::abs(i % 100 - 50)) * (1 + i / 100);
    return values;
}

} // namespace

/// The marks that keys bring, and the numbers that they tell.
class tst_PlotMeasuring : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void theHighestPeakInViewIsMarked();
    void theNextPeakIsMarked();
    void peaksOfBarsStandInTheirMiddle();
    void peaksOfBarsOfTheirOwnWidthsDoSo();
    void smallRipplesAreNoPeaks();
    void withoutAPeakNothingIsMarked();
    void zoomingInStaysAtTheMark();
    void aRegionComesInTheMiddleOrAroundThePeak();
    void numbersAreTold();
    void numbersOfCursorsAreTold();
    void namesAreCellsOfATable();

private:
    double markedAt() const;

    std::unique_ptr<PlotView> m_view;
};

void tst_PlotMeasuring::init()
{
    m_view = std::make_unique<PlotView>();
    m_view->setSize({640, 400});
}

double tst_PlotMeasuring::markedAt() const
{
    const QStringList line = m_view->numbers().split('\n').value(0).split('\t');
    return line.value(0) == QLatin1String("peak at") ? line.value(1).toDouble() : std::nan("");
}

void tst_PlotMeasuring::theHighestPeakInViewIsMarked()
{
    const StoredSeries<> line(*m_view, triangles());
    m_view->markPeak();
    QCOMPARE(markedAt(), 250.0);
    m_view->zoomTo(0.0, 180.0);
    m_view->markPeak();
    QCOMPARE(markedAt(), 150.0);
    m_view->unmarkPeak();
    QCOMPARE(m_view->numbers(), QString());
}

void tst_PlotMeasuring::theNextPeakIsMarked()
{
    const StoredSeries<> line(*m_view, triangles());
    m_view->markPeak(1); // from the left edge, as nothing is marked
    QCOMPARE(markedAt(), 50.0);
    m_view->markPeak(1);
    QCOMPARE(markedAt(), 150.0);
    m_view->markPeak(1);
    m_view->markPeak(1); // there's none behind the last one
    QCOMPARE(markedAt(), 250.0);
    m_view->markPeak(-1);
    QCOMPARE(markedAt(), 150.0);
    m_view->unmarkPeak();
    m_view->markPeak(-1); // from the right edge
    QCOMPARE(markedAt(), 250.0);
}

void tst_PlotMeasuring::peaksOfBarsStandInTheirMiddle()
{
    StoredSeries<BarSeries> bars(*m_view, triangles());
    bars.series.setStep(0.5);
    m_view->markPeak();
    QCOMPARE(markedAt(), 125.25);
}

void tst_PlotMeasuring::peaksOfBarsOfTheirOwnWidthsDoSo()
{
    StoredSeries<BarSeries> bars(*m_view, {1, 5, 2});
    bars.series.setXValues(QVariantList{0.0, 1.0, 4.0, 5.0});
    QCoreApplication::processEvents();
    m_view->markPeak();
    QCOMPARE(markedAt(), 2.5);
}

void tst_PlotMeasuring::smallRipplesAreNoPeaks()
{
    QVector<double> values = triangles();
    for (int i = 0; i < values.size(); ++i)
        values[i] += i % 2;
    const StoredSeries<> line(*m_view, values);
    m_view->markPeak(1);
    QVERIFY(std::abs(markedAt() - 50.0) <= 1.0);
    m_view->markPeak(1);
    QVERIFY(std::abs(markedAt() - 150.0) <= 1.0);
}

void tst_PlotMeasuring::withoutAPeakNothingIsMarked()
{
    m_view->markPeak();
    m_view->markPeak(1);
    QCOMPARE(m_view->numbers(), QString());
    const StoredSeries<> line(*m_view, QVector<double>(10, std::nan("")));
    m_view->markPeak();
    m_view->markPeak(-1);
    QCOMPARE(m_view->numbers(), QString());
}

/// So one glitch of many values is reached by one key, pressed again and again.
void tst_PlotMeasuring::zoomingInStaysAtTheMark()
{
    QVector<double> values(1'000'000);
    values[617'283] = 1.0;
    const StoredSeries<> line(*m_view, values);
    m_view->markPeak();
    for (int i = 0; i < 16; ++i)
        m_view->zoomIn();
    QVERIFY(m_view->axisX()->max() - m_view->axisX()->min() < 20.0);
    QVERIFY(m_view->axisX()->min() <= 617'283.0 && m_view->axisX()->max() >= 617'283.0);
    m_view->unmarkPeak();
    const double middle = (m_view->axisX()->min() + m_view->axisX()->max()) / 2.0;
    m_view->zoomIn();
    QVERIFY(std::abs((m_view->axisX()->min() + m_view->axisX()->max()) / 2.0 - middle) < 1e-3);
}

void tst_PlotMeasuring::aRegionComesInTheMiddleOrAroundThePeak()
{
    const StoredSeries<> line(*m_view, ramp(301));
    QSignalSpy spy(m_view.get(), &PlotView::regionVisibleChanged);
    QVERIFY(!m_view->regionVisible());
    m_view->setRegionVisible(true);
    QVERIFY(m_view->regionVisible());
    QCOMPARE(spy.count(), 1);
    QVERIFY(m_view->numbers().startsWith(QStringLiteral("from\t100\nto\t200\ncount\t100\nsum\t14950\n")));
    m_view->setRegionVisible(false);
    QCOMPARE(m_view->numbers(), QString());
    m_view->markPeak();
    m_view->setRegionVisible(true);
    QVERIFY2(m_view->numbers().startsWith(QStringLiteral("from\t290\nto\t310\n")), qPrintable(m_view->numbers()));
}

void tst_PlotMeasuring::numbersAreTold()
{
    const StoredSeries<> line(*m_view, triangles());
    m_view->setRegionVisible(true);
    QStringList lines = m_view->numbers().split('\n');
    QCOMPARE(lines.size(), 13);
    QVERIFY2(lines[9].startsWith(QStringLiteral("maximumAt\t150")), qPrintable(lines[9]));
    QVERIFY2(lines[11].startsWith(QStringLiteral("peakWidth\t21")), qPrintable(lines[11]));
    m_view->markPeak();
    lines = m_view->numbers(true).split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[0].startsWith(QStringLiteral("from,to,count,sum,"))
            && lines[0].endsWith(QStringLiteral(",peak at,peak")));
    QVERIFY(lines[1].endsWith(QStringLiteral(",250,63")));
}

void tst_PlotMeasuring::numbersOfCursorsAreTold()
{
    StoredSeries<> line(*m_view, ramp(101));
    line.series.setName(QStringLiteral("sample"));
    m_view->marks()->cycleCursors();
    QCOMPARE(m_view->numbers(), QStringLiteral("A at\t50\nA sample\t50\n"));
    m_view->marks()->cycleCursors();
    QCOMPARE(m_view->numbers(),
             QStringLiteral("A at\t50\nB at\t75\nB - A at\t25\n"
                            "A sample\t50\nB sample\t75\nB - A sample\t25\n"));
    line.series.setVisible(false);
    QCOMPARE(m_view->numbers(), QStringLiteral("A at\t50\nB at\t75\nB - A at\t25\n"));
}

void tst_PlotMeasuring::namesAreCellsOfATable()
{
    StoredSeries<> line(*m_view, ramp(101));
    line.series.setName(QStringLiteral("a, \"b\""));
    m_view->marks()->cycleCursors();
    QCOMPARE(m_view->numbers(true), QStringLiteral("A at,\"A a, \"\"b\"\"\"\n50,50\n"));
    line.series.setName(QStringLiteral("two\nlines"));
    QCOMPARE(m_view->numbers(true), QStringLiteral("A at,\"A two\nlines\"\n50,50\n"));
}

QTEST_MAIN(tst_PlotMeasuring)
#include "tst_PlotMeasuring.moc"
