// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/RangeKeeper.h"
#include "views/items/ZoomHistory.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QVector>

class PlotView;

/// Which part of its values a view shows, by hand: what keys, wheels and fingers do to its ranges, the way back,
/// following and links between views. x of linked views is moved in the one that none of them leads: the leader. GUI
/// thread.
class PlotZoom : public QObject
{
    Q_OBJECT

public:
    explicit PlotZoom(PlotView &view);
    ~PlotZoom() override;

    RangeKeeper &keeper() { return m_keeper; }

    // Hands. Steps of one gesture, told apart by its number, are one step back; 0 is a gesture of its own.

    /// `factor` times as much is shown; `anchor`, a value, stays. While following, the right end stays instead.
    void zoomX(double factor, double anchor, int gesture = 0);
    void zoomY(double factor, double anchor, int gesture = 0);
    /// Moves by a part of what is shown; to the left pauses following, to the end resumes it.
    void panX(double part, int gesture = 0);
    void panY(double part, int gesture = 0);
    void showX(const SAxisRange &range, int gesture = 0);
    void showY(const SAxisRange &range, int gesture = 0);
    void reset();
    void back();
    void toBegin();
    /// Resumes following where the view can follow.
    void toEnd();
    void pause();
    void switchScale();
    bool canGoBack() const { return !m_history.isEmpty(); }
    /// A number that no gesture had.
    int newGesture() { return ++m_lastGesture; }
    /// The number for a notch of a wheel: that of the notch before if that isn't long ago.
    int wheelGesture();
    /// The number for a key: that of its press while it repeats.
    int keyGesture(bool isRepeated) { return isRepeated ? m_keyGesture : m_keyGesture = newGesture(); }

    bool isXByHand() const { return m_isXByHand; }
    bool isYByHand() const { return m_isYByHand; }
    bool isFollowing() const;
    /// The mode of following is another one.
    void modeChanged();

    // Links

    PlotView *linkedTo() const { return m_linkedTo; }
    /// False, and nothing changes, if the link would close a circle.
    bool linkTo(PlotView *view);
    /// The view that x is moved in; null if it is this one.
    PlotView *leader() const;
    QVector<PlotView *> linkedViews() const { return m_linkedViews; }
    /// All views that share x with this one, itself included.
    QVector<PlotView *> linkedGroup() const;

signals:
    void followingChanged();
    void linkedToChanged();

private:
    PlotZoom &xOwner();
    const PlotZoom &xOwner() const;
    SAxisRange boundedX(const SAxisRange &range) const;
    void moveX(const SAxisRange &range);
    void takeX(const SAxisRange &range);
    void takeY(const SAxisRange &range);
    void setPaused(bool isPaused);
    SShown shown() const;
    void shareRange();
    void takeSharedRange();
    void layOutGroup();
    void unlink();

    PlotView &m_view;
    RangeKeeper m_keeper;
    ZoomHistory m_history;
    bool m_isXByHand = false;
    bool m_isYByHand = false;
    bool m_isPaused = false;
    bool m_isSharing = false;
    int m_lastGesture = 0;
    int m_keyGesture = 0;
    int m_wheelGesture = 0;
    QElapsedTimer m_sinceWheel;
    PlotView *m_linkedTo = nullptr;
    QVector<PlotView *> m_linkedViews;
};
