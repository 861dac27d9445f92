// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QRectF>
#include <QString>
#include <QTimer>

class QQuickItem;
class QQuickWindow;

/// Writes a window's picture into a PNG once it stands still, that is, once the window is no longer `reading` and
/// several frames in a row showed the chart with the same rectangles; none unless the window `hasNumbers`. The chart
/// fits itself in steps, one frame after the other, and the item drops requests for frames that come too fast; every
/// frame is therefore asked for here. GUI thread.
class PictureWriter : public QObject
{
    Q_OBJECT

public:
    PictureWriter(QQuickWindow *window, QQuickItem *chart, const QString &path, QObject *parent = nullptr);

signals:
    /// Once. The error is empty when the picture is written.
    void finished(const QString &error);

private:
    void askForFrame();
    void frameShown();
    void finish(const QString &error);

    QQuickWindow *m_window;
    QQuickItem *m_chart;
    QString m_path;
    QRectF m_chartRect;
    QRectF m_zoomRect;
    int m_stillFrames = 0;
    bool m_finished = false;
    QTimer m_patience;
};
