// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"

#include <algorithm>
#include <atomic>

namespace {

std::atomic<LogCatcher *> active{nullptr};

/// Qt numbers its levels in the order of their introduction.
int severity(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return 0;
    case QtInfoMsg:
        return 1;
    case QtWarningMsg:
        return 2;
    case QtCriticalMsg:
        return 3;
    default:
        return 4;
    }
}

/// What this machine's session lacks, and no fault of the program under test.
bool isEnvironmentNoise(const QString &text)
{
    return text.startsWith(QLatin1String("QStandardPaths: "));
}

} // namespace

LogCatcher::LogCatcher()
{
    Q_ASSERT(!active);
    active = this;
    m_previous = qInstallMessageHandler(&LogCatcher::handle);
}

LogCatcher::~LogCatcher()
{
    qInstallMessageHandler(m_previous);
    active = nullptr;
}

void LogCatcher::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    LogCatcher *self = active;
    if (!self)
        return;
    if (type == QtFatalMsg && self->m_previous)
        self->m_previous(type, context, text);
    if (isEnvironmentNoise(text))
        return;
    const QMutexLocker lock(&self->m_mutex);
    self->m_messages.append({type, text});
}

QStringList LogCatcher::messages(QtMsgType atLeast) const
{
    const QMutexLocker lock(&m_mutex);
    QStringList texts;
    for (const Message &message : m_messages) {
        if (severity(message.type) >= severity(atLeast))
            texts.append(message.text);
    }
    return texts;
}

QStringList LogCatcher::ofType(QtMsgType type) const
{
    const QMutexLocker lock(&m_mutex);
    QStringList texts;
    for (const Message &message : m_messages) {
        if (message.type == type)
            texts.append(message.text);
    }
    return texts;
}

int LogCatcher::count(const QString &text) const
{
    const QMutexLocker lock(&m_mutex);
    return int(std::count_if(m_messages.cbegin(), m_messages.cend(),
                             [&](const Message &message) { return message.text.contains(text); }));
}

void LogCatcher::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_messages.clear();
}
