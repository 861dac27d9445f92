// SPDX-License-Identifier: MIT
#include "tests/views/items/PlotFixture.h"
#include "views/items/BarSeries.h"

#include <QtTest>

#include <limits>
#include <random>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

/// What a view shows: by itself, by hand, while values come, and with others.
class tst_PlotZoom : public QObject
{
    Q_OBJECT

private slots:
    void allIsShownAtFirst();
    void barsReachToTheEndOfTheLast();
    void valuesThatComeAreShownUntilAHandMoves();
    void aZoomKeepsItsAnchor();
    void xStaysWithinTheValues();
    void theWayBackIsTheWayThere();
    void stepsOfAGestureAreOneStepBack();
    void aResetGoesHome();
    void aResetGoesHomeWithoutValuesToo();
    void yFollowsWhatIsInView();
    void barsThatOnlyTouchTheViewDontCount();
    void yGrowsAtOnceAndShrinksAfterARest();
    void yByHandStays();
    void hiddenSeriesDoNotCount();
    void followingSlides();
    void followingSurvivesAZoom();
    void followingStretches();
    void aPanToTheLeftPausesAndEndResumes();
    void aGivenWidthSlides();
    void aSeriesThatComesOrGoesFitsYAtOnce();
    void aGivenWidthIsFilledBeforeItSlides();
    void linkedViewsShareX();
    void linkedViewsShowAllOfAll();
    void aCircleOfLinksIsRefused();
    void linkedViewsMayGoInAnyOrder();
    void theScaleIsSwitched();
    void valuesAtPlacesOfTheirOwn();
    void endsThatAreSetBeyondTheValuesStay();
    void badNumbersChangeNothing();
    void randomHandsKeepOrder();
};

void tst_PlotZoom::allIsShownAtFirst()
{
    PlotView view;
    StoredSeries<> line(view, ramp(101, -50.0));
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 100.0}));
    QCOMPARE(view.axisY()->range(), (SAxisRange{-55.0, 55.0}));
}

void tst_PlotZoom::barsReachToTheEndOfTheLast()
{
    PlotView view;
    StoredSeries<BarSeries> bars(view, {5.0, 20.0, 10.0});
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 3.0}));
    QCOMPARE(view.axisY()->range(), (SAxisRange{0.0, 21.0})); // they stand on their base line
}

void tst_PlotZoom::valuesThatComeAreShownUntilAHandMoves()
{
    PlotView view;
    StoredSeries<> line(view, ramp(11));
    line.add(ramp(10));
    QCOMPARE(view.axisX()->max(), 20.0);
    view.zoomTo(5.0, 8.0);
    line.add(ramp(100));
    QCOMPARE(view.axisX()->range(), (SAxisRange{5.0, 8.0}));
    view.zoomReset();
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 120.0}));
    line.add(ramp(1));
    QCOMPARE(view.axisX()->max(), 121.0);
}

void tst_PlotZoom::aZoomKeepsItsAnchor()
{
    PlotView view;
    StoredSeries<> line(view, ramp(101));
    view.zoom()->zoomX(0.5, 20.0);
    QCOMPARE(view.axisX()->range(), (SAxisRange{10.0, 60.0}));
    view.zoom()->zoomX(0.5, 60.0);
    QCOMPARE(view.axisX()->range(), (SAxisRange{35.0, 60.0}));
}

void tst_PlotZoom::xStaysWithinTheValues()
{
    PlotView view;
    StoredSeries<> line(view, ramp(101));
    view.zoomTo(40.0, 60.0);
    view.zoom()->panX(-10.0);
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 20.0}));
    view.zoom()->panX(100.0);
    QCOMPARE(view.axisX()->range(), (SAxisRange{80.0, 100.0}));
    for (int i = 0; i < 10; ++i)
        view.zoomOut();
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 100.0}));
}

