// SPDX-License-Identifier: MIT
#include "viewer/ReadingPosition.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

/// The line "pos:" of a descriptor's entry; -1 for none.
qint64 positionIn(const QString &entry)
{
    QFile file(entry);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        bool isNumber = false;
        const qint64 position = line.startsWith("pos:") ? line.mid(4).trimmed().toLongLong(&isNumber) : -1;
        if (isNumber)
            return position;
    }
    return -1;
}

} // namespace

qint64 readingPosition(const QString &path)
{
    const QString wanted = QFileInfo(path).canonicalFilePath();
    qint64 behind = -1;
    const QStringList descriptors = QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System);
    for (const QString &descriptor : descriptors) {
        if (wanted.isEmpty() || QFile::symLinkTarget(QStringLiteral("/proc/self/fd/") + descriptor) != wanted)
            continue;
        const qint64 position = positionIn(QStringLiteral("/proc/self/fdinfo/") + descriptor);
        if (position >= 0 && (behind < 0 || position < behind))
            behind = position;
    }
    return behind;
}
