// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

/// Appends the first `size` running averages of `input`, which is not empty, over `depth` values to `averages`. The sum
/// is carried from each to the next, in the order and with the rounding that this gives.
void appendAverages(const QVector<double> &input, int depth, int size, QVector<double> &averages);
