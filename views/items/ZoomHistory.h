// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisRange.h"

#include <QVector>

/// What a view showed, and which of it was by hand.
struct SShown
{
    SAxisRange x;
    SAxisRange y;
    bool isXByHand = false;
    bool isYByHand = false;
    bool isPaused = false;
};

/// The zooms before the one that is shown. Steps of one gesture (the notches of a wheel, the moves of a drag) count
/// once.
class ZoomHistory
{
public:
    /// Remembers what was shown before a gesture begins or goes on. `gesture` tells gestures apart; 0 is always a new
    /// one.
    void remember(const SShown &shown, int gesture)
    {
        if (gesture != 0 && gesture == m_gesture && !m_shown.isEmpty())
            return;
        m_gesture = gesture;
        if (m_shown.size() >= longest)
            m_shown.removeFirst();
        m_shown.append(shown);
    }
    bool isEmpty() const { return m_shown.isEmpty(); }
    /// What was shown before; isEmpty() must be false.
    SShown take()
    {
        m_gesture = 0;
        return m_shown.takeLast();
    }

private:
    static constexpr int longest = 100;

    QVector<SShown> m_shown;
    int m_gesture = 0;
};
