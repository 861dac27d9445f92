// SPDX-License-Identifier: MIT
#include "views/store/Prefetch.h"

#if defined(Q_OS_LINUX)
#  include <sys/mman.h>
#  include <unistd.h>

#  include <algorithm>

void prefetch(const char *begin, qint64 bytes)
{
    constexpr qint64 mostAtOnce = 1 << 17; // the system takes the first ones of more
    static const qint64 page = sysconf(_SC_PAGESIZE);
    const qint64 before = qint64(quintptr(begin) % quintptr(page));
    char *const first = const_cast<char *>(begin) - before; // it isn't written to
    for (qint64 done = 0; done < before + bytes; done += mostAtOnce)
        madvise(first + done, size_t(std::min(mostAtOnce, before + bytes - done)), MADV_WILLNEED);
}
#else
void prefetch(const char *, qint64) {}
#endif
