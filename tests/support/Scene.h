// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/FrameCount.h"

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>

#include <atomic>
#include <memory>

/// Registers the module's types once, as a QML engine would.
void registerModule();

/// A window whose frames the test counts and whose pixels it looks up. Its root item is as large as the window.
///
/// Runs in whichever render loop the environment chooses. Bars have their colour on every ground, because the constant
/// blend alpha of the context is set to 1 before each frame; setBlendAlpha() chooses another one.
class Scene
{
public:
    explicit Scene(const QSize &size = QSize(200, 100), const QColor &ground = Qt::black);
    ~Scene();

    QQuickWindow &window() { return *m_window; }
    QQuickItem *root() { return m_window->contentItem(); }
    QQmlEngine &engine() { return m_engine; }

    /// Puts an item that fills the window into the scene, which owns it from then on.
    template <class T>
    T &add(T *item)
    {
        item->setParentItem(root());
        item->setParent(root());
        item->setSize(QSizeF(m_window->size()));
        return *item;
    }

    /// Creates `source` (its imports are written for it) as a child of the root and returns it; null, with the errors
    /// in the log, when it does not load.
    QQuickItem *load(const QByteArray &source);

    /// 0 is what a fresh context has.
    void setBlendAlpha(float alpha) { m_blendAlpha = alpha; }

    /// Shows the window and waits for its first frames.
    bool show();
    /// Lets the window draw until it draws nothing and is not about to.
    void settle();
    /// Waits for `count` further frames, asking the window (not the items) for each.
    bool frames(int count);
    /// How many frames have been swapped.
    int frameCount() const { return m_frames.shown(); }

    /// The window as it looks after all that is pending was drawn.
    QImage grab();

    /// Removes the window, its items first, as at the end of the scene.
    void close();

private:
    void prepareFrame();

    QQmlEngine m_engine;
    FrameCount m_frames;
    std::unique_ptr<QQuickWindow> m_window;
    std::atomic<float> m_blendAlpha{1.0f};
};

/// Whether frames are drawn on a thread of their own.
bool isThreadedLoop();
