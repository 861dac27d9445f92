// SPDX-License-Identifier: MIT
#include "stress/Memory.h"

#include <QFile>

#include <malloc.h>
#include <unistd.h>

SMemory SMemory::now()
{
    malloc_trim(0);
    SMemory memory;
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (statm.open(QIODevice::ReadOnly))
        memory.resident = statm.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE) / 1024;
    const struct mallinfo2 info = mallinfo2();
    memory.heap = qint64(info.uordblks + info.hblkhd) / 1024;
    return memory;
}

bool memoryIsMeasurable()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return false;
#else
    return true;
#endif
}
