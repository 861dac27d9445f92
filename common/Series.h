// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

// Long series of numbers. Nothing here detaches a shared vector.

/// True when both have the same storage, or the same length and every pair equal under `==`.
/// A NaN is equal to nothing, so a series that holds one equals only its own storage.
bool sameSeries(const QVector<double> &a, const QVector<double> &b);

/// The largest of `count` values and 0.0; a value replaces the maximum only when strictly greater, so a NaN never does.
double maximumFromZero(const double *values, int count);
