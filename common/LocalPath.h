// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

/// The path of a file that is named by a path or a URL, as QML has both. Empty if it isn't a file of this machine.
inline QString localPath(const QString &file)
{
    if (file.startsWith(QLatin1String("qrc:")))
        return QLatin1Char(':') + QUrl(file).path();
    if (file.startsWith(QLatin1String("file:")))
        return QUrl(file).toLocalFile();
    return file.contains(QLatin1String("://")) ? QString() : file;
}
