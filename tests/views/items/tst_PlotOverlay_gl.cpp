// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"
#include "tests/support/Scene.h"
#include "tests/views/items/PlotFixture.h"
#include "views/items/BarSeries.h"
#include "views/items/OverviewStrip.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotEars.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotReadout.h"
#include "views/items/PlotRegion.h"
#include "views/items/PlotTheme.h"

#include <QtTest>

#include <QAccessible>
#include <QWheelEvent>

#include <qqml.h>

#include <memory>

namespace {

/// Depth first, the first that has the name and can be seen.
QQuickItem *find(QQuickItem *item, const QString &name)
{
    if (item->objectName() == name && item->isVisible())
        return item;
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = find(child, name))
            return found;
    }
    return nullptr;
}

QStringList textsIn(const QQuickItem *item)
{
    QStringList texts;
    if (item->isVisible() && !item->property("text").toString().isEmpty())
        texts.append(item->property("text").toString());
    for (const QQuickItem *child : item->childItems())
        texts += textsIn(child);
    return texts;
}

QPoint middleOf(const QQuickItem *item)
{
    return item->mapToScene({item->width() * 0.5, item->height() * 0.5}).toPoint();
}

} // namespace

/// Legend, read-out, panels, overview and what a screen reader gets. In both render loops.
class tst_PlotOverlay_gl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theLegendNamesAndToggles();
    void theLegendIsWalkedByKeys();
    void aLegendWithoutNamesIsNotThere();
    void theReadoutTellsValues();
    void theReadoutTellsOfColumns();
    void theReadoutFollowsTheData();
    void aThemeMayGoWhileItsColorsAreShown();
    void cursorsAndRegionsFollowTheData();
    void aRegionTellsHowWideAPeakIs();
    void marksInViewAskForNoFrameWhenValuesComeOutOfView();
    void cursorsTellTheirDifference();
    void aRegionTellsItsStatistics();
    void marksFollowTheData();
    void withoutMarksNothingIsToldOfData();
    void aRegionOfOldValuesTellsNothingAnew();
    void whatALogScaleLeavesOutIsSaid();
    void theStateOfFollowingIsSeen();
    void theOverviewShowsAllAndMoves();
    void theOverviewStretches();
    void theOverviewIsMovedByKeys();
    void theOverviewIsAScrollBarToAScreenReader();
    void notInteractiveNothingToggles();
    void aScreenReaderFindsTheView();
    void aScreenReaderHearsTheCursor();
    void aScreenReaderTogglesSeries();
    void aStillViewAsksForNoFrame();
    void seriesAndViewMayGoInAnyOrder();

private:
    void hover(const QPointF &value);
    void click(const QPoint &position)
    {
        QTest::mouseClick(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, position);
    }
    void drag(const QPoint &from, const QPoint &to);
    SAxisRange x() const { return m_view->axisX()->range(); }

    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<Scene> m_scene;
    PlotView *m_view = nullptr;
    std::unique_ptr<StoredSeries<>> m_line;
    std::unique_ptr<StoredSeries<BarSeries>> m_bars;
};

void tst_PlotOverlay_gl::initTestCase()
{
    qmlRegisterType<PlotView>("Plots", 1, 0, "PlotView");
    qmlRegisterAnonymousType<PlotAxis>("Plots", 1);
    qmlRegisterAnonymousType<PlotSeries>("Plots", 1);
    qmlRegisterAnonymousType<PlotTheme>("Plots", 1);
    QAccessible::setActive(true);
}

void tst_PlotOverlay_gl::init()
{
    m_log = std::make_unique<LogCatcher>();
    m_scene = std::make_unique<Scene>(QSize(640, 400), Qt::black);
    QQmlComponent component(&m_scene->engine());
    component.setData("import QtQuick 2.14\nimport Plots 1.0\nPlotView { title: 'Trial' }", QUrl());
    m_view = qobject_cast<PlotView *>(component.create());
    QVERIFY2(m_view, qPrintable(component.errorString()));
    m_scene->add(m_view);
    m_line = std::make_unique<StoredSeries<>>(*m_view, ramp(101));
    m_bars = std::make_unique<StoredSeries<BarSeries>>(*m_view, QVector<double>(100, 25.0));
    m_line->series.setName(QStringLiteral("line"));
    m_bars->series.setName(QStringLiteral("bars"));
    QVERIFY(m_scene->show());
    m_scene->window().requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&m_scene->window(), patience));
    m_scene->settle();
}

