// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// The process's memory at one moment, in KiB.
struct SMemory
{
    qint64 resident = 0;
    qint64 anonymous = 0; ///< the part of `resident` that doesn't belong to files: heap, stacks, compiled shaders
    qint64 heap = 0;      ///< in use, according to malloc

    /// Gives free memory back to the system first, so that only what is in use counts.
    static SMemory now();
};

/// False under a sanitizer, whose own bookkeeping grows.
bool memoryIsMeasurable();
