// SPDX-License-Identifier: MIT
#pragma once

#include "common/Export.h"

#include <QtGlobal>

/// What is known about some values taken together, gaps left out. Parts of a series are joined without ever looking at
/// a sum of squares, in which a small deviation of large values would drown.
struct VORLIX_EXPORT SStatistics
{
    qint64 count = 0;         ///< finite values
    qint64 positiveCount = 0; ///< those above zero: what a logarithmic axis can show
    double sum = 0.0;         ///< infinite if it lies beyond the range of double
    double mean = 0.0;        ///< 0 if there is no value
    double m2 = 0.0;          ///< the sum of (value - mean)²; infinite if it lies beyond the range of double
    bool isPartial = false;   ///< some values weren't looked at yet and are not in it

    void include(const SStatistics &other);
    /// The root of the mean square distance from the mean; 0 if there is no value.
    double deviation() const;
};
