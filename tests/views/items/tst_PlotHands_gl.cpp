// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"
#include "tests/support/Scene.h"
#include "tests/views/items/PlotFixture.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotHands.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotRegion.h"
#include "views/items/PlotTheme.h"

#include <QtTest>

#include <QStyleHints>
#include <QWheelEvent>

#include <memory>

namespace {

bool isNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

} // namespace

/// What mouse, wheel, fingers and keys do, with events as a window gets them. In both render loops.
class tst_PlotHands_gl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theWheelZoomsAtThePointer();
    void notchesAreOneStepBack();
    void theWheelOverAnAxisZoomsThatAxis();
    void aSidewaysWheelPans();
    void theWheelOutsideGoesToWhatIsAround();
    void aDragPans();
    void aDragOnTheYAxisPansIt();
    void anUnsteadyHandLeavesYAlone();
    void aShiftDragDrawsABox();
    void aFlatBoxZoomsXAlone();
    void escapeGivesUpABox();
    void aDoubleClickShowsAll();
    void twoFingersPinch();
    void twoFingersPan();
    void oneFingerPansAndTwoTapsShowAll();
    void keys_data();
    void keys();
    void backspaceGoesBackAndLetters();
    void lettersWithControlAreTheApplications();
    void tabShowsTheFocus();
    void aCursorIsDragged();
    void aRegionIsDragged();
    void keysWalkACursor();
    void notInteractiveNothingMoves();
    void marksMayGoInAnyOrder();
    void aViewMayGoDuringADrag();

private:
    QPoint at(double x, double y) const;
    void wheel(const QPoint &position, const QPoint &delta);
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    SAxisRange x() const { return m_view->axisX()->range(); }
    SAxisRange y() const { return m_view->axisY()->range(); }

    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<Scene> m_scene;
    std::unique_ptr<StoredSeries<>> m_line;
    PlotView *m_view = nullptr;
    QTouchDevice *m_screen = nullptr;
};

void tst_PlotHands_gl::initTestCase()
{
    m_screen = QTest::createTouchDevice();
}

void tst_PlotHands_gl::init()
{
    m_log = std::make_unique<LogCatcher>();
    m_scene = std::make_unique<Scene>(QSize(640, 400), Qt::black);
    m_view = &m_scene->add(new PlotView);
    m_line = std::make_unique<StoredSeries<>>(*m_view, ramp(1001));
    QVERIFY(m_scene->show());
    m_scene->window().requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&m_scene->window(), patience));
    m_view->forceActiveFocus();
    m_scene->settle();
}

void tst_PlotHands_gl::cleanup()
{
    m_line.reset();
    m_scene.reset();
    const QStringList messages = m_log->messages();
    m_log.reset();
    QVERIFY2(messages.isEmpty(), qPrintable(messages.join('\n')));
}

/// A place in parts of the plot area, from its lower left corner.
QPoint tst_PlotHands_gl::at(double x, double y) const
{
    const QRectF area = m_view->plotArea();
    return QPointF(area.left() + x * area.width(), area.bottom() - y * area.height()).toPoint();
}

void tst_PlotHands_gl::wheel(const QPoint &position, const QPoint &delta)
{
    QWheelEvent event(position, m_scene->window().mapToGlobal(position), QPoint(), delta, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&m_scene->window(), &event);
}

void tst_PlotHands_gl::press(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(&m_scene->window(), Qt::Key(key), modifiers);
}

void tst_PlotHands_gl::theWheelZoomsAtThePointer()
{
    const QPoint pointer = at(0.25, 0.5);
    const double value = m_view->mapToValue(pointer).x();
    wheel(pointer, {0, 120});
    QVERIFY(isNear(x().max - x().min, 800.0, 1e-6));
    QVERIFY(isNear(m_view->mapToValue(pointer).x(), value, 1e-6));
    wheel(pointer, {0, -120});
    QVERIFY(isNear(x().max - x().min, 1000.0, 1e-6));
    wheel(pointer, {0, -1200});
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
}

void tst_PlotHands_gl::notchesAreOneStepBack()
{
    bool isOneGesture = false;
    for (int round = 0; round < 100 && !isOneGesture; ++round) { // a busy machine may rest longer than a gesture does
        if (round > 0)
            QTest::qWait(600);
        while (m_view->zoom()->canGoBack())
            m_view->back();
        QElapsedTimer passed;
        passed.start();
        for (int i = 0; i < 6; ++i)
            wheel(at(0.5, 0.5), {0, 120});
        isOneGesture = passed.elapsed() < 500;
        QVERIFY(x().max - x().min < 300.0);
        m_view->back();
    }
    QVERIFY(isOneGesture);
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
    QVERIFY(!m_view->zoom()->canGoBack());
}

