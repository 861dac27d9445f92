// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

/// What the viewer's scene wants of files. GUI thread.
class FileChecks : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// An empty string for a regular file of text that can be read; else why it can't.
    Q_INVOKABLE static QString whyUnreadable(const QString &path);
    /// Writes a picture in the format that the path ends in, else as PNG. An empty string once it is there; else why it
    /// isn't.
    Q_INVOKABLE static QString writePicture(const QImage &image, const QString &path);
    /// The paths of local files; of others, the URL, which is no path of a file.
    Q_INVOKABLE static QStringList pathsOf(const QList<QUrl> &urls);
    Q_INVOKABLE static QUrl urlOf(const QString &path) { return QUrl::fromLocalFile(path); }
    /// Such as "28.2 MiB"; for people.
    Q_INVOKABLE static QString sizeOf(const QString &path);
};
