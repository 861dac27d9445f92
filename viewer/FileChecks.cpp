// SPDX-License-Identifier: MIT
#include "viewer/FileChecks.h"

#include "viewer/PictureFile.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

namespace {

/// Whether the beginning of the file has a zero byte: text in UTF-8 or an 8-bit encoding never does.
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
        return QStringLiteral("a directory, not a file of numbers");
    if (!file.isFile())
        return QStringLiteral("not a regular file"); // a pipe, say: it has no size, which the reader needs
    if (!file.isReadable())
        return QStringLiteral("permission denied");
    if (isBinary(path))
        return QStringLiteral("not a text file; expected one number per line");
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