void tst_PlotOverlay_gl::cleanup()
{
    m_line.reset();
    m_bars.reset();
    m_scene.reset();
    const QStringList messages = m_log->messages();
    m_log.reset();
    QVERIFY2(messages.isEmpty(), qPrintable(messages.join('\n')));
}

void tst_PlotOverlay_gl::hover(const QPointF &value)
{
    QTest::mouseMove(&m_scene->window(), m_view->mapToPosition(value).toPoint());
}

void tst_PlotOverlay_gl::drag(const QPoint &from, const QPoint &to)
{
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(&m_scene->window(), (from + to) / 2);
    QTest::mouseMove(&m_scene->window(), to);
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, to);
}

void tst_PlotOverlay_gl::theLegendNamesAndToggles()
{
    QQuickItem *const entry = find(m_view, QStringLiteral("legendEntry"));
    QVERIFY(entry);
    QVERIFY(textsIn(m_view).contains(QStringLiteral("bars")));
    click(middleOf(entry));
    QVERIFY(!m_line->series.isVisible());
    QCOMPARE(x(), (SAxisRange{0.0, 100.0}));
    click(middleOf(entry));
    QVERIFY(m_line->series.isVisible());
    m_view->setLegendVisible(false);
    QVERIFY(!find(m_view, QStringLiteral("legendEntry")));
}

void tst_PlotOverlay_gl::theLegendIsWalkedByKeys()
{
    m_view->forceActiveFocus();
    QTest::keyClick(&m_scene->window(), Qt::Key_Tab);
    QQuickItem *const entry = find(m_view, QStringLiteral("legendEntry"));
    QVERIFY(entry->hasActiveFocus());
    QTest::keyClick(&m_scene->window(), Qt::Key_Space);
    QVERIFY(!m_line->series.isVisible());
    QTest::keyClick(&m_scene->window(), Qt::Key_Return);
    QVERIFY(m_line->series.isVisible());
    QTest::keyClick(&m_scene->window(), Qt::Key_Plus); // keys that it doesn't take are the view's
    QVERIFY(x().max - x().min < 60.0);
}

void tst_PlotOverlay_gl::aLegendWithoutNamesIsNotThere()
{
    m_line->series.setName(QString());
    QVERIFY(find(m_view, QStringLiteral("legendEntry")));
    m_bars->series.setName(QString());
    QVERIFY(!find(m_view, QStringLiteral("legendEntry")));
    m_bars->series.setName(QStringLiteral("again"));
    QTRY_VERIFY(find(m_view, QStringLiteral("legendEntry")));
}

void tst_PlotOverlay_gl::theReadoutTellsValues()
{
    QVERIFY(!find(m_view, QStringLiteral("readout")));
    hover({50.2, 30.0});
    QTRY_VERIFY(find(m_view, QStringLiteral("readout")));
    const QStringList texts = textsIn(find(m_view, QStringLiteral("readout")));
    QVERIFY2(texts.contains(QStringLiteral("50")) && texts.contains(QStringLiteral("25")), qPrintable(texts.join('|')));
    QCOMPARE(m_view->readout()->title(), QStringLiteral("50")); // where both stand, not where the pointer is
    hover({50.8, 30.0});                                        // the next point of the line, the same bar
    QVERIFY2(m_view->readout()->title().startsWith(QStringLiteral("50.")), qPrintable(m_view->readout()->title()));
    m_bars->series.setHoverable(false);
    hover({52.0, 30.0});
    QVERIFY(!textsIn(find(m_view, QStringLiteral("readout"))).contains(QStringLiteral("25")));
    QTest::mouseMove(&m_scene->window(), QPoint(3, 3));
    QTRY_VERIFY(!find(m_view, QStringLiteral("readout")));
    QTest::mouseMove(&m_scene->window(), middleOf(find(m_view, QStringLiteral("legendEntry"))));
    QVERIFY(m_view->readout()->isActive() && !find(m_view, QStringLiteral("readout"))); // it would hide the legend
    m_view->setReadoutVisible(false);
    hover({50.2, 30.0});
    QVERIFY(!find(m_view, QStringLiteral("readout")));
}

