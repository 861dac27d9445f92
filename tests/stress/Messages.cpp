// SPDX-License-Identifier: MIT
#include "stress/Messages.h"

#include <QMutex>
#include <QMutexLocker>

#include <cstdio>

namespace {

struct SExpected
{
    QRegularExpression pattern;
    int limit = 0;
    int count = 0;
};

QMutex mutex;
QVector<SExpected> expected;
QStringList unexpected;
int unexpectedCount = 0;
Messages *installed = nullptr;

void handler(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (installed)
        installed->take(text);
    else
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

Messages::Messages()
{
    installed = this;
    qInstallMessageHandler(handler);
}

Messages::~Messages()
{
    installed = nullptr;
}

void Messages::expect(const QString &pattern, int limit)
{
    const QMutexLocker lock(&mutex);
    expected.append({QRegularExpression(pattern), limit, 0});
}

void Messages::take(const QString &text)
{
    constexpr int kept = 20;
    const QMutexLocker lock(&mutex);
    for (SExpected &one : expected) {
        if (one.pattern.match(text).hasMatch()) {
            ++one.count;
            return;
        }
    }
    if (++unexpectedCount > kept)
        return;
    unexpected.append(text);
    std::fprintf(stderr, "message: %s\n", qPrintable(text));
}

QStringList Messages::faults() const
{
    const QMutexLocker lock(&mutex);
    QStringList result;
    if (unexpectedCount > 0)
        result.append(
            QStringLiteral("%1 unexpected messages, the first: %2").arg(unexpectedCount).arg(unexpected.first()));
    for (const SExpected &one : qAsConst(expected)) {
        if (one.count > one.limit)
            result.append(QStringLiteral("%1 times \"%2\", more than %3")
                              .arg(one.count)
                              .arg(one.pattern.pattern())
                              .arg(one.limit));
    }
    return result;
}
