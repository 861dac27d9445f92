// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/frames/FrameWatch.h"

#include <QQuickView>

#include <memory>
#include <vector>

class Recording;

/// What one gesture took. Milliseconds.
struct SGesture
{
    const char *name = "";
    std::vector<double> frames;    ///< from each event to the frame that shows it; without events, between two frames
    std::vector<double> takeovers; ///< SFrame::takeover of each frame: columns and geometry
    double longestKept = 0.0;      ///< the GUI thread by one event
    double longestWork = 0.0;      ///< what of the processor it took for one
};

/// Shows a recording in a plot and moves it as hands do: each event waits for the frame of the one before. GUI thread.
class PlotDriver
{
public:
    explicit PlotDriver(WatchedApplication &application);

    /// Opens the plot, goes through all gestures and closes it.
    std::vector<SGesture> drive(Recording &recording);

private:
    void open(Recording &recording);
    void zoom(const char *name, int notches, double where);
    void pan(const char *name, int moves);
    void press(const char *name, int key, int times);
    void watch(const char *name, int milliseconds);
    /// Handles the event and waits for its frame.
    void show(QEvent &event);
    void begin(const char *name);
    void end();
    void takeFrames(bool areIntervals);

    WatchedApplication &m_application;
    std::unique_ptr<QQuickView> m_window;
    std::unique_ptr<FrameWatch> m_watch;
    SGesture m_gesture;
    std::vector<SGesture> m_gestures;
};
