// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

/// Builds the levels above levels[0], which holds at least one value, down to a level of one value: each is the bucket
/// maxima (see Buckets.h) of the one below it, which has `factor` times as many values. `factor` is 2 or more.
///
/// Storage of the levels that is large enough and not shared is used again. At factor 2 the values are read once: all
/// levels grow together. Over storage that is used again they grow in several parts, by threads that help (see
/// HelperThreads); `parts` are as many as the series is worth when 0.
void buildPyramid(QVector<QVector<double>> &levels, double factor, int parts = 0);

/// Makes room for the levels above levels[0]: as many vectors as buildPyramid() leaves. Keeps what they hold.
void resizePyramid(QVector<QVector<double>> &levels, double factor);

/// How many parts a series is worth that threads work on. Many small ones: a thread that comes late, or has to share
/// its processor, takes fewer of them.
int partsFor(int seriesSize);
