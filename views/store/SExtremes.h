// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <limits>

/// The lowest and the highest of some values, gaps left out. It begins empty: with the highest below the lowest.
struct SExtremes
{
    double lowest = std::numeric_limits<double>::max();
    double highest = std::numeric_limits<double>::lowest();
    bool hasGap = false;    ///< a value among them is NaN or infinite
    bool isSampled = false; ///< not all of them were looked at yet: the true extremes may lie further out

    bool isEmpty() const { return highest < lowest; }
    void include(double low, double high)
    {
        lowest = std::min(lowest, low);
        highest = std::max(highest, high);
    }
    void include(const SExtremes &other)
    {
        include(other.lowest, other.highest);
        hasGap |= other.hasGap;
        isSampled |= other.isSampled;
    }
};

/// Where the extremes of some values are: the first index of each, -1 if there is no value.
struct SExtremePlaces
{
    qint64 lowestAt = -1;
    qint64 highestAt = -1;
};
