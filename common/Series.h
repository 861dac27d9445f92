// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

// Long series of numbers as a whole. Nothing here copies the values of a shared vector. Thread-safe.

/// The most values that a series can hold: the storage of a QVector is limited to 2 GiB.
constexpr int longestSeries = (1 << 28) - 16;

/// True when both have the same storage, or the same length and every pair equal under `==`.
/// A NaN is equal to nothing, so a series that holds one equals only its own storage.
bool sameSeries(const QVector<double> &a, const QVector<double> &b);

/// Whether each of `count` values is finite in single precision.
bool finiteInSingle(const double *values, int count);
