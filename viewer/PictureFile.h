// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

class QImage;

/// Writes a picture in a format such as "png". What was in the file before stays until the whole picture is on the
/// disk; a part of one is never left behind. A device is written to as it is. An empty string for success; else what
/// went wrong, in words, the path included.
QString writePicture(const QImage &image, const QString &path, const QByteArray &format);
