// SPDX-License-Identifier: MIT

// Part of every test program of a build with sanitizers: tells them what they cannot see by themselves.

#include <QMutex>

#include <dlfcn.h>

// A report names the library of a frame only while the library is loaded, and drivers are unloaded at the end.
extern "C" int dlclose(void *) noexcept
{
    return 0;
}

#if defined(__SANITIZE_THREAD__)

extern "C" void __tsan_acquire(void *address);
extern "C" void __tsan_release(void *address);

// Qt is not built with the thread sanitizer, and its mutexes use the kernel directly: without these, who locks one
// would not be ordered behind who unlocked it. The real functions do the work.

namespace {

template <class Function>
Function real(const char *symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

} // namespace

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto work = real<void (*)(QMutex *)>("_ZN6QMutex4lockEv");
    work(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto work = real<bool (*)(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = work(this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto work = real<void (*)(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    work(this);
}

#endif
