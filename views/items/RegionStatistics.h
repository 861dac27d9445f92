// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/SeriesProbe.h"

/// What a region tells of one series.
struct SRegionStatistics
{
    double count = 0.0; ///< finite values
    double sum = 0.0;
    double mean = std::numeric_limits<double>::quiet_NaN();
    double deviation = std::numeric_limits<double>::quiet_NaN();
    double minimum = std::numeric_limits<double>::quiet_NaN();
    double maximum = std::numeric_limits<double>::quiet_NaN();
    double minimumAt = std::numeric_limits<double>::quiet_NaN(); ///< x of the first lowest value
    double maximumAt = std::numeric_limits<double>::quiet_NaN();
    double centroid = std::numeric_limits<double>::quiet_NaN();  ///< the mean of x, weighted by the values
    double peakWidth = std::numeric_limits<double>::quiet_NaN(); ///< half way up from the line between the ends

    bool isValid() const { return count > 0.0; }
};

/// The values of a series that stand at from <= x < to.
class RegionPart
{
public:
    RegionPart(const SeriesProbe &probe, double from, double to);

    /// Whether both are the same values, all of them looked at: a series may have grown elsewhere.
    bool isSame(const RegionPart &other) const;
    /// The centroid of more than 65536 values takes values in groups, 16384 in all: it is right to a sixteen-thousandth
    /// of the width. It's NaN where the values add up to nothing, or to less.
    SRegionStatistics statistics() const;

private:
    double centroid() const;
    double peakWidth() const;
    double aboveLine(qint64 index) const;
    double halfHeightAt(qint64 top, double half, int direction) const;

    SeriesProbe m_probe;
    double m_from;
    qint64 m_first = 0;
    qint64 m_end = 0;
};
