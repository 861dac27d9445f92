// SPDX-License-Identifier: MIT
#include "benchmarks/frames/PlotDriver.h"

#include "benchmarks/frames/Recording.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr int width = 1000;
constexpr int height = 600;
constexpr int notch = 120;
constexpr double notchFactor = 0.8; // what a notch of the wheel leaves of what is shown

double milliseconds(qint64 nanoseconds)
{
    return double(nanoseconds) * 1e-6;
}

QPointF placeInPlot(const QQuickItem &plot, double part)
{
    const QRectF area = plot.property("plotArea").toRectF();
    return {area.left() + part * area.width(), area.center().y()};
}

} // namespace

PlotDriver::PlotDriver(WatchedApplication &application) : m_application(application) {}

std::vector<SGesture> PlotDriver::drive(Recording &recording)
{
    m_gestures.clear();
    open(recording);
    constexpr double shownAtLast = 2000.0; // values
    const int notches = int(std::log(shownAtLast / double(recording.count())) / std::log(notchFactor));
    zoom("zoom in, following", notches, 0.3);
    if (recording.isGrowing())
        watch("follow", 2000);
    press("go to the begin", Qt::Key_Home, 1);
    zoom("zoom out", 1 - notches, 0.3);
    zoom("zoom in again", notches / 2, 0.6);
    pan("pan", 80);
    press("go to the end", Qt::Key_End, 1);
    zoom("zoom out, following", 1 - notches / 2, 0.6);
    if (recording.isGrowing())
        watch("follow, all in view", 2000);
    m_watch.reset();
    m_window.reset();
    return std::move(m_gestures);
}

void PlotDriver::open(Recording &recording)
{
    m_window = std::make_unique<QQuickView>();
    m_watch = std::make_unique<FrameWatch>(*m_window);
    m_window->engine()->addImportPath(QStringLiteral(VORLIX_IMPORT_PATH));
    m_window->resize(width, height);
    m_window->setResizeMode(QQuickView::SizeRootObjectToView);
    recording.close();
    begin("open");
    const qint64 began = clockTime();
    recording.open();
    m_window->setInitialProperties({{QStringLiteral("store"), QVariant::fromValue(&recording.store())}});
    m_window->setSource(QUrl(QStringLiteral("qrc:/recorder.qml")));
    if (!m_window->rootObject())
        qFatal("The plot can't be loaded");
    static_cast<QQuickItem *>(m_window->rootObject())->forceActiveFocus(); // keys are for it
    m_window->show();
    if (!m_watch->waitForFrame(began))
        qFatal("No frame came");
    m_gesture.frames.push_back(milliseconds(clockTime() - began));
    end();
}

void PlotDriver::zoom(const char *name, int notches, double where)
{
    begin(name);
    const QPointF place = placeInPlot(*m_window->rootObject(), where);
    const QPoint turn(0, notches > 0 ? notch : -notch);
    for (int i = 0; i < std::abs(notches); ++i) {
        QWheelEvent event(place, m_window->mapToGlobal(place.toPoint()), {}, turn, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        show(event);
    }
    end();
}

void PlotDriver::pan(const char *name, int moves)
{
    begin(name);
    constexpr double step = 7.0; // pixels
    QPointF place = placeInPlot(*m_window->rootObject(), 0.1);
    QMouseEvent down(QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &down);
    for (int i = 0; i < moves; ++i) {
        place.rx() += step;
        QMouseEvent move(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        show(move);
    }
    QMouseEvent up(QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &up);
    end();
}

void PlotDriver::press(const char *name, int key, int times)
{
    begin(name);
    for (int i = 0; i < times; ++i) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        show(event);
    }
    end();
}

void PlotDriver::watch(const char *name, int milliseconds)
{
    begin(name);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    takeFrames(true);
    end();
}

void PlotDriver::show(QEvent &event)
{
    const qint64 began = clockTime();
    QCoreApplication::sendEvent(m_window.get(), &event);
    if (m_watch->waitForFrame(began))
        m_gesture.frames.push_back(milliseconds(clockTime() - began));
    else
        qWarning("%s: an event brought no frame", m_gesture.name);
}

void PlotDriver::begin(const char *name)
{
    m_gesture = SGesture();
    m_gesture.name = name;
    m_watch->take();
    m_application.takeLongest();
}

void PlotDriver::end()
{
    takeFrames(false);
    const SLongest longest = m_application.takeLongest();
    m_gesture.longestKept = milliseconds(longest.clock);
    m_gesture.longestWork = milliseconds(longest.processor);
    m_gestures.push_back(std::move(m_gesture));
}

void PlotDriver::takeFrames(bool areIntervals)
{
    const std::vector<SFrame> frames = m_watch->take();
    for (size_t i = 0; i < frames.size(); ++i) {
        m_gesture.takeovers.push_back(milliseconds(frames[i].takeover));
        if (areIntervals && i > 0)
            m_gesture.frames.push_back(milliseconds(frames[i].swapped - frames[i - 1].swapped));
    }
}
