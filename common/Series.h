// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

// Long series of numbers. Nothing here copies the values of a shared vector.

/// The most values that a series can hold: the storage of a QVector is limited to 2 GiB.
constexpr int longestSeries = (1 << 28) - 16;

/// Values that stay in the first-level cache, in two or three series at once: the portion in which long work is done.
constexpr int seriesPortion = 1024;

/// True when both have the same storage, or the same length and every pair equal under `==`.
/// A NaN is equal to nothing, so a series that holds one equals only its own storage.
bool sameSeries(const QVector<double> &a, const QVector<double> &b);

/// Empties `series` and reserves `capacity` elements. The storage is kept when it is large enough and not shared.
template <class T>
void restart(QVector<T> &series, int capacity)
{
    if (series.isDetached() && series.capacity() >= capacity) {
        series.resize(0);
        return;
    }
    series = QVector<T>(); // frees the old storage before the new one is made
    series.reserve(capacity);
}

/// Appends `count` zeros and returns where they begin. Within the reserved capacity nothing moves. Filling a series in
/// portions writes every page once while it is in the cache; resizing the whole of it would be a pass of its own.
double *extend(QVector<double> &series, int count);

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

/// Where to write `count` elements from `begin` on, in order, after prepare(). What is not there yet is appended, for
/// the same reason as in extend().
template <class T>
T *portionAt(QVector<T> &storage, int begin, int count)
{
    if (storage.size() < begin + count)
        storage.resize(begin + count);
    return storage.data() + begin;
}

/// Whether each of `count` values is finite in single precision.
bool finiteInSingle(const double *values, int count);

// Largest values. A value replaces the maximum only when it is strictly greater, so a NaN never does.

/// The largest of `count` values and 0.0.
double maximumFromZero(const double *values, int count);

/// The first of the largest of `count` values, 0.0 for none. A NaN in front stays, because nothing is greater.
double firstMaximum(const double *values, int count);

/// maxima[i] = the largest of values[2i], values[2i + 1] and 0.0, for `count` pairs.
void pairMaxima(const double *values, int count, double *maxima);
