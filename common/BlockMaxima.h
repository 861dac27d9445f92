// SPDX-License-Identifier: MIT
#pragma once

#include "common/Maxima.h"
#include "common/Storage.h"

#include <QVector>

#include <algorithm>

/// The largest values of the blocks of a series: "the largest of these million" without reading a million values.
///
/// A value that shares the series and never changes: copies are cheap. It answers for that series only; isOf() tells.
class BlockMaxima
{
public:
    BlockMaxima() = default;

    static BlockMaxima of(const QVector<double> &series);
    /// Calls visit(start, count) for each block of the series on the way, when its values are about to be read.
    template <class Visit>
    static BlockMaxima of(const QVector<double> &series, Visit &&visit);

    /// Whether this was made of `series`, or of one that shares its storage.
    bool isOf(const QVector<double> &series) const
    {
        return m_series.constData() == series.constData() && m_series.size() == series.size();
    }

    /// The largest value of the series and 0.0.
    double maximum() const { return maximumFromZero(m_maxima.constData(), m_maxima.size()); }
    /// The largest of the values from `first` to one before `end` and 0.0; both within the series. As
    /// maximumFromZero() finds it: the order of comparisons cannot be seen in its result.
    double maximumIn(int first, int end) const;

private:
    static constexpr int blockSize = seriesPortion;

    QVector<double> m_series; ///< keeps the storage, so that no other series can be at the same place
    QVector<double> m_maxima;
};

template <class Visit>
BlockMaxima BlockMaxima::of(const QVector<double> &series, Visit &&visit)
{
    BlockMaxima made;
    made.m_series = series;
    made.m_maxima.reserve((series.size() + blockSize - 1) / blockSize);
    for (int start = 0; start < series.size(); start += blockSize) {
        const int count = std::min(blockSize, int(series.size()) - start);
        visit(start, count);
        made.m_maxima.append(maximumFromZero(series.constData() + start, count));
    }
    return made;
}
