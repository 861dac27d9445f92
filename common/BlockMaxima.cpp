// SPDX-License-Identifier: MIT
#include "common/BlockMaxima.h"

BlockMaxima BlockMaxima::of(const QVector<double> &series)
{
    return of(series, [](int, int) {});
}

double BlockMaxima::maximumIn(int first, int end) const
{
    const double *values = m_series.constData();
    const int firstBlock = (first + blockSize - 1) / blockSize;
    const int endBlock = end / blockSize;
    if (firstBlock >= endBlock)
        return maximumFromZero(values + first, end - first);
    const double before = maximumFromZero(values + first, firstBlock * blockSize - first);
    const double within = maximumFromZero(m_maxima.constData() + firstBlock, endBlock - firstBlock);
    const double behind = maximumFromZero(values + endBlock * blockSize, end - endBlock * blockSize);
    return std::max({before, within, behind}); // none is a NaN, and no zero is negative
}