void tst_PlotZoom::theWayBackIsTheWayThere()
{
    PlotView view;
    StoredSeries<> line(view, ramp(101));
    QVERIFY(!view.zoom()->canGoBack());
    view.back();
    view.zoomTo(10.0, 20.0);
    view.zoomTo(12.0, 14.0);
    view.zoom()->zoomY(0.5, 13.0);
    const SAxisRange y = view.axisY()->range();
    view.zoomReset();
    view.back();
    QCOMPARE(view.axisX()->range(), (SAxisRange{12.0, 14.0}));
    QCOMPARE(view.axisY()->range(), y);
    QVERIFY(view.zoom()->isYByHand());
    view.back();
    QVERIFY(!view.zoom()->isYByHand());
    view.back();
    QCOMPARE(view.axisX()->range(), (SAxisRange{10.0, 20.0}));
    view.back();
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 100.0}));
    line.add(ramp(1)); // all is shown again, so what comes is as well
    QCOMPARE(view.axisX()->max(), 101.0);
}

void tst_PlotZoom::stepsOfAGestureAreOneStepBack()
{
    PlotView view;
    StoredSeries<> line(view, ramp(101));
    const int first = view.zoom()->newGesture();
    for (int i = 0; i < 5; ++i)
        view.zoom()->zoomX(0.8, 50.0, first);
    const SAxisRange between = view.axisX()->range();
    const int second = view.zoom()->newGesture();
    for (int i = 0; i < 5; ++i)
        view.zoom()->panX(0.01, second);
    view.back();
    QCOMPARE(view.axisX()->range(), between);
    view.back();
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 100.0}));
    for (int i = 0; i < 1000; ++i)
        view.zoom()->panX(0.0);
    int steps = 0;
    for (; view.zoom()->canGoBack(); ++steps)
        view.back();
    QCOMPARE(steps, 100); // old ones are forgotten
}

void tst_PlotZoom::aResetGoesHome()
{
    PlotView view;
    StoredSeries<> line(view, ramp(101));
    view.axisY()->setMin(-10.0);
    QCOMPARE(view.axisY()->range(), (SAxisRange{-10.0, 105.0}));
    view.axisX()->setMin(20.0);
    view.axisX()->setMax(30.0);
    view.zoomTo(22.0, 24.0);
    view.zoom()->zoomY(0.1, 0.0);
    view.zoomReset();
    QCOMPARE(view.axisX()->range(), (SAxisRange{20.0, 30.0}));
    QCOMPARE(view.axisY()->min(), -10.0);
}

void tst_PlotZoom::aResetGoesHomeWithoutValuesToo()
{
    PlotView view;
    view.zoom()->zoomX(0.5, 0.5);
    view.zoom()->zoomY(0.5, 0.5);
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.25, 0.75}));
    view.zoomReset();
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 1.0}));
    QCOMPARE(view.axisY()->range(), (SAxisRange{0.0, 1.0}));
}

void tst_PlotZoom::yFollowsWhatIsInView()
{
    PlotView view;
    QVector<double> values(100, 1.0);
    values[50] = -40.0;
    values[70] = 60.0;
    StoredSeries<> line(view, values);
    QCOMPARE(view.axisY()->range(), (SAxisRange{-45.0, 65.0}));
    view.zoomTo(60.0, 80.0);
    view.zoom()->keeper().fitY();
    QVERIFY(view.axisY()->min() > -10.0);
    QVERIFY(view.axisY()->max() > 60.0);
}

void tst_PlotZoom::barsThatOnlyTouchTheViewDontCount()
{
    PlotView view;
    view.axisX()->setMin(1.0);
    view.axisX()->setMax(4.0);
    StoredSeries<BarSeries> bars(view, {90.0, 1.0, 2.0, 1.0, 80.0});
    QVERIFY(view.axisY()->max() < 3.0);
    PlotView other;
    other.axisX()->setMin(0.9);
    other.axisX()->setMax(4.0);
    StoredSeries<BarSeries> same(other, {90.0, 1.0, 2.0, 1.0, 80.0});
    QVERIFY(other.axisY()->max() >= 90.0);
}

void tst_PlotZoom::yGrowsAtOnceAndShrinksAfterARest()
{
    PlotView view;
    StoredSeries<> line(view, {0.0, 1.0, 0.5});
    const double before = view.axisY()->max();
    line.add({50.0});
    QVERIFY(view.axisY()->max() > 50.0);
    QElapsedTimer timer;
    timer.start();
    view.zoomTo(0.0, 2.0);
    QVERIFY(view.axisY()->max() > 50.0);
    QTRY_COMPARE(view.axisY()->max(), before);
    QVERIFY(timer.elapsed() > 800);
}

