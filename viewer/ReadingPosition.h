// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// How many bytes of a file this process has read, as the kernel counts them: where the file's open descriptor stands.
/// The reader itself is neither asked nor slowed down. -1 where the process has the file not open, and on systems that
/// do not tell (Linux does, in /proc). Of several descriptors of one file, the one that is behind counts. Any thread.
qint64 readingPosition(const QString &path);
