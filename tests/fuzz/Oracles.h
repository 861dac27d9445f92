// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QVector>

// What each filter makes of a series, written down as it is defined and not as it is fast.

/// What a node holds, and whether it takes a series.
struct SModel
{
    QVector<double> held;
    QRectF area;
    int points = 256;   ///< of the fixed decimators
    int depth = 16;     ///< of the average
    double width = 1.0; ///< of the merger
};

using Oracle = bool (*)(SModel &model, const QVector<double> &series);

bool passThrough(SModel &model, const QVector<double> &series);
bool keepPyramid(SModel &model, const QVector<double> &series);
bool reduceToPoints(SModel &model, const QVector<double> &series);
bool average(SModel &model, const QVector<double> &series);
bool mergeNarrowBins(SModel &model, const QVector<double> &series);
bool sampleBins(SModel &model, const QVector<double> &series);

/// All levels of the pyramid, the series first.
QVector<QVector<double>> pyramid(const QVector<double> &series);
