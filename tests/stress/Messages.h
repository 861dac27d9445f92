// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

/// Takes Qt's log messages of the whole process. Expected ones are counted, all others are kept. Thread-safe.
class Messages
{
public:
    /// Installs itself; one at a time.
    Messages();
    ~Messages();
    Messages(const Messages &) = delete;
    Messages &operator=(const Messages &) = delete;

    /// Messages that match `pattern` are part of what is being tested, at most `limit` of them.
    void expect(const QString &pattern, int limit);
    /// What went wrong so far: unexpected messages, and expected ones beyond their limit.
    QStringList faults() const;

    /// Called by Qt's message handler.
    void take(const QString &text);
};