void tst_PlotZoom::yByHandStays()
{
    PlotView view;
    StoredSeries<> line(view, ramp(11));
    view.zoom()->showY({2.0, 4.0});
    line.add({500.0});
    QCOMPARE(view.axisY()->range(), (SAxisRange{2.0, 4.0}));
    view.zoomReset();
    QVERIFY(view.axisY()->max() > 500.0);
    view.axisY()->setAutoRange(false);
    line.add({5000.0});
    QVERIFY(view.axisY()->max() < 1000.0);
}

void tst_PlotZoom::hiddenSeriesDoNotCount()
{
    PlotView view;
    StoredSeries<> small(view, ramp(11));
    StoredSeries<> large(view, ramp(1001));
    QCOMPARE(view.axisX()->max(), 1000.0);
    large.series.setVisible(false);
    QCOMPARE(view.axisX()->max(), 10.0);
    small.series.setVisible(false);
    QCOMPARE(view.axisX()->max(), 10.0);
}

void tst_PlotZoom::followingSlides()
{
    PlotView view;
    view.setFollowMode(PlotView::FollowEnd);
    QVERIFY(view.isFollowing());
    StoredSeries<> line(view, ramp(101));
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 100.0}));
    view.zoomTo(90.0, 100.0);
    QVERIFY(view.isFollowing());
    line.add(ramp(50));
    QCOMPARE(view.axisX()->range(), (SAxisRange{140.0, 150.0}));
}

void tst_PlotZoom::followingSurvivesAZoom()
{
    PlotView view;
    view.setFollowMode(PlotView::FollowEnd);
    StoredSeries<> line(view, ramp(101));
    view.zoom()->zoomX(0.1, 3.0); // wherever the pointer is
    QVERIFY(view.isFollowing());
    QCOMPARE(view.axisX()->range(), (SAxisRange{90.0, 100.0}));
    line.add(ramp(5));
    QCOMPARE(view.axisX()->range(), (SAxisRange{95.0, 105.0}));
}

void tst_PlotZoom::followingStretches()
{
    PlotView view;
    view.setFollowMode(PlotView::FollowAll);
    StoredSeries<> line(view, ramp(101));
    view.zoomTo(90.0, 100.0);
    line.add(ramp(50));
    QCOMPARE(view.axisX()->range(), (SAxisRange{90.0, 150.0}));
}

void tst_PlotZoom::aPanToTheLeftPausesAndEndResumes()
{
    PlotView view;
    view.setFollowMode(PlotView::FollowEnd);
    StoredSeries<> line(view, ramp(101));
    QSignalSpy spy(&view, &PlotView::followingChanged);
    view.zoomTo(90.0, 100.0);
    QCOMPARE(spy.size(), 0);
    view.zoom()->panX(-0.5);
    QVERIFY(!view.isFollowing());
    QCOMPARE(spy.size(), 1);
    line.add(ramp(10));
    QCOMPARE(view.axisX()->range(), (SAxisRange{85.0, 95.0}));
    view.zoom()->toEnd();
    QVERIFY(view.isFollowing());
    QCOMPARE(view.axisX()->range(), (SAxisRange{100.0, 110.0}));
    view.zoom()->toBegin();
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 10.0}));
    QVERIFY(!view.isFollowing());
    view.zoom()->panX(100.0); // to the end by hand
    QVERIFY(view.isFollowing());
}

void tst_PlotZoom::aGivenWidthSlides()
{
    PlotView view;
    view.axisX()->setMin(0.0);
    view.axisX()->setMax(50.0);
    view.setFollowMode(PlotView::FollowEnd);
    StoredSeries<> line(view, ramp(101));
    QCOMPARE(view.axisX()->range(), (SAxisRange{50.0, 100.0}));
    line.add(ramp(10));
    QCOMPARE(view.axisX()->range(), (SAxisRange{60.0, 110.0}));
}

