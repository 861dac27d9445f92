// SPDX-License-Identifier: MIT
#include "plotters/BarEdges.h"

#include <algorithm>

SBarRange BarEdges::barsBetween(double left, double right) const
{
    Edge begin;
    if (m_ascending)
        begin = lastBlockBefore(left);
    begin = firstAtOrBeyond(left, begin);
    Edge end = begin;
    if (m_ascending) {
        const Edge block = lastBlockBefore(right);
        if (block.index > end.index)
            end = block;
    }
    end = firstAtOrBeyond(right, end);
    return {std::max(begin.index - 1, 0), end.index};
}

BarEdges::Edge BarEdges::lastBlockBefore(double x) const
{
    const auto beyond = std::lower_bound(m_blockEdges.cbegin(), m_blockEdges.cend(), x);
    if (beyond == m_blockEdges.cbegin())
        return {};
    const int block = int(beyond - m_blockEdges.cbegin()) - 1;
    return {block * blockSize, m_blockEdges.at(block)};
}

BarEdges::Edge BarEdges::firstAtOrBeyond(double x, Edge from) const
{
    const double *width = m_pairs.constData() + 2 * from.index;
    const int count = barCount();
    for (; x > from.position && from.index < count; ++from.index, width += 2)
        from.position += *width;
    return from;
}
