// SPDX-License-Identifier: MIT
#include "viewer/PictureFile.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QSaveFile>

namespace {

/// An empty string for success. A write that stops half-way does not say why, the next one does; hence no buffer.
QString writeTo(QFileDevice &device, const QByteArray &content)
{
    if (!device.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return device.errorString();
    for (qint64 written = 0; written < content.size();) {
        const qint64 more = device.write(content.constData() + written, content.size() - written);
        if (more <= 0)
            return device.errorString();
        written += more;
    }
    return {};
}

QString writeWhole(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    const QString error = writeTo(file, content);
    if (!error.isEmpty())
        return error; // the destructor discards what there is
    return file.commit() ? QString() : file.errorString();
}

QString writeStraight(const QString &path, const QByteArray &content)
{
    QFile device(path);
    return writeTo(device, content);
}

QString write(const QImage &image, const QString &path, const QByteArray &format)
{
    QBuffer encoded;
    QImageWriter writer(&encoded, format);
    if (!writer.write(image))
        return writer.errorString();
    const QFileInfo target(path);
    // Something like /dev/stdout must not be replaced by a file.
    const bool isDevice = target.exists() && !target.isFile() && !target.isDir();
    return isDevice ? writeStraight(path, encoded.data()) : writeWhole(path, encoded.data());
}

} // namespace

QString writePicture(const QImage &image, const QString &path, const QByteArray &format)
{
    const QString error = write(image, path, format);
    return error.isEmpty() ? error : path + QStringLiteral(": ") + error;
}