void tst_PlotHands_gl::theWheelOverAnAxisZoomsThatAxis()
{
    const SAxisRange before = y();
    wheel(at(-0.05, 0.5), {0, 120});
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
    QVERIFY(isNear(y().max - y().min, (before.max - before.min) * 0.8, 1e-6));
    const SAxisRange zoomedY = y();
    wheel(at(0.5, -0.05), {0, 120});
    QVERIFY(isNear(x().max - x().min, 800.0, 1e-6));
    QCOMPARE(y(), zoomedY);
}

void tst_PlotHands_gl::aSidewaysWheelPans()
{
    m_view->zoomTo(400.0, 500.0);
    wheel(at(0.5, 0.5), {-120, 0});
    QCOMPARE(x(), (SAxisRange{410.0, 510.0}));
}

void tst_PlotHands_gl::theWheelOutsideGoesToWhatIsAround()
{
    QWheelEvent event(QPoint(2, 2), QPoint(2, 2), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    event.ignore();
    QCoreApplication::sendEvent(&m_scene->window(), &event);
    QVERIFY(!event.isAccepted());
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
}

void tst_PlotHands_gl::aDragPans()
{
    m_view->zoomTo(400.0, 500.0);
    const QPoint from = at(0.75, 0.5);
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, from);
    const double value = m_view->mapToValue(from).x();
    QTest::mouseMove(&m_scene->window(), from - QPoint(20, 0));
    QTest::mouseMove(&m_scene->window(), from - QPoint(100, 0));
    QVERIFY(isNear(m_view->mapToValue(from - QPoint(100, 0)).x(), value, 1e-6)); // what the hand holds stays under it
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, from - QPoint(100, 0));
    QVERIFY(x().min > 405.0);
    const SAxisRange after = x();
    QTest::mouseMove(&m_scene->window(), at(0.1, 0.5));
    QCOMPARE(x(), after);
    m_view->back();
    QCOMPARE(x(), (SAxisRange{400.0, 500.0}));
}

void tst_PlotHands_gl::aDragOnTheYAxisPansIt()
{
    const SAxisRange before = y();
    const QPoint from = at(-0.05, 0.5);
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(&m_scene->window(), from + QPoint(0, 20));
    QTest::mouseMove(&m_scene->window(), from + QPoint(0, 80));
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, from + QPoint(0, 80));
    QVERIFY(y().max > before.max + 1.0);
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
}

void tst_PlotHands_gl::anUnsteadyHandLeavesYAlone()
{
    m_view->zoomTo(400.0, 500.0);
    m_view->axisY()->setMin(0.0); // or it would follow the values after a rest, however long that takes to come
    m_view->axisY()->setMax(1000.0);
    const SAxisRange before = y();
    const QPoint from = at(0.5, 0.5);
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(&m_scene->window(), from + QPoint(15, 30));
    QTest::mouseMove(&m_scene->window(), from + QPoint(30, 60));
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, from + QPoint(30, 60));
    QCOMPARE(y(), before);
    QVERIFY(!m_view->zoom()->isYByHand());
}

void tst_PlotHands_gl::aShiftDragDrawsABox()
{
    const QPoint from = at(0.2, 0.2), to = at(0.6, 0.8);
    const QPointF a = m_view->mapToValue(from), b = m_view->mapToValue(to);
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::ShiftModifier, from);
    QTest::mouseMove(&m_scene->window(), at(0.4, 0.4));
    QTest::mouseMove(&m_scene->window(), to);
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
    const QImage picture = m_scene->grab();
    QCOMPARE(picture.pixelColor(from.x(), at(0.2, 0.5).y()), m_view->theme()->accentColor());
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::ShiftModifier, to);
    QVERIFY(isNear(x().min, a.x(), 1e-6) && isNear(x().max, b.x(), 1e-6));
    QVERIFY(isNear(y().min, a.y(), 1e-6) && isNear(y().max, b.y(), 1e-6));
    m_view->back();
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
    QVERIFY(!m_view->zoom()->isYByHand());
}

void tst_PlotHands_gl::aFlatBoxZoomsXAlone()
{
    const QPoint from = at(0.2, 0.5), to = at(0.6, 0.5) + QPoint(0, 5);
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::ShiftModifier, from);
    QTest::mouseMove(&m_scene->window(), to);
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::ShiftModifier, to);
    QVERIFY(x().max - x().min < 450.0);
    QVERIFY(!m_view->zoom()->isYByHand());
}

