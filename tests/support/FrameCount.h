// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QQuickWindow>

#include <atomic>

/// Counts a window's frames, and knows of the one that is being drawn: on a busy machine that takes longer than any
/// pause after which a test could take the window for quiet. Must outlive the window, or a context given to follow().
class FrameCount
{
public:
    FrameCount() { m_clock.start(); }

    /// Call it before the window is shown.
    void follow(QQuickWindow &window, const QObject &context)
    {
        QObject::connect(
            &window, &QQuickWindow::beforeSynchronizing, &context, [this] { m_begun = m_clock.elapsed(); },
            Qt::DirectConnection);
        QObject::connect(
            &window, &QQuickWindow::beforeRendering, &context, [this] { m_renders = true; }, Qt::DirectConnection);
        QObject::connect(
            &window, &QQuickWindow::afterRendering, &context,
            [this] {
                m_begun = never;
                m_renders = false;
            },
            Qt::DirectConnection);
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &context, [this] { ++m_shown; }, Qt::DirectConnection);
    }

    int shown() const { return m_shown; }

    /// Qt ends a frame in which nothing has changed without a word, between synchronizing and rendering. One that has
    /// not begun to render soon is taken for such a frame.
    bool isDrawing() const
    {
        const qint64 begun = m_begun;
        return m_renders || (begun != never && m_clock.elapsed() - begun < soon);
    }

private:
    static constexpr qint64 never = -1;
    static constexpr qint64 soon = 200; // ms

    QElapsedTimer m_clock;
    std::atomic<qint64> m_begun{never};
    std::atomic<bool> m_renders{false};
    std::atomic<int> m_shown{0};
};
