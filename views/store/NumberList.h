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

/// A number, a list of numbers, a QVector<double> or an ArrayBuffer of doubles. null and undefined among the entries of
/// a list are gaps; undefined on its own is no values.
SNumbers numbersIn(const QVariant &values);

/// A series over numbers, which aren't copied.
std::shared_ptr<SeriesData> seriesOver(const QVector<double> &numbers);