void tst_PlotHands_gl::escapeGivesUpABox()
{
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::ShiftModifier, at(0.2, 0.2));
    QTest::mouseMove(&m_scene->window(), at(0.6, 0.8));
    press(Qt::Key_Escape);
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::ShiftModifier, at(0.6, 0.8));
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
}

void tst_PlotHands_gl::aDoubleClickShowsAll()
{
    m_view->zoomTo(400.0, 500.0);
    m_view->zoom()->showY({3.0, 4.0});
    QTest::mouseDClick(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, at(0.5, 0.5));
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
    QVERIFY(y().max > 1000.0);
}

void tst_PlotHands_gl::twoFingersPinch()
{
    QQuickWindow *const window = &m_scene->window();
    const QPoint left = at(0.4, 0.5), right = at(0.6, 0.5);
    const double a = m_view->mapToValue(left).x(), b = m_view->mapToValue(right).x();
    QTest::touchEvent(window, m_screen).press(0, left, window);
    QTest::touchEvent(window, m_screen).move(0, left, window).press(1, right, window);
    const QPoint leftNow = at(0.2, 0.5), rightNow = at(0.9, 0.45);
    QTest::touchEvent(window, m_screen).move(0, leftNow, window).move(1, rightNow, window);
    QTRY_VERIFY(isNear(m_view->mapToValue(leftNow).x(), a, 1e-6)); // what was under the fingers still is
    QVERIFY(isNear(m_view->mapToValue(rightNow).x(), b, 1e-6));
    QTest::touchEvent(window, m_screen).release(0, leftNow, window).release(1, rightNow, window);
    QVERIFY(!m_view->zoom()->isYByHand());
    m_view->back();
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
}

void tst_PlotHands_gl::twoFingersPan()
{
    m_view->zoomTo(400.0, 500.0);
    QQuickWindow *const window = &m_scene->window();
    const QPoint first = at(0.5, 0.4), second = at(0.51, 0.42), moved(60, 0);
    QTest::touchEvent(window, m_screen).press(0, first, window).press(1, second, window);
    QTest::touchEvent(window, m_screen).move(0, first + moved, window).move(1, second + moved, window);
    QTest::touchEvent(window, m_screen).release(0, first + moved, window).release(1, second + moved, window);
    QTRY_VERIFY(x().min < 395.0);
    QVERIFY(isNear(x().max - x().min, 100.0, 1e-6));
}

void tst_PlotHands_gl::oneFingerPansAndTwoTapsShowAll()
{
    m_view->zoomTo(400.0, 500.0);
    QQuickWindow *const window = &m_scene->window();
    const QPoint from = at(0.5, 0.5);
    QTest::touchEvent(window, m_screen).press(0, from, window);
    QTest::touchEvent(window, m_screen).move(0, from + QPoint(20, 0), window);
    QTest::touchEvent(window, m_screen).move(0, from + QPoint(100, 0), window);
    QTRY_VERIFY(x().min < 395.0);
    QTest::touchEvent(window, m_screen).release(0, from + QPoint(100, 0), window);
    QStyleHints *const hints = QGuiApplication::styleHints();
    const int interval = hints->mouseDoubleClickInterval();
    hints->setMouseDoubleClickInterval(patience); // however long the machine takes between two taps
    for (int tap = 0; tap < 2; ++tap) {
        QTest::touchEvent(window, m_screen).press(0, at(0.2, 0.2), window);
        QTest::touchEvent(window, m_screen).release(0, at(0.2, 0.2), window);
    }
    hints->setMouseDoubleClickInterval(interval);
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
}

void tst_PlotHands_gl::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    const int none = Qt::NoModifier, control = Qt::ControlModifier;
    QTest::newRow("right") << int(Qt::Key_Right) << none << 410.0 << 510.0;
    QTest::newRow("left") << int(Qt::Key_Left) << none << 390.0 << 490.0;
    QTest::newRow("home") << int(Qt::Key_Home) << none << 0.0 << 100.0;
    QTest::newRow("end") << int(Qt::Key_End) << none << 900.0 << 1000.0;
    QTest::newRow("plus") << int(Qt::Key_Plus) << none << 425.0 << 475.0;
    QTest::newRow("plus with shift") << int(Qt::Key_Plus) << int(Qt::ShiftModifier) << 425.0 << 475.0;
    QTest::newRow("plus on the keypad") << int(Qt::Key_Plus) << int(Qt::KeypadModifier) << 425.0 << 475.0;
    QTest::newRow("minus") << int(Qt::Key_Minus) << none << 350.0 << 550.0;
    QTest::newRow("control right") << int(Qt::Key_Right) << control << 450.0 - 50.0 / 1.5 << 450.0 + 50.0 / 1.5;
    QTest::newRow("control left") << int(Qt::Key_Left) << control << 375.0 << 525.0;
    QTest::newRow("0") << int(Qt::Key_0) << none << 0.0 << 1000.0;
}

