// SPDX-License-Identifier: MIT
#include "benchmarks/frames/FrameWatch.h"

#include <QQuickWindow>
#include <QTimer>

#include <time.h>

#include <algorithm>
#include <utility>

namespace {

qint64 timeOf(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return time.tv_sec * Q_INT64_C(1'000'000'000) + time.tv_nsec;
}

} // namespace

qint64 clockTime()
{
    return timeOf(CLOCK_MONOTONIC);
}

qint64 processorTime()
{
    return timeOf(CLOCK_THREAD_CPUTIME_ID);
}

bool WatchedApplication::notify(QObject *receiver, QEvent *event)
{
    const qint64 clock = clockTime();
    const qint64 processor = processorTime();
    ++m_depth;
    const bool isTaken = QGuiApplication::notify(receiver, event);
    if (--m_depth == 0) {
        m_longest.clock = std::max(m_longest.clock, clockTime() - clock);
        m_longest.processor = std::max(m_longest.processor, processorTime() - processor);
    }
    return isTaken;
}

SLongest WatchedApplication::takeLongest()
{
    return std::exchange(m_longest, {});
}

FrameWatch::FrameWatch(QQuickWindow &window)
{
    const auto connectTo = [&](auto signal, auto slot) { connect(&window, signal, this, slot, Qt::DirectConnection); };
    connectTo(&QQuickWindow::beforeSynchronizing, [this] {
        m_current.began = clockTime();
        m_current.takeover = -processorTime();
    });
    connectTo(&QQuickWindow::afterSynchronizing, [this] { m_current.takeover += processorTime(); });
    connectTo(&QQuickWindow::frameSwapped, [this] {
        m_current.swapped = clockTime();
        {
            const std::lock_guard lock(m_access);
            m_frames.push_back(m_current);
        }
        m_lastBegan = m_current.began;
        QMetaObject::invokeMethod(
            this, [] {}, Qt::QueuedConnection); // wakes the GUI thread
    });
}

std::vector<SFrame> FrameWatch::take()
{
    const std::lock_guard lock(m_access);
    return std::exchange(m_frames, {});
}

bool FrameWatch::waitForFrame(qint64 since)
{
    constexpr int patience = 5000; // milliseconds
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(patience);
    while (m_lastBegan < since && limit.isActive())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return m_lastBegan >= since;
}
