// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesStore.h"

#include <QString>

#include <atomic>
#include <memory>
#include <thread>

struct Mapping;

/// A long series of floats: a wave with noise and a glitch now and then.
class Recording
{
public:
    /// In memory; a thread appends a value each millisecond.
    explicit Recording(qint64 count);
    /// In a file in `folder` that's mapped, and deleted already. It can't grow. With `isCold` the system forgets the
    /// file's pages, too, each time it's opened.
    Recording(qint64 count, const QString &folder, bool isCold);
    ~Recording();

    SeriesStore &store() { return m_store; }
    qint64 count() const { return m_count; } ///< at first
    bool isGrowing() const { return m_isGrowing; }
    /// Forgets a mapped series. Nothing may show it. It takes a while if the system forgets the file, too.
    void close();
    /// Opens it anew.
    void open();
    QString name() const;

private:
    void grow();

    const qint64 m_count;
    SeriesStore m_store;
    const bool m_isCold = false;
    std::shared_ptr<const Mapping> m_mapping; ///< null if it isn't mapped
    std::atomic<bool> m_isGrowing{false};
    std::thread m_device;
};
