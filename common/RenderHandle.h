// SPDX-License-Identifier: MIT
#pragma once

#include <QMutex>
#include <QMutexLocker>

#include <memory>

/// The render thread's way to an object that lives, and may die, on the GUI thread.
///
/// The object owns a std::shared_ptr to its handle and calls revoke() first thing in its most derived destructor;
/// render-side code keeps a copy of the shared_ptr and reaches the object through use() only. Thread-safe.
/// Nothing that runs inside use() emits a signal or takes the handle again.
template <class T>
class RenderHandle
{
public:
    explicit RenderHandle(T *object) : m_object(object) {}

    /// Calls work(object) unless the object is gone; a revoke() meanwhile waits until it returns.
    template <class Work>
    void use(Work &&work)
    {
        const QMutexLocker lock(&m_mutex);
        if (m_object)
            work(*m_object);
    }

    /// Waits for a use() in progress; none begins after it.
    void revoke()
    {
        const QMutexLocker lock(&m_mutex);
        m_object = nullptr;
    }

private:
    QMutex m_mutex;
    T *m_object;
};
