// SPDX-License-Identifier: MIT
#include "views/reading/MappedFile.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <mutex>

#include <sys/mman.h>
#include <unistd.h>

namespace {

/// What the handler knows of a mapped file. It may take no lock, so all of it is atomic.
struct SGuard
{
    std::atomic<quintptr> begin{0}; ///< 0: it guards nothing
    std::atomic<quintptr> size{0};
    std::atomic<qint64> tornFrom{-1};
};

std::mutex guardsInUse; // of those who map and unmap
SGuard guards[MappedFile::mostFiles];
int guardCount = 0;
bool isInstalled = false;
struct sigaction before; // what SIGBUS did

quintptr pageSize()
{
    static const auto size = quintptr(sysconf(_SC_PAGESIZE));
    return size;
}

/// Puts zeros from the page of this address to the end of the file it belongs to. False if it belongs to none.
bool mend(quintptr address)
{
    for (SGuard &guard : guards) {
        const quintptr begin = guard.begin.load(std::memory_order_acquire);
        const quintptr size = guard.size.load(std::memory_order_relaxed);
        if (begin == 0 || address < begin || address - begin >= size)
            continue;
        const quintptr inside = (address - begin) / pageSize() * pageSize();
        void *const zeros = mmap(reinterpret_cast<void *>(begin + inside), size - inside, PROT_READ,
                                 MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED | MAP_NORESERVE, -1, 0);
        qint64 known = guard.tornFrom;
        while ((known < 0 || qint64(inside) < known) && !guard.tornFrom.compare_exchange_weak(known, qint64(inside))) {}
        return zeros != MAP_FAILED;
    }
    return false;
}

/// Does what would have been done without us.
void passOn(int signal, siginfo_t *info, void *context)
{
    if (before.sa_flags & SA_SIGINFO)
        return before.sa_sigaction(signal, info, context);
    if (before.sa_handler != SIG_DFL && before.sa_handler != SIG_IGN)
        return before.sa_handler(signal);
    const bool isSent = info->si_code <= 0; // by a process; a fault can't be ignored
    if (isSent && before.sa_handler == SIG_IGN)
        return;
    std::signal(signal, SIG_DFL);
    if (isSent)
        raise(signal); // otherwise what failed is tried again, and fails again
}

void onBusError(int signal, siginfo_t *info, void *context)
{
    const int error = errno;
    const bool isMended = info->si_code == BUS_ADRERR && mend(quintptr(info->si_addr));
    errno = error;
    if (!isMended)
        passOn(signal, info, context);
}

bool install()
{
    if (isInstalled)
        return true;
    struct sigaction ours = {};
    ours.sa_sigaction = onBusError;
    ours.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&ours.sa_mask);
    pageSize();
    isInstalled = sigaction(SIGBUS, nullptr, &before) == 0 && sigaction(SIGBUS, &ours, nullptr) == 0;
    return isInstalled;
}

/// Puts back what was there, unless another handler came on top, which may call ours.
void uninstall()
{
    struct sigaction now = {};
    if (sigaction(SIGBUS, nullptr, &now) == 0 && (now.sa_flags & SA_SIGINFO) && now.sa_sigaction == onBusError)
        isInstalled = sigaction(SIGBUS, &before, nullptr) != 0;
}

/// The number of a guard that is free; -1 if there is none.
int freeGuard()
{
    for (int i = 0; i < MappedFile::mostFiles; ++i) {
        if (guards[i].begin == 0)
            return i;
    }
    return -1;
}

} // namespace

std::shared_ptr<const MappedFile> MappedFile::map(int descriptor, qint64 size)
{
    const std::lock_guard lock(guardsInUse);
    const int number = freeGuard();
    if (number < 0 || size < 1 || !install())
        return nullptr;
    void *const mapped = mmap(nullptr, size_t(size), PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (mapped == MAP_FAILED) {
        if (guardCount == 0)
            uninstall();
        return nullptr;
    }
    madvise(mapped, size_t(size), MADV_RANDOM); // a frame looks here and there
    guards[number].tornFrom = -1;
    guards[number].size.store(quintptr(size), std::memory_order_relaxed);
    guards[number].begin.store(quintptr(mapped), std::memory_order_release);
    ++guardCount;
    return std::shared_ptr<const MappedFile>(new MappedFile(static_cast<char *>(mapped), size, number));
}

MappedFile::~MappedFile()
{
    const std::lock_guard lock(guardsInUse);
    guards[m_guard].begin = 0;
    munmap(m_begin, size_t(m_size));
    if (--guardCount == 0)
        uninstall();
}

qint64 MappedFile::tornFrom() const
{
    return guards[m_guard].tornFrom;
}
