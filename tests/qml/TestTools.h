// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/FrameCount.h"
#include "tests/support/LogCatcher.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QPointF>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariantList>

#include <memory>

/// What a test written in QML cannot reach by itself: the message log, other windows, pixels of files. GUI thread.
class TestTools : public QObject
{
    Q_OBJECT

public:
    ~TestTools() override;

    /// From now on messages are collected. Qt's test library writes those before, "QWARN" and the like, to its report.
    Q_INVOKABLE void catchMessages();
    /// The messages since the last call, without debug messages.
    Q_INVOKABLE QStringList takeMessages();
    /// The debug messages since the last call of this or takeMessages().
    Q_INVOKABLE QStringList takeConsole();

    /// Gives the window's charts their colours on every ground, and counts its frames from now on.
    Q_INVOKABLE void prepare(QQuickWindow *window);
    Q_INVOKABLE int frames() const { return m_frames.shown(); }
    /// Waits until the window that was prepared draws nothing and is not about to.
    Q_INVOKABLE void settle() const;

    /// The visible windows, without `except`; those of dialogs among them.
    Q_INVOKABLE QVariantList otherWindows(QQuickWindow *except) const;
    /// Waits until a window is there and has laid out its items.
    Q_INVOKABLE void waitUntilShown(QQuickWindow *window) const;
    Q_INVOKABLE QQuickItem *contentOf(QQuickWindow *window) const { return window->contentItem(); }
    /// A click of the left button in the middle of an item, in whichever window it is.
    Q_INVOKABLE void clickOn(QQuickItem *item) const;
    Q_INVOKABLE void press(QQuickWindow *window, int key) const;
    /// A press, moves in steps and, if asked for, a release, in the window's pixels.
    Q_INVOKABLE void drag(QQuickWindow *window, const QPointF &from, const QPointF &to, bool release = true) const;
    Q_INVOKABLE void release(QQuickWindow *window, const QPointF &at) const;

    /// What a window shows.
    Q_INVOKABLE QImage grab(QQuickWindow *window) const { return window->grabWindow(); }
    /// Whether two pictures of a window are the same in a rectangle of it.
    Q_INVOKABLE bool areSame(const QImage &picture, const QImage &other, const QRect &part) const
    {
        return picture.copy(part) == other.copy(part);
    }
    /// The colour in the middle of a pixel of the window, which may be larger than one of the screen.
    Q_INVOKABLE QColor pixelOf(const QImage &picture, int x, int y) const;

    /// A path in a folder that is removed at the end.
    Q_INVOKABLE QString temporaryPath(const QString &name) const { return m_folder.filePath(name); }
    Q_INVOKABLE QString urlOf(const QString &path) const;
    Q_INVOKABLE bool exists(const QString &path) const;
    /// Of an image file; empty when it can't be read.
    Q_INVOKABLE QSize imageSize(const QString &path) const;
    Q_INVOKABLE QColor imagePixel(const QString &path, int x, int y) const;
    /// Whether two image files have the same pixels.
    Q_INVOKABLE bool areAlike(const QString &path, const QString &other) const;
    /// How strongly neighbouring pixels differ at most, 0 to 255, in a rectangle of an image file: 0 for a flat one.
    Q_INVOKABLE int steepestEdge(const QString &path, const QRect &area) const;

private:
    std::unique_ptr<LogCatcher> m_log;
    QTemporaryDir m_folder;
    QQuickWindow *m_window = nullptr;
    FrameCount m_frames;
};
