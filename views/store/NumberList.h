// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesData.h"

#include <QString>
#include <QVariant>
#include <QVector>

#include <memory>

// Series from what QML hands over.

/// Numbers, or why they are none.
struct SNumbers
{
    QVector<double> values; ///< shares the storage where it was one already
    QString error;          ///< empty if all is well; else `values` is empty
};

/// What stands for numbers in QML: a list, a QVector<double>, an ArrayBuffer of doubles or a single number. null and
/// undefined among the entries of a list are gaps; on their own they are no values. A typed array isn't taken, because
/// what arrives here has lost its values' type; its `buffer` is.
SNumbers numbersIn(const QVariant &values);

/// A series over numbers, which aren't copied.
std::shared_ptr<SeriesData> seriesOver(const QVector<double> &numbers);

/// undefined or null.
bool isNothing(const QVariant &value);
