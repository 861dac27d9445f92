// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Stillness.h"

#include <QQuickWindow>

#include <atomic>

/// Counts a window's frames, and knows of the one that is being drawn: on a busy machine that takes longer than any
/// pause after which a test could take the window for quiet. Must outlive the window, or a context given to follow().
class FrameCount
{
public:
    /// Call it before the window is shown.
    void follow(QQuickWindow &window, const QObject &context)
    {
        const auto onSignal = [&](void (QQuickWindow::*signal)(), auto action) {
            QObject::connect(&window, signal, &context, action, Qt::DirectConnection);
        };
        onSignal(&QQuickWindow::beforeSynchronizing, [this] { m_isBegun = true; });
        onSignal(&QQuickWindow::beforeRendering, [this] { m_isRendering = true; });
        onSignal(&QQuickWindow::afterRendering, [this] { m_isRendering = false; });
        onSignal(&QQuickWindow::frameSwapped, [this] {
            m_isBegun = false;
            ++m_shown;
        });
    }

    int shown() const { return m_shown; }

    /// Runs the event loop until the window draws nothing and is not about to. A frame may be drawn for that in which
    /// nothing has changed.
    void settle(QQuickWindow &window) const
    {
        const QDeadlineTimer end(patience);
        for (;;) {
            waitUntilStill([this] { return shown(); });
            if (!m_isBegun || !window.isExposed() || end.hasExpired())
                return;
            // Qt may have ended it without a word, because nothing has changed or a picture was grabbed. The next one
            // comes after it, and is shown.
            if (!m_isRendering)
                window.update();
            if (!QTest::qWaitFor([this] { return !m_isBegun; }, patience))
                return;
        }
    }

private:
    std::atomic<bool> m_isBegun{false};
    std::atomic<bool> m_isRendering{false};
    std::atomic<int> m_shown{0};
};
