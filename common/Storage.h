// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

// Filling long vectors: without a copy, without zeros that are overwritten, in portions. Filling one in portions writes
// every page once while it is in the cache; resizing the whole of it would be a pass of its own.

/// Values that stay in the first-level cache, in two or three series at once: the portion in which long work is done.
constexpr int seriesPortion = 1024;

/// Empties `storage` and reserves `capacity` elements. What is there is kept when it is large enough and not shared.
template <class T>
void restart(QVector<T> &storage, int capacity)
{
    if (storage.isDetached() && storage.capacity() >= capacity) {
        storage.resize(0);
        return;
    }
    storage = QVector<T>(); // frees the old storage before the new one is made
    storage.reserve(capacity);
}

/// Makes `storage` ready to be overwritten up to `size` elements: keeps it when it is large enough and not shared,
/// otherwise replaces it without copying. Elements beyond `size` go.
template <class T>
void prepare(QVector<T> &storage, int size)
{
    if (!storage.isDetached() || storage.capacity() < size) {
        storage = QVector<T>(); // frees the old storage before the new one is made
        storage.reserve(size);
    } else if (storage.size() > size) {
        storage.resize(size);
    }
}

/// Where to write `count` elements from `begin` on, in order, after prepare(). What is not there yet is appended.
template <class T>
T *portionAt(QVector<T> &storage, int begin, int count)
{
    if (storage.size() < begin + count)
        storage.resize(begin + count);
    return storage.data() + begin;
}

/// Appends `count` zeros and returns where they begin. Within the reserved capacity nothing moves.
template <class T>
T *extend(QVector<T> &storage, int count)
{
    return portionAt(storage, storage.size(), count);
}