void tst_PlotOverlay_gl::theReadoutTellsOfColumns()
{
    QVector<double> values(99900, 7.0);
    values[50000] = 900.0;
    m_line->add(values); // a thousand values a pixel or so
    hover({50101.0, 30.0});
    QTRY_VERIFY(find(m_view, QStringLiteral("readout")));
    const QString text = textsIn(find(m_view, QStringLiteral("readout"))).join('|');
    QVERIFY2(text.contains(QStringLiteral("7 … 900")), qPrintable(text));
    const QRegularExpression count(QStringLiteral("of (\\d+) values"));
    const int values100 = count.match(text).captured(1).toInt();
    QVERIFY2(values100 > 100 && values100 < 250, qPrintable(text));
}

void tst_PlotOverlay_gl::aThemeMayGoWhileItsColorsAreShown()
{
    auto theme = std::make_unique<PlotTheme>();
    m_view->setTheme(theme.get());
    hover({50.2, 30.0});
    QTRY_VERIFY(find(m_view, QStringLiteral("readout")));
    const QSignalBlocker nothingIsTold(m_view); // as while another change is being told
    theme.reset();
    QVERIFY(find(m_view, QStringLiteral("readout")));
}

void tst_PlotOverlay_gl::theReadoutFollowsTheData()
{
    hover({99.8, 30.0});
    QTRY_VERIFY(m_view->readout()->isActive());
    m_view->zoomTo(95.0, 100.0); // another value comes under the pointer
    const QVariantList rows = m_view->readout()->rows();
    m_view->zoomTo(10.0, 20.0);
    QVERIFY(m_view->readout()->rows() != rows);
    m_line->series.setVisible(false);
    QCOMPARE(m_view->readout()->rows().size(), 1);
    m_line->series.setVisible(true);
    m_view->zoomTo(90.0, 100.0);
    hover({99.3, 30.0});
    const QVariantList before = m_view->readout()->rows();
    m_line->store.clear(); // the values under the pointer go, and the view stays
    QTRY_VERIFY(m_view->readout()->rows() != before);
}

void tst_PlotOverlay_gl::cursorsAndRegionsFollowTheData()
{
    PlotCursor cursor;
    PlotRegion region;
    cursor.setX(200.0);
    region.setFrom(90.0);
    region.setTo(200.0);
    emit m_view->elementAdded(&cursor);
    emit m_view->elementAdded(&region);
    QCOMPARE(cursor.values().at(0).toDouble(), 100.0); // the nearest
    QCOMPARE(region.count(), 11.0);
    m_line->add(ramp(200, 101.0));
    QCOMPARE(cursor.values().at(0).toDouble(), 200.0);
    QCOMPARE(region.count(), 110.0);
    QTRY_VERIFY(textsIn(m_view).contains(QStringLiteral("110")));
    m_view->axisX()->setUnit(QStringLiteral("keV"));
    m_line->series.setName(QStringLiteral("renamed"));
    const QString text = textsIn(m_view).join('|');
    QVERIFY2(text.contains(QStringLiteral("200\u00a0keV")) && text.contains(QStringLiteral("renamed|200")),
             qPrintable(text));
}