void tst_PlotHands_gl::keys()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(double, from);
    QFETCH(double, to);
    m_view->zoomTo(400.0, 500.0);
    press(key, Qt::KeyboardModifiers(modifiers));
    QVERIFY2(isNear(x().min, from, 1e-6) && isNear(x().max, to, 1e-6),
             qPrintable(QStringLiteral("%1 .. %2").arg(x().min).arg(x().max)));
}

void tst_PlotHands_gl::backspaceGoesBackAndLetters()
{
    m_view->zoomTo(400.0, 500.0);
    press(Qt::Key_Backspace);
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
    press(Qt::Key_L);
    QVERIFY(m_view->axisY()->isLog());
    press(Qt::Key_L);
    QVERIFY(!m_view->axisY()->isLog());
    press(Qt::Key_F);
    QVERIFY(m_view->isFollowing());
    press(Qt::Key_F);
    QVERIFY(!m_view->isFollowing());
    press(Qt::Key_End);
    QVERIFY(m_view->isFollowing());
    const SAxisRange before = y();
    press(Qt::Key_Up, Qt::ControlModifier);
    QVERIFY(y().max - y().min < before.max - before.min);
    const SAxisRange zoomedY = y();
    press(Qt::Key_Up);
    QVERIFY(y().min > zoomedY.min);
    press(Qt::Key_Down, Qt::ControlModifier);
    QVERIFY(y().max - y().min > zoomedY.max - zoomedY.min);
}

void tst_PlotHands_gl::lettersWithControlAreTheApplications()
{
    press(Qt::Key_L, Qt::ControlModifier);
    press(Qt::Key_F, Qt::AltModifier);
    press(Qt::Key_Q);
    QVERIFY(!m_view->axisY()->isLog());
    QVERIFY(!m_view->isFollowing());
}

void tst_PlotHands_gl::tabShowsTheFocus()
{
    const QPoint corner = m_view->plotArea().topLeft().toPoint() + QPoint(40, 1);
    QVERIFY(m_scene->grab().pixelColor(corner) != m_view->theme()->accentColor());
    m_scene->add(new QQuickItem).forceActiveFocus();
    QVERIFY(!m_view->hasActiveFocus());
    m_view->forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(m_scene->grab().pixelColor(corner), m_view->theme()->accentColor());
}

void tst_PlotHands_gl::aCursorIsDragged()
{
    PlotCursor cursor;
    cursor.setX(500.0);
    emit m_view->elementAdded(&cursor);
    QCOMPARE(cursor.values(), QVariantList{500.0});
    const QPointF place = m_view->mapToPosition({500.0, 500.0});
    const QPoint from(int(place.x()), int(place.y()));
    QCOMPARE(m_scene->grab().pixelColor(from), m_view->theme()->accentColor());
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(&m_scene->window(), at(0.8, 0.5));
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, at(0.8, 0.5));
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
    QVERIFY(isNear(cursor.x(), m_view->mapToValue(at(0.8, 0.5)).x(), 1e-9));
    QVERIFY(isNear(cursor.values().first().toDouble(), cursor.x(), 0.5));
}

void tst_PlotHands_gl::aRegionIsDragged()
{
    PlotRegion region;
    region.setFrom(200.0);
    region.setTo(400.0);
    emit m_view->elementAdded(&region);
    QCOMPARE(region.count(), 200.0);
    QCOMPARE(region.mean(), 299.5);
    const auto drag = [&](double from, double by) {
        const QPoint start = m_view->mapToPosition({from, 500.0}).toPoint();
        const QPoint end = m_view->mapToPosition({from + by, 500.0}).toPoint();
        QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, start);
        QTest::mouseMove(&m_scene->window(), (start + end) / 2);
        QTest::mouseMove(&m_scene->window(), end);
        QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, end);
    };
    drag(300.0, 100.0);
    QVERIFY(isNear(region.from(), 300.0, 2.0) && isNear(region.to(), 500.0, 2.0));
    drag(500.0, 200.0);
    QVERIFY(isNear(region.from(), 300.0, 2.0) && isNear(region.to(), 700.0, 2.0));
    drag(300.0, -250.0);
    QVERIFY(isNear(region.from(), 50.0, 2.0) && isNear(region.to(), 700.0, 2.0));
    QVERIFY(isNear(region.count(), 650.0, 3.0));
    QCOMPARE(x(), (SAxisRange{0.0, 1000.0}));
}

