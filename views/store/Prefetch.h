// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Has the system begin to read memory that may lie in a mapped file, and doesn't wait for it. Many parts that are
/// asked for before the first of them is looked at come at the same time, and not one after the other. Any memory, any
/// thread.
void prefetch(const char *begin, qint64 bytes);
