// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QTimer>

class QQuickItem;
class QQuickWindow;

/// What a window's picture is to be.
struct SPictureOrder
{
    QString path;
    QSize size; ///< in pixels of the picture, whatever the ratio of the window's pixels to the screen's
};

/// Writes a window's picture into a PNG once it stands still, that is, once the window is no longer `reading` and
/// several frames in a row showed the chart with the same rectangles; none unless the window `hasNumbers`. The chart
/// fits itself in steps, one frame after the other, and the item drops requests for frames that come too fast; every
/// frame is therefore asked for here. GUI thread.
class PictureWriter : public QObject
{
    Q_OBJECT

public:
    /// Resizes the window, which isn't shown yet, to the picture's size.
    PictureWriter(QQuickWindow *window, QQuickItem *chart, const SPictureOrder &order, QObject *parent = nullptr);

signals:
    /// Once. The error is empty when the picture is written.
    void finished(const QString &error);

private:
    void fitWindow();
    void askForFrame();
    void frameShown();
    QString writeWindow();
    void finish(const QString &error);

    QQuickWindow *m_window;
    QQuickItem *m_chart;
    SPictureOrder m_order;
    QRectF m_chartRect;
    QRectF m_zoomRect;
    int m_stillFrames = 0;
    bool m_finished = false;
    QTimer m_patience;
};
