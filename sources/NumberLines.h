// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

class QIODevice;

/// One value per line of an open text device, in order; 0.0 for a line that QString::toDouble() does not take.
/// A last line without a line end counts.
QVector<double> readNumberLines(QIODevice &device);
