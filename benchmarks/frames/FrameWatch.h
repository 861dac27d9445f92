// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>
#include <QObject>

#include <atomic>
#include <mutex>
#include <vector>

class QQuickWindow;

// Nanoseconds: of a steady clock, and of the processor that the calling thread took so far, which doesn't depend on
// what else the machine does.
qint64 clockTime();
qint64 processorTime();

/// The longest of some times.
struct SLongest
{
    qint64 clock = 0;
    qint64 processor = 0;
};

/// Notes how long the GUI thread is kept by each event that it handles, waiting for the render thread included.
class WatchedApplication : public QGuiApplication
{
public:
    using QGuiApplication::QGuiApplication;

    bool notify(QObject *receiver, QEvent *event) override;
    /// The longest since the last call.
    SLongest takeLongest();

private:
    int m_depth = 0;
    SLongest m_longest;
};

/// When a frame began and when it was there, and how much of the processor it took in the render thread to take the
/// scene's state over, for which the GUI thread waits.
struct SFrame
{
    qint64 began = 0;
    qint64 swapped = 0;
    qint64 takeover = 0;
};

/// Notes the frames of a window, in the render thread.
class FrameWatch : public QObject
{
    Q_OBJECT

public:
    explicit FrameWatch(QQuickWindow &window);

    /// The frames since the last call.
    std::vector<SFrame> take();
    /// Handles events until there is a frame that began after `since`. False if none comes.
    bool waitForFrame(qint64 since);

private:
    std::mutex m_access;
    std::vector<SFrame> m_frames;
    SFrame m_current;                   ///< of the render thread
    std::atomic<qint64> m_lastBegan{0}; ///< of those that are there
};
