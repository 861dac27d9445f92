// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

/// Builds the levels above levels[0], which holds at least one value, down to a level of one value: each is the bucket
/// maxima (see Buckets.h) of the one below it, which has `factor` times as many values. `factor` is 2 or more.
///
/// Storage of the levels that is large enough and not shared is used again. At factor 2 the values are read once: all
/// levels grow together, portion by portion, while what they need is in the cache, and over storage that is used again
/// in several parts by as many threads, which have ended on return. `parts` are as many as the machine and the series
/// are worth when 0.
void buildPyramid(QVector<QVector<double>> &levels, double factor, int parts = 0);
