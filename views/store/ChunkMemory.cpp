// SPDX-License-Identifier: MIT
#include "views/store/ChunkMemory.h"

#if defined(Q_OS_LINUX)
#  include <sys/mman.h>
#  include <unistd.h>
#endif

namespace {

constexpr qint64 pageSize = qint64(1) << 21;

/// A large page; null where there are none.
std::shared_ptr<char> largePage()
{
#if defined(Q_OS_LINUX)
    // Twice as much holds one that begins where such a page can.
    void *const both = mmap(nullptr, 2 * pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (both == MAP_FAILED)
        return nullptr;
    char *const begin = static_cast<char *>(both);
    const qint64 front = pageSize - qint64(quintptr(begin) % quintptr(pageSize));
    char *const page = begin + front;
    munmap(begin, size_t(front));
    if (front < pageSize)
        munmap(page + pageSize, size_t(pageSize - front));
    madvise(page, size_t(pageSize), MADV_HUGEPAGE);
    return {page, [](char *unused) { munmap(unused, size_t(pageSize)); }};
#else
    return nullptr;
#endif
}

} // namespace

std::shared_ptr<char> ChunkMemory::take(qint64 bytes)
{
    constexpr qint64 longFrom = 8 * pageSize; // what isn't used of a page is little then
    const bool isLong = m_taken >= longFrom && bytes <= pageSize;
    m_taken += bytes;
    if (isLong && (!m_page || m_pageUsed + bytes > pageSize)) {
        m_page = largePage();
        m_pageUsed = 0;
    }
    if (!isLong || !m_page)
        return {new char[size_t(bytes)], std::default_delete<char[]>()};
    m_pageUsed += bytes;
    return {m_page, m_page.get() + m_pageUsed - bytes};
}

bool ChunkMemory::prepare([[maybe_unused]] char *begin, [[maybe_unused]] qint64 bytes)
{
#if defined(MADV_POPULATE_WRITE)
    static const quintptr smallPage = quintptr(sysconf(_SC_PAGESIZE));
    const size_t before = quintptr(begin) % smallPage;
    const size_t whole = (before + size_t(bytes)) / smallPage * smallPage;
    return whole == 0 || madvise(begin - before, whole, MADV_POPULATE_WRITE) == 0;
#else
    return false;
#endif
}