void tst_PlotHands_gl::keysWalkACursor()
{
    press(Qt::Key_Right, Qt::ShiftModifier); // brings one
    const QVector<PlotCursor *> cursors = m_view->marks()->cursors();
    QVERIFY(cursors.at(0)->isVisible());
    m_view->zoomTo(490.0, 510.0);
    press(Qt::Key_Right, Qt::ShiftModifier);
    const double first = cursors.at(0)->x();
    QCOMPARE(first, std::round(first)); // from value to value
    press(Qt::Key_Right, Qt::ShiftModifier);
    QVERIFY(isNear(cursors.at(0)->x(), first + 1.0, 1e-9));
    QVERIFY(m_view->marks()->spoken().contains(QString::number(first + 1.0)));
    press(Qt::Key_Left, Qt::ShiftModifier);
    QVERIFY(isNear(cursors.at(0)->x(), first, 1e-9));
    press(Qt::Key_C);
    QVERIFY(cursors.at(1)->isVisible());
    press(Qt::Key_C);
    QVERIFY(!cursors.at(0)->isVisible() && !cursors.at(1)->isVisible());
}

void tst_PlotHands_gl::notInteractiveNothingMoves()
{
    PlotCursor cursor;
    cursor.setX(500.0);
    emit m_view->elementAdded(&cursor);
    m_view->zoomTo(400.0, 600.0);
    m_view->setInteractive(false);
    QQuickWindow *const window = &m_scene->window();
    const SAxisRange before = x();
    wheel(at(0.5, 0.5), {0, 120});
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at(0.5, 0.5));
    QTest::mouseMove(window, at(0.7, 0.5));
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at(0.7, 0.5));
    QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, at(0.5, 0.5));
    QTest::touchEvent(window, m_screen).press(0, at(0.4, 0.5), window).press(1, at(0.6, 0.5), window);
    QTest::touchEvent(window, m_screen).move(0, at(0.2, 0.5), window).move(1, at(0.8, 0.5), window);
    QTest::touchEvent(window, m_screen).release(0, at(0.2, 0.5), window).release(1, at(0.8, 0.5), window);
    for (const int key : {Qt::Key_Right, Qt::Key_Plus, Qt::Key_Home, Qt::Key_0, Qt::Key_L, Qt::Key_C, Qt::Key_F})
        press(key);
    QCOMPARE(x(), before);
    QCOMPARE(cursor.x(), 500.0);
    QVERIFY(!m_view->axisY()->isLog());
    QCOMPARE(m_view->followMode(), PlotView::FollowNone);
    m_view->zoomTo(0.0, 10.0); // the application still may
    QCOMPARE(x().max, 10.0);
}

void tst_PlotHands_gl::marksMayGoInAnyOrder()
{
    auto cursor = std::make_unique<PlotCursor>();
    auto region = std::make_unique<PlotRegion>();
    region->setTo(100.0);
    emit m_view->elementAdded(cursor.get());
    emit m_view->elementAdded(region.get());
    m_scene->grab();
    const QPoint here = m_view->mapToPosition({50.0, 500.0}).toPoint();
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, here);
    region.reset();
    QTest::mouseMove(&m_scene->window(), here + QPoint(50, 0));
    cursor.reset();
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, here + QPoint(50, 0));
    m_scene->grab();
    QVERIFY(m_view->marks()->panels().isEmpty());
}

void tst_PlotHands_gl::aViewMayGoDuringADrag()
{
    QTest::mousePress(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, at(0.5, 0.5));
    QTest::mouseMove(&m_scene->window(), at(0.6, 0.5));
    delete m_view;
    QTest::mouseMove(&m_scene->window(), QPoint(200, 200));
    QTest::mouseRelease(&m_scene->window(), Qt::LeftButton, Qt::NoModifier, QPoint(200, 200));
}

QTEST_MAIN(tst_PlotHands_gl)
#include "tst_PlotHands_gl.moc"
