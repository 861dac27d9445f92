// SPDX-License-Identifier: MIT
#include "views/items/FileJobs.h"

#include <QMetaObject>

#include <utility>

FileJobs::~FileJobs()
{
    m_isGivenUp = true;
    for (std::thread &thread : m_threads)
        thread.join();
}

void FileJobs::start(const QString &file, Write write)
{
    const auto thread = m_threads.emplace(m_threads.end());
    *thread = std::thread([this, thread, file, write = std::move(write)] {
        const QString error = write(m_isGivenUp);
        QMetaObject::invokeMethod(
            this,
            [this, thread, file, error] {
                thread->join();
                m_threads.erase(thread);
                emit finished(file, error);
            },
            Qt::QueuedConnection);
    });
}
