// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class QQuickWindow;
struct SViewerOptions;

/// Writes what a window shows, as a PNG or as CSV, once it stands still: once everything is read and several frames in
/// a row showed the same part. Nothing is written unless there are numbers. GUI thread.
class Errand : public QObject
{
    Q_OBJECT

public:
    /// Resizes the window, which isn't shown yet, to the picture's size.
    Errand(QQuickWindow *window, const SViewerOptions &options, QObject *parent = nullptr);

signals:
    /// Once. The error is empty when everything is written.
    void finished(const QString &error);

private:
    void fitWindow();
    void frameShown();
    QString write();
    QString writePicture();
    void finish(const QString &error);

    QQuickWindow *m_window;
    const SViewerOptions &m_options;
    QString m_shown; ///< what the last frame showed, in words
    int m_stillFrames = 0;
    bool m_finished = false;
    QTimer m_patience;
};
