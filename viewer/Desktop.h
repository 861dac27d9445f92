// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariant>

class QSettings;

/// What the scene can't do by itself: files, the clipboard, keys, and what is remembered. GUI thread.
class Desktop : public QObject
{
    Q_OBJECT

public:
    /// `keepsSettings`: whether anything is remembered, and was.
    explicit Desktop(bool keepsSettings, QObject *parent = nullptr);

    /// An empty string for what may be tried to read: a file, a pipe or a device, or "-"; else why not.
    Q_INVOKABLE static QString whyUnreadable(const QString &path);
    /// The paths of local files, and the URLs of others.
    Q_INVOKABLE static QStringList pathsOf(const QList<QUrl> &urls);
    /// Says what went wrong on standard error, a line each, and ends the program.
    Q_INVOKABLE static void exit(const QStringList &problems, int code);
    /// To the clipboard, which stays as it is if there's nothing to copy.
    Q_INVOKABLE static void copy(const QString &text);
    /// As if somebody pressed and released a key such as "Ctrl+Right" in this item.
    Q_INVOKABLE static void press(QObject *item, const QString &key);

    Q_INVOKABLE QVariant remembered(const QString &name, const QVariant &otherwise = {}) const;
    Q_INVOKABLE void remember(const QString &name, const QVariant &value);

private:
    QSettings *m_settings = nullptr; ///< a child; null if nothing is kept
};
