// SPDX-License-Identifier: MIT
#include "viewer/FileChecks.h"

#include "viewer/PictureFile.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

namespace {

/// Whether the file begins like one that is no text in UTF-8 or an 8-bit encoding: with a zero byte somewhere.
bool isBinary(const QString &path)
{
    constexpr qint64 enoughToTell = 4096;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(enoughToTell).contains('\0');
}

} // namespace

QString FileChecks::whyUnreadable(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("no such file");
    if (file.isDir())
        return QStringLiteral("is a directory, not a file of numbers");
    if (!file.isFile())
        return QStringLiteral("is no regular file"); // a pipe, say: the reader wants to know where it ends
    if (!file.isReadable())
        return QStringLiteral("may not be read");
    if (isBinary(path))
        return QStringLiteral("is no text; one number a line is expected");
    return {};
}

QString FileChecks::writePicture(const QImage &image, const QString &path)
{
    const QByteArray suffix = QFileInfo(path).suffix().toLatin1();
    return ::writePicture(image, path, suffix.isEmpty() ? "png" : suffix);
}

QStringList FileChecks::pathsOf(const QList<QUrl> &urls)
{
    QStringList paths;
    for (const QUrl &url : urls)
        paths.append(url.isLocalFile() ? url.toLocalFile() : url.toString());
    return paths;
}

QString FileChecks::sizeOf(const QString &path)
{
    return QLocale::c().formattedDataSize(QFileInfo(path).size());
}
