// SPDX-License-Identifier: MIT
#include "stress/Memory.h"

#include <QFile>

#include <malloc.h>
#include <unistd.h>

SMemory SMemory::now()
{
    malloc_trim(0);
    SMemory memory;
    const qint64 pageKiB = sysconf(_SC_PAGESIZE) / 1024;
    QFile statm(QStringLiteral("/proc/self/statm")); // pages: size, resident, of which shared, ...
    if (statm.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> pages = statm.readAll().split(' ');
        memory.resident = pages.value(1).toLongLong() * pageKiB;
        memory.anonymous = memory.resident - pages.value(2).toLongLong() * pageKiB;
    }
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
