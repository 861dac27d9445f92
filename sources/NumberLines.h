// SPDX-License-Identifier: MIT
#pragma once

#include "common/Series.h"

#include <QString>

class QIODevice;

/// The values of a text, one per line, or why it could not be read to its end.
struct SNumberLines
{
    QVector<double> values;
    QString error; ///< empty when everything was read; for people
};

/// How the reading is divided. The values do not depend on it.
struct SReadingParts
{
    int blockSize = 1 << 18; ///< bytes that are read at once and converted by one thread
    int threads = 0;         ///< the most that take part, with the calling one; 0: as many as there are processors for
};

/// Reads one value per line, in order. A line that isn't a number yields 0.0; a last line without a line end counts.
///
/// The values are, bit by bit and for any bytes, those that reading the device in text mode with readLine(),
/// QString::fromUtf8() and QString::toDouble() gives. Lines that hold just a number take a shorter way.
///
/// `device` has random access, is open for reading without text mode and stands at its beginning; it is read in blocks,
/// so one that gets shorter meanwhile just ends earlier. Fails on a read error, on more than `limit` lines and on a
/// line of more than 512 MiB.
///
/// A long text is converted by several threads, which have ended when this returns. They read `device` in turns: it is
/// used by one at a time, but not always by the calling one.
SNumberLines readNumberLines(QIODevice &device, int limit = longestSeries, SReadingParts parts = {});
