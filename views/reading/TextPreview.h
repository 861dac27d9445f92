// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QVector>

/// The first lines of a regular file, cut into cells as a reading does it; uncut with no separator (0). Of a long line
/// the first 400 letters. None of what isn't a regular file, or can't be opened.
QVector<QStringList> previewOf(const QString &path, int lines, char separator);
