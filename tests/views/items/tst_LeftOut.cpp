// SPDX-License-Identifier: MIT
#include "tests/views/items/PlotFixture.h"
#include "views/items/LeftOut.h"
#include "views/items/LogValueAxis.h"

#include <QtTest>

/// Values that a log scale has no place for.
class tst_LeftOut : public QObject
{
    Q_OBJECT

private slots:
    void countsNothingOnALinearScale();
    void countsWhatIsZeroOrBelow();
    void countsTheShownPartOnly();
    void countsWhatStandsLeftOfZero();
    void countsVisibleSeriesOnly();
    void countsWhatCame();
    void saysItInWords();
};

void tst_LeftOut::countsNothingOnALinearScale()
{
    PlotView view;
    StoredSeries<> series(view, {0.0, -1.0, 5.0});
    view.leftOut().countNow();
    QCOMPARE(view.leftOutCount(), 0.0);
}

void tst_LeftOut::countsWhatIsZeroOrBelow()
{
    PlotView view;
    StoredSeries<> series(view, {0.0, -1.0, 5.0, -0.0, qQNaN(), qInf(), 1e-300});
    QSignalSpy spy(&view, &PlotView::leftOutCountChanged);
    view.axisY()->setLog(true);
    QTRY_COMPARE(view.leftOutCount(), 3.0);
    QCOMPARE(spy.size(), 1);
    view.axisY()->setLog(false);
    QTRY_COMPARE(view.leftOutCount(), 0.0);
    LogValueAxis axis;
    view.setAxisY(&axis);
    QTRY_COMPARE(view.leftOutCount(), 3.0);
}

void tst_LeftOut::countsTheShownPartOnly()
{
    PlotView view;
    StoredSeries<> series(view, {0.0, 1.0, 0.0, 1.0, 0.0, 1.0});
    view.axisY()->setLog(true);
    view.axisX()->setMin(2.0);
    view.axisX()->setMax(4.0);
    QTRY_COMPARE(view.leftOutCount(), 2.0);
    view.axisX()->setMax(3.9);
    QTRY_COMPARE(view.leftOutCount(), 1.0);
    view.axisX()->setMin(2.1);
    QTRY_COMPARE(view.leftOutCount(), 0.0);
}

void tst_LeftOut::countsWhatStandsLeftOfZero()
{
    PlotView view;
    StoredSeries<> series(view, {1.0, 2.0, 3.0, -4.0, 5.0});
    series.series.setStart(-2.0);
    view.axisX()->setLog(true);
    QTRY_COMPARE(view.leftOutCount(), 3.0); // at -2, -1 and 0
    view.axisY()->setLog(true);
    QTRY_COMPARE(view.leftOutCount(), 4.0);
    SeriesStore places;
    for (const double x : {-1.0, 0.0, 0.0, 0.0, 4.0})
        places.append(x);
    series.series.setXStore(&places);
    view.axisY()->setLog(false);
    QTRY_COMPARE(view.leftOutCount(), 4.0);
}

void tst_LeftOut::countsVisibleSeriesOnly()
{
    PlotView view;
    StoredSeries<> first(view, {0.0, 1.0});
    StoredSeries<> second(view, {0.0, 0.0, 1.0});
    view.axisY()->setLog(true);
    QTRY_COMPARE(view.leftOutCount(), 3.0);
    second.series.setVisible(false);
    QTRY_COMPARE(view.leftOutCount(), 1.0);
    view.removeSeries(&first.series);
    QTRY_COMPARE(view.leftOutCount(), 0.0);
}

void tst_LeftOut::countsWhatCame()
{
    PlotView view;
    StoredSeries<> series(view, {1.0, 2.0});
    view.axisY()->setLog(true);
    view.leftOut().countNow();
    QCOMPARE(view.leftOutCount(), 0.0);
    series.add({0.0});
    QTRY_COMPARE(view.leftOutCount(), 1.0);
}

void tst_LeftOut::saysItInWords()
{
    PlotView view;
    StoredSeries<> series(view, {0.0, 2.0});
    QCOMPARE(view.leftOut().words(), QString());
    view.axisY()->setLog(true);
    view.leftOut().countNow();
    QCOMPARE(view.leftOut().words(), QStringLiteral("1 value of 0 or below has no place on the log scale"));
    series.add(QVector<double>(1'500'000, -1.0));
    view.leftOut().countNow();
    QCOMPARE(view.leftOut().words(), QStringLiteral("1500001 values of 0 or below have no place on the log scale"));
}

QTEST_MAIN(tst_LeftOut)
#include "tst_LeftOut.moc"