void tst_PlotZoom::aGivenWidthIsFilledBeforeItSlides()
{
    PlotView view;
    view.axisX()->setMin(0.0);
    view.axisX()->setMax(50.0);
    view.setFollowMode(PlotView::FollowEnd);
    StoredSeries<> line(view, ramp(11));
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 50.0}));
    line.add(ramp(40));
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 50.0}));
    line.add(ramp(10));
    QCOMPARE(view.axisX()->range(), (SAxisRange{10.0, 60.0}));
    line.store.clear();
    line.add(ramp(5));
    QCOMPARE(view.axisX()->range(), (SAxisRange{0.0, 50.0}));
    view.zoom()->zoomX(0.5, 3.0);
    line.add(ramp(6));
    QCOMPARE(view.axisX()->range().max, 10.0); // by hand: the newest value at the right edge
    QVERIFY(view.isFollowing());
}

void tst_PlotZoom::aSeriesThatComesOrGoesFitsYAtOnce()
{
    PlotView view;
    StoredSeries<> low(view, {8.0, 300.0}); // whose margin lies below 0
    QVERIFY(view.axisY()->min() < 0.0);
    StoredSeries<> high(view, {0.0, 1000.0});
    QCOMPARE(view.axisY()->range(), (SAxisRange{0.0, 1050.0}));
    high.series.setVisible(false);
    QVERIFY(view.axisY()->max() < 400.0);
}

void tst_PlotZoom::linkedViewsShareX()
{
    PlotView first, second, third;
    StoredSeries<> a(first, ramp(101)), b(second, ramp(101)), c(third, ramp(101));
    second.setLinkedTo(&first);
    third.setLinkedTo(&second);
    for (PlotView *hand : {&first, &second, &third}) {
        hand->zoomReset();
        hand->zoomTo(10.0, 30.0);
        hand->zoom()->zoomX(0.5, 20.0);
        for (const PlotView *view : {&first, &second, &third})
            QCOMPARE(view->axisX()->range(), (SAxisRange{15.0, 25.0}));
        hand->back();
        for (const PlotView *view : {&first, &second, &third})
            QCOMPARE(view->axisX()->range(), (SAxisRange{10.0, 30.0}));
    }
    third.axisX()->setMin(12.0); // whoever moves it
    QCOMPARE(first.axisX()->min(), 12.0);
    third.setLinkedTo(nullptr);
    first.zoomTo(1.0, 2.0);
    QVERIFY(third.axisX()->max() > 2.0);
}

void tst_PlotZoom::linkedViewsShowAllOfAll()
{
    PlotView first, second;
    StoredSeries<> a(first, ramp(11)), b(second, ramp(101));
    second.setLinkedTo(&first);
    QCOMPARE(first.axisX()->range(), (SAxisRange{0.0, 100.0}));
    QCOMPARE(second.axisX()->range(), (SAxisRange{0.0, 100.0}));
    b.add(ramp(10));
    QCOMPARE(first.axisX()->max(), 110.0);
    first.setFollowMode(PlotView::FollowEnd);
    QVERIFY(second.isFollowing());
    second.zoomTo(100.0, 110.0);
    b.add(ramp(10));
    QCOMPARE(first.axisX()->range(), (SAxisRange{110.0, 120.0}));
    QCOMPARE(second.axisX()->range(), (SAxisRange{110.0, 120.0}));
}

void tst_PlotZoom::aCircleOfLinksIsRefused()
{
    PlotView first, second;
    second.setLinkedTo(&first);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("circle")));
    first.setLinkedTo(&second);
    QVERIFY(!first.linkedTo());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("circle")));
    first.setLinkedTo(&first);
    QVERIFY(!first.linkedTo());
}

void tst_PlotZoom::linkedViewsMayGoInAnyOrder()
{
    for (const bool leaderFirst : {true, false}) {
        auto first = std::make_unique<PlotView>();
        auto second = std::make_unique<PlotView>();
        StoredSeries<> a(*first, ramp(11)), b(*second, ramp(101));
        second->setLinkedTo(first.get());
        (leaderFirst ? first : second).reset();
        PlotView &rest = leaderFirst ? *second : *first;
        QVERIFY(!rest.linkedTo());
        rest.zoomTo(2.0, 3.0);
        QCOMPARE(rest.axisX()->range(), (SAxisRange{2.0, 3.0}));
        b.add(ramp(5));
    }
}

