// SPDX-License-Identifier: MIT
#include "common/LargePages.h"

#include <algorithm>

#ifdef Q_OS_LINUX
#  include <sys/mman.h>
#endif

void preferLargePages(QVector<double> &storage, int count)
{
#if defined(Q_OS_LINUX) && defined(MADV_HUGEPAGE)
    constexpr quintptr page = 2 << 20;     // bytes; where it is another size, the system sees to it
    constexpr quintptr worthIt = 2 * page; // bytes
    const auto begin = reinterpret_cast<quintptr>(storage.data());
    const quintptr end = begin + quintptr(std::min(count, storage.capacity())) * sizeof(double);
    const quintptr from = (begin + page - 1) / page * page;
    const quintptr to = end / page * page;
    if (end - begin >= worthIt && to > from)
        madvise(reinterpret_cast<void *>(from), to - from, MADV_HUGEPAGE); // if it will not, it is only slower
#else
    Q_UNUSED(storage)
    Q_UNUSED(count)
#endif
}