/// Half way up from the line between its ends, between the values.
void tst_PlotOverlay_gl::aRegionTellsHowWideAPeakIs()
{
    const auto widthOf = [](const QVector<double> &values, double from, double to) {
        PlotView view;
        StoredSeries<> line(view, values);
        PlotRegion region;
        region.setFrom(from);
        region.setTo(to);
        emit view.elementAdded(&region);
        return region.peakWidth();
    };
    QCOMPARE(widthOf({0, 0, 0, 4, 8, 4, 0, 0}, 0, 8), 2.0);
    QCOMPARE(widthOf({10, 11, 12, 17, 22, 19, 16, 17}, 0, 8), 2.0); // on a slope
    QCOMPARE(widthOf({0, 0, 6, 8, 2, 0}, 0, 6), 3.0 + 4.0 / 6.0 - (1.0 + 4.0 / 6.0));
    QVERIFY(std::isnan(widthOf({1, 1, 1, 1}, 0, 4)));
    QVERIFY(std::isnan(widthOf({5, 4, 5, 4, 5}, 0, 5))); // nothing stands above the line
    QVERIFY(std::isnan(widthOf({0, std::nan(""), 8, 0}, 0, 4)));
    QVERIFY(std::isnan(widthOf({0, 8}, 0, 2)));
    QVERIFY(std::isnan(widthOf({}, 0, 2)));
}

/// As a recorder does it that runs behind the part that's shown.
void tst_PlotOverlay_gl::marksInViewAskForNoFrameWhenValuesComeOutOfView()
{
    PlotCursor cursor;
    PlotRegion region;
    cursor.setX(25.0);
    region.setFrom(22.0);
    region.setTo(30.0);
    emit m_view->elementAdded(&cursor);
    emit m_view->elementAdded(&region);
    m_view->zoomTo(20.0, 40.0);
    m_view->zoom()->showY({0.0, 100.0});
    m_line->add({0.0}); // the first values after those it began with are always looked at
    QTest::qWait(1200); // what the ears wait for
    m_scene->settle();
    const int frames = m_scene->frameCount();
    m_line->add(ramp(50, 101.0));
    QTest::qWait(300);
    QCOMPARE(m_scene->frameCount(), frames);
}

void tst_PlotOverlay_gl::cursorsTellTheirDifference()
{
    PlotCursor a, b;
    a.setX(20.0);
    b.setX(50.0);
    emit m_view->elementAdded(&a);
    emit m_view->elementAdded(&b);
    m_scene->settle();
    const QString text = textsIn(m_view).join('|');
    QVERIFY2(text.contains(QStringLiteral("20   50   Δ 30")), qPrintable(text));
    QCOMPARE(b.values(), (QVariantList{50.0, 25.0}));
    b.setVisible(false);
    QVERIFY(!textsIn(m_view).join('|').contains(QStringLiteral("Δ")));
}