void tst_PlotZoom::theScaleIsSwitched()
{
    PlotView view;
    StoredSeries<> line(view, {-3.0, 0.0, 0.1, 1000.0});
    view.zoom()->switchScale();
    QVERIFY(view.axisY()->isLog());
    QVERIFY(view.axisY()->min() < 0.1 && view.axisY()->min() > 0.01);
    QVERIFY(view.axisY()->max() > 1000.0);
    view.zoom()->switchScale();
    QVERIFY(view.axisY()->min() < -3.0);
}

void tst_PlotZoom::valuesAtPlacesOfTheirOwn()
{
    PlotView view;
    SeriesStore places;
    const double x[] = {10.0, 11.0, 40.0, 90.0};
    places.append(x, 4);
    QCoreApplication::processEvents();
    StoredSeries<> line(view, {1.0, 2.0, 3.0, 4.0});
    line.series.setProperty("xStore", QVariant::fromValue(&places));
    emit line.series.redrawNeeded();
    QCOMPARE(view.axisX()->range(), (SAxisRange{10.0, 90.0}));
    view.zoomTo(30.0, 50.0);
    view.zoom()->keeper().fitY();
    QVERIFY(view.axisY()->min() > 2.0 && view.axisY()->max() < 4.0);
}

void tst_PlotZoom::endsThatAreSetBeyondTheValuesStay()
{
    PlotView view;
    StoredSeries<> series(view, {3.0, 4.0});
    view.axisX()->setMin(5.0);
    QCOMPARE(view.axisX()->min(), 5.0);
    view.axisX()->setMax(6.0);
    QCOMPARE(view.axisX()->range(), (SAxisRange{5.0, 6.0}));
    PlotView other;
    other.addSeries(&series.series);
    other.axisX()->setMax(-5.0);
    QCOMPARE(other.axisX()->max(), -5.0);
    other.axisX()->setMin(-6.0);
    QCOMPARE(other.axisX()->range(), (SAxisRange{-6.0, -5.0}));
}

void tst_PlotZoom::badNumbersChangeNothing()
{
    PlotView view;
    StoredSeries<> line(view, ramp(101));
    const SAxisRange before = view.axisX()->range();
    view.zoomTo(notANumber, 5.0);
    view.panBy(notANumber);
    view.zoom()->zoomX(notANumber, 5.0);
    view.zoom()->zoomX(0.5, notANumber);
    view.zoom()->panX(std::numeric_limits<double>::infinity());
    QCOMPARE(view.axisX()->range(), before);
    view.zoomTo(30.0, 20.0);
    QCOMPARE(view.axisX()->range(), (SAxisRange{20.0, 30.0}));
}

void tst_PlotZoom::randomHandsKeepOrder()
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    PlotView view, other;
    other.setLinkedTo(&view);
    StoredSeries<> line(view, ramp(1000));
    StoredSeries<BarSeries> bars(other, {1.0, notANumber, -1e300, 1e300, 0.0});
    for (int i = 0; i < 5000; ++i) {
        PlotZoom &zoom = *(i % 3 ? view : other).zoom();
        switch (random() % 10) {
        case 0:
            zoom.back();
            break;
        case 1:
            zoom.reset();
            break;
        case 2:
            zoom.switchScale();
            break;
        case 3:
            zoom.toEnd();
            break;
        case 4:
            view.setFollowMode(PlotView::FollowMode(random() % 3));
            break;
        case 5:
            zoom.panX(unit(random) * 3.0);
            break;
        case 6:
            zoom.panY(unit(random));
            break;
        case 7:
            zoom.zoomY(1.0 + unit(random), unit(random));
            break;
        case 8:
            line.add({unit(random)});
            break;
        default:
            zoom.zoomX(1.0 + unit(random), view.axisX()->min());
            break;
        }
        QVERIFY(view.axisX()->mapping(0.0, 100.0).isValid());
        QVERIFY(view.axisY()->mapping(0.0, 100.0).isValid());
        QCOMPARE(other.axisX()->range(), view.axisX()->range());
    }
}

QTEST_MAIN(tst_PlotZoom)
#include "tst_PlotZoom.moc"
