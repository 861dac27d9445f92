// SPDX-License-Identifier: MIT
#pragma once

#include <QMutex>
#include <QString>
#include <QStringList>
#include <QVector>

/// Collects everything that goes to Qt's message log while it lives, from all threads. One at a time.
class LogCatcher
{
public:
    LogCatcher();
    ~LogCatcher();
    LogCatcher(const LogCatcher &) = delete;
    LogCatcher &operator=(const LogCatcher &) = delete;

    /// The texts of the given level and above, in order; debug messages are left out by default.
    QStringList messages(QtMsgType atLeast = QtInfoMsg) const;
    /// The texts of exactly that level.
    QStringList ofType(QtMsgType type) const;
    /// How many messages contain `text`.
    int count(const QString &text) const;
    void clear();

private:
    struct Message
    {
        QtMsgType type;
        QString text;
    };

    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    mutable QMutex m_mutex;
    QVector<Message> m_messages;
    QtMessageHandler m_previous;
};
