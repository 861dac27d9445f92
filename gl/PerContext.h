// SPDX-License-Identifier: MIT
#pragma once

#include <QMutex>
#include <QMutexLocker>
#include <QOpenGLContext>

#include <memory>
#include <unordered_map>

/// One T for every OpenGL context that asked for one. A T is made, used and destroyed on its context's render thread
/// and goes when the context goes; only the table is shared between threads.
///
/// A static one is made by `new` and never destroyed: a render thread may outlive main().
template <class T>
class PerContext
{
public:
    /// The current context's T, null before current() was called in it.
    T *find() const
    {
        const QMutexLocker lock(&m_table->mutex);
        const auto found = m_table->entries.find(QOpenGLContext::currentContext());
        return found == m_table->entries.end() ? nullptr : found->second.get();
    }

    /// The current context's T, made now if there is none.
    T &current()
    {
        if (T *existing = find())
            return *existing;
        QOpenGLContext *context = QOpenGLContext::currentContext();
        Q_ASSERT(context);
        auto created = std::make_unique<T>();
        T &result = *created;
        {
            const QMutexLocker lock(&m_table->mutex);
            m_table->entries[context] = std::move(created);
        }
        QObject::connect(
            context, &QOpenGLContext::aboutToBeDestroyed, context,
            [table = std::weak_ptr<Table>(m_table), context] { drop(table, context); }, Qt::DirectConnection);
        return result;
    }

private:
    struct Table
    {
        QMutex mutex;
        std::unordered_map<const QOpenGLContext *, std::unique_ptr<T>> entries;
    };

    static void drop(const std::weak_ptr<Table> &weakTable, const QOpenGLContext *context)
    {
        const std::shared_ptr<Table> table = weakTable.lock();
        if (!table)
            return;
        std::unique_ptr<T> gone; // destroyed outside the lock
        const QMutexLocker lock(&table->mutex);
        const auto found = table->entries.find(context);
        if (found == table->entries.end())
            return;
        gone = std::move(found->second);
        table->entries.erase(found);
    }

    std::shared_ptr<Table> m_table = std::make_shared<Table>();
};