void tst_PlotOverlay_gl::aRegionTellsItsStatistics()
{
    PlotRegion region;
    region.setName(QStringLiteral("peak"));
    region.setFrom(10.0);
    region.setTo(20.0);
    QSignalSpy spy(&region, &PlotRegion::statisticsChanged);
    emit m_view->elementAdded(&region);
    QVERIFY(!spy.isEmpty());
    QVERIFY(region.isValid());
    QCOMPARE(region.count(), 10.0);
    QCOMPARE(region.sum(), 145.0);
    QCOMPARE(region.mean(), 14.5);
    QVERIFY(std::abs(region.deviation() - std::sqrt(8.25)) < 1e-12);
    QCOMPARE(region.minimum(), 10.0);
    QCOMPARE(region.maximumAt(), 19.0);
    QVERIFY(std::abs(region.centroid() - 2185.0 / 145.0) < 1e-12); // of i * i over i
    QVERIFY(textsIn(m_view).join('|').contains(QStringLiteral("peak: 10")));
    region.setSeries(&m_bars->series);
    QCOMPARE(region.deviation(), 0.0);
    region.setTo(5.0);
    QVERIFY(!region.isValid());
    region.setTo(std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(region.to(), 5.0);
}

void tst_PlotOverlay_gl::marksFollowTheData()
{
    PlotCursor cursor;
    PlotRegion region;
    cursor.setX(101.0);
    region.setFrom(95.0);
    region.setTo(200.0);
    emit m_view->elementAdded(&cursor);
    emit m_view->elementAdded(&region);
    hover({99.0, 30.0});
    QTRY_VERIFY(m_view->readout()->isActive());
    QCOMPARE(cursor.values().first().toDouble(), 100.0);
    QCOMPARE(region.count(), 6.0);
    m_view->axisX()->setMin(0.0); // no range follows, so nothing else tells of a change
    m_view->axisX()->setMax(100.0);
    m_view->axisY()->setMin(0.0);
    m_view->axisY()->setMax(100.0);
    const QVariantList rows = m_view->readout()->rows();
    m_line->add({7.0, 8.0});
    QCOMPARE(cursor.values().first().toDouble(), 7.0);
    QCOMPARE(region.count(), 8.0);
    m_line->store.clear();
    m_line->add(QVector<double>(101, 3.0));
    QVERIFY(m_view->readout()->rows() != rows);
    QCOMPARE(region.maximum(), 3.0);
    m_line->series.setStart(1000.0);
    QVERIFY(!region.isValid());
}

void tst_PlotOverlay_gl::withoutMarksNothingIsToldOfData()
{
    QSignalSpy spy(m_view->marks(), &PlotMarks::panelsChanged);
    m_line->add({7.0, 8.0});
    QCOMPARE(spy.size(), 0);
    PlotCursor cursor;
    emit m_view->elementAdded(&cursor);
    QCOMPARE(spy.size(), 1);
    cursor.setVisible(false);
    QCOMPARE(spy.size(), 2); // the last one has gone
    m_line->add({7.0, 8.0});
    QCOMPARE(spy.size(), 2);
}

void tst_PlotOverlay_gl::aRegionOfOldValuesTellsNothingAnew()
{
    PlotRegion region;
    region.setFrom(10.0);
    region.setTo(20.0);
    emit m_view->elementAdded(&region);
    QCOMPARE(region.count(), 10.0);
    QSignalSpy spy(&region, &PlotRegion::statisticsChanged);
    m_line->add({7.0, 8.0});
    QCOMPARE(spy.size(), 0);
    m_line->series.setStep(2.0);
    QCOMPARE(region.count(), 5.0);
    QCOMPARE(spy.size(), 1);
    m_line->store.clear();
    m_line->add(QVector<double>(101, 3.0));
    QCOMPARE(region.sum(), 15.0);
}

void tst_PlotOverlay_gl::whatALogScaleLeavesOutIsSaid()
{
    QVERIFY(!find(m_view, QStringLiteral("leftOut")));
    m_view->axisY()->setLog(true);
    QTRY_VERIFY(find(m_view, QStringLiteral("leftOut")));
    const QString words = QStringLiteral("1 value of 0 or below has no place on the log scale");
    QVERIFY(textsIn(find(m_view, QStringLiteral("leftOut"))).contains(words));
    QTRY_VERIFY(m_view->ears()->sentence().contains(words));
    m_view->axisY()->setLog(false);
    QTRY_VERIFY(!find(m_view, QStringLiteral("leftOut")));
}

void tst_PlotOverlay_gl::theStateOfFollowingIsSeen()
{
    QVERIFY(!find(m_view, QStringLiteral("followState")));
    m_view->setFollowMode(PlotView::FollowEnd);
    QQuickItem *const state = find(m_view, QStringLiteral("followState"));
    QVERIFY(state && state->property("text").toString().contains(QStringLiteral("following")));
    m_view->zoomTo(10.0, 20.0);
    QVERIFY(state->property("text").toString().contains(QStringLiteral("paused")));
}

void tst_PlotOverlay_gl::theOverviewShowsAllAndMoves()
{
    const double bottom = m_view->plotArea().bottom();
    m_view->setOverviewVisible(true);
    m_scene->settle();
    OverviewStrip *const strip = m_view->overview();
    QVERIFY(m_view->plotArea().bottom() < bottom - 40.0);
    QVERIFY(std::abs(strip->shownPart().width() - strip->width()) < 1.0);
    m_view->zoomTo(20.0, 40.0);
    QVERIFY(std::abs(strip->shownPart().left() - strip->width() * 0.2) < 1.0);
    const auto at = [&](double part) { return strip->mapToScene({part * strip->width(), 20.0}).toPoint(); };
    drag(at(0.3), at(0.5));
    QVERIFY(std::abs(x().min - 40.0) < 1.0 && std::abs(x().max - 60.0) < 1.0);
    m_view->back();
    QCOMPARE(x(), (SAxisRange{20.0, 40.0}));
    click(at(0.9));
    QVERIFY(std::abs(x().min - 80.0) < 1.0 && std::abs(x().max - 100.0) < 1.0);
    m_view->setOverviewVisible(false);
    m_scene->settle();
    QCOMPARE(m_view->plotArea().bottom(), bottom);
}

void tst_PlotOverlay_gl::theOverviewStretches()
{
    m_view->setOverviewVisible(true);
    m_view->zoomTo(20.0, 40.0);
    m_scene->settle();
    OverviewStrip *const strip = m_view->overview();
    const auto at = [&](double part) { return strip->mapToScene({part * strip->width(), 20.0}).toPoint(); };
    drag(at(0.4), at(0.7));
    QVERIFY(std::abs(x().min - 20.0) < 0.1 && std::abs(x().max - 70.0) < 1.0);
    drag(at(0.2), at(0.1));
    QVERIFY(std::abs(x().min - 10.0) < 1.0 && std::abs(x().max - 70.0) < 1.0);
    drag(at(0.1), at(0.95)); // not past the other end
    QVERIFY(x().min < x().max);
    const QPoint pointer = at(0.5);
    m_view->zoomReset();
    QWheelEvent event(pointer, pointer, QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&m_scene->window(), &event);
    QVERIFY(std::abs(x().max - x().min - 80.0) < 1e-6);
}

void tst_PlotOverlay_gl::theOverviewIsMovedByKeys()
{
    m_view->setOverviewVisible(true);
    OverviewStrip &strip = *m_view->overview();
    QVERIFY(strip.activeFocusOnTab());
    strip.forceActiveFocus(Qt::TabFocusReason);
    m_view->zoomTo(20.0, 40.0);
    QTest::keyClick(&m_scene->window(), Qt::Key_Right);
    QVERIFY(x().min > 20.0 && qFuzzyCompare(x().max - x().min, 20.0));
    QTest::keyClick(&m_scene->window(), Qt::Key_Home);
    QCOMPARE(x().min, 0.0);
    QAccessibleInterface *const heard = QAccessible::queryAccessibleInterface(&strip);
    QVERIFY(heard);
    QCOMPARE(heard->text(QAccessible::Name), QStringLiteral("Overview"));
    QCOMPARE(heard->text(QAccessible::Description), m_view->ears()->sentence());
    m_view->setInteractive(false);
    QTest::keyClick(&m_scene->window(), Qt::Key_End);
    QCOMPARE(x().min, 0.0);
}

void tst_PlotOverlay_gl::theOverviewIsAScrollBarToAScreenReader()
{
    m_view->setOverviewVisible(true);
    m_view->zoomTo(20.0, 40.0);
    QAccessibleInterface *const strip = QAccessible::queryAccessibleInterface(m_view->overview());
    QVERIFY(strip);
    QCOMPARE(strip->role(), QAccessible::ScrollBar);
    QAccessibleValueInterface *const value = strip->valueInterface();
    QVERIFY(value);
    QCOMPARE(value->currentValue().toDouble(), 20.0);
    QCOMPARE(value->minimumValue().toDouble(), 0.0);
    QCOMPARE(value->maximumValue().toDouble(), 80.0);
    QCOMPARE(value->minimumStepSize().toDouble(), 2.0);
    value->setCurrentValue(50.0);
    QCOMPARE(x(), (SAxisRange{50.0, 70.0}));
    QCOMPARE(value->currentValue().toDouble(), 50.0);
    value->setCurrentValue(qQNaN());
    value->setCurrentValue(QStringLiteral("nothing"));
    QCOMPARE(x(), (SAxisRange{50.0, 70.0}));
    value->setCurrentValue(1e9);
    QCOMPARE(x(), (SAxisRange{80.0, 100.0}));
    QCOMPARE(value->currentValue().toDouble(), 80.0);
    m_view->setInteractive(false);
    value->setCurrentValue(10.0);
    QCOMPARE(x(), (SAxisRange{80.0, 100.0}));
    QCOMPARE(value->currentValue().toDouble(), 80.0);
}

void tst_PlotOverlay_gl::notInteractiveNothingToggles()
{
    m_view->setOverviewVisible(true);
    m_view->zoomTo(20.0, 40.0);
    m_scene->settle();
    m_view->setInteractive(false);
    click(middleOf(find(m_view, QStringLiteral("legendEntry"))));
    QVERIFY(m_line->series.isVisible());
    OverviewStrip *const strip = m_view->overview();
    click(strip->mapToScene({strip->width() * 0.9, 20.0}).toPoint());
    QCOMPARE(x(), (SAxisRange{20.0, 40.0}));
    hover({30.0, 30.0});
    QVERIFY(!find(m_view, QStringLiteral("readout")));
}

void tst_PlotOverlay_gl::aScreenReaderFindsTheView()
{
    QAccessibleInterface *const view = QAccessible::queryAccessibleInterface(m_view);
    QVERIFY(view);
    QCOMPARE(view->role(), QAccessible::Chart);
    QVERIFY(view->state().focusable);
    QTRY_VERIFY(view->text(QAccessible::Name).contains(QStringLiteral("line, 101 values from 0 to 100")));
    const QString sentence = view->text(QAccessible::Name);
    QVERIFY(sentence.startsWith(QStringLiteral("Trial: ")));
    QVERIFY2(sentence.contains(QStringLiteral("x from 0 to 100")), qPrintable(sentence));
    m_view->zoomTo(20.0, 40.0);
    QTRY_VERIFY(view->text(QAccessible::Name).contains(QStringLiteral("x from 20 to 40")));
    m_line->add({500.0});
    QTRY_VERIFY(view->text(QAccessible::Name).contains(QStringLiteral("line, 102 values from 0 to 500")));
    m_line->series.setVisible(false);
    QTRY_VERIFY(view->text(QAccessible::Name).contains(QStringLiteral("line, hidden")));
}

void tst_PlotOverlay_gl::aScreenReaderHearsTheCursor()
{
    QAccessibleInterface *const view = QAccessible::queryAccessibleInterface(m_view);
    m_view->forceActiveFocus();
    QTest::keyClick(&m_scene->window(), Qt::Key_C);
    QCOMPARE(view->text(QAccessible::Description), QStringLiteral("50, line 50, bars 25"));
    QTest::keyClick(&m_scene->window(), Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(view->text(QAccessible::Description), QStringLiteral("49, line 49, bars 25"));
    m_view->marks()->cursors().first()->setX(100.0); // behind the last bar
    QCOMPARE(view->text(QAccessible::Description), QStringLiteral("100, line 100, bars no value"));
}

void tst_PlotOverlay_gl::aScreenReaderTogglesSeries()
{
    QAccessibleInterface *const entry =
        QAccessible::queryAccessibleInterface(find(m_view, QStringLiteral("legendEntry")));
    QVERIFY(entry);
    QCOMPARE(entry->role(), QAccessible::CheckBox);
    QCOMPARE(entry->text(QAccessible::Name), QStringLiteral("line"));
    QVERIFY(entry->state().checked);
    QVERIFY(entry->actionInterface());
    entry->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(!m_line->series.isVisible());
    QVERIFY(!entry->state().checked);
}

void tst_PlotOverlay_gl::aStillViewAsksForNoFrame()
{
    m_view->zoomTo(20.0, 40.0);
    m_view->zoom()->showY({0.0, 100.0});
    QTest::qWait(1200); // what the ears wait for
    m_scene->settle();
    const int frames = m_scene->frameCount();
    QTest::qWait(1200);
    QCOMPARE(m_scene->frameCount(), frames);
}

void tst_PlotOverlay_gl::seriesAndViewMayGoInAnyOrder()
{
    m_view->setOverviewVisible(true);
    hover({50.0, 20.0});
    m_scene->settle();
    m_line.reset();
    m_scene->settle();
    delete m_view;
    m_bars->series.setVisible(false);
    m_bars->add({1.0});
}

QTEST_MAIN(tst_PlotOverlay_gl)
#include "tst_PlotOverlay_gl.moc"
