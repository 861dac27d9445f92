// SPDX-License-Identifier: MIT
#include "geometry/BarEdges.h"

#include "common/Maxima.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// What std::lower_bound() finds among ascending edges, looked for around the place that x would have were they evenly
/// spaced: of millions of bars, few edges need to be read.
const double *lowerBound(const QVector<double> &edges, double x)
{
    const double *const begin = edges.constData();
    const qint64 count = edges.size();
    if (count == 0)
        return begin;
    const double share = (x - begin[0]) / (begin[count - 1] - begin[0]);
    const qint64 guess = share > 0.0 ? qint64(std::min(share, 1.0) * double(count - 1)) : 0; // 0 for a NaN, too
    for (qint64 reach = 32;; reach *= 8) {
        const qint64 first = std::max(guess - reach, qint64(0));
        const qint64 end = std::min(guess + reach, count);
        const bool isBehind = first == 0 || begin[first - 1] < x;
        const bool isBefore = end == count || !(begin[end] < x);
        if (isBehind && isBefore)
            return std::lower_bound(begin + first, begin + end, x);
    }
}

} // namespace

BarEdges BarEdges::of(const QVector<double> &pairs, double start)
{
    BarEdges edges;
    edges.m_pairs = pairs;
    edges.m_start = start;
    const int count = edges.barCount();
    edges.m_blockEdges.reserve(count / blockSize + 1);
    edges.m_blockMaxima.reserve(count / blockSize + 1);
    edges.m_maximum = count > 0 ? pairs.at(1) : 0.0;
    double position = start;
    for (int bar = 0; bar < count; bar += blockSize)
        position = edges.appendBlock(position, bar, std::min(bar + blockSize, count));
    edges.m_total = position;
    return edges;
}

/// Looks at the bars of a block, whose first edge is at `position`, and returns the position of its last.
double BarEdges::appendBlock(double position, int first, int end)
{
    constexpr double largest = std::numeric_limits<float>::max();
    const double *pair = m_pairs.constData() + 2 * first;
    const double *const behind = m_pairs.constData() + 2 * end;
    m_blockEdges.append(position);
    double maximum = 0.0;
    for (; pair != behind; pair += 2) {
        const double right = position + pair[0];
        if (!(right >= position)) // for a NaN, too
            m_ascending = false;
        if (!(std::abs(pair[1]) <= largest))
            m_finite = false;
        position = right;
        maximum = pair[1] > maximum ? pair[1] : maximum; // a NaN never is
    }
    m_blockMaxima.append(maximum);
    if (maximum > 0.0)
        m_maximum = maximum > m_maximum ? maximum : m_maximum;
    else if (m_maximum < 0.0)
        raiseMaximum(first, end);
    return position;
}

/// Where no value is positive, in a block or before it.
void BarEdges::raiseMaximum(int first, int end)
{
    for (int bar = first; bar < end; ++bar) {
        const double value = m_pairs.at(2 * bar + 1);
        m_maximum = value > m_maximum ? value : m_maximum;
    }
}

SIndexRange BarEdges::barsBetween(double left, double right) const
{
    Edge begin = firstEdge();
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
    const double *const beyond = lowerBound(m_blockEdges, x);
    if (beyond == m_blockEdges.constData())
        return firstEdge();
    const int block = int(beyond - m_blockEdges.constData()) - 1;
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

int BarEdges::edgeAtOrBeyond(double x) const
{
    return firstAtOrBeyond(x, m_ascending ? lastBlockBefore(x) : firstEdge()).index;
}

double BarEdges::edge(int index) const
{
    const int block = std::min(index / blockSize, int(m_blockEdges.size()) - 1);
    if (block < 0)
        return m_start;
    double position = m_blockEdges.at(block);
    for (int bar = block * blockSize; bar < index; ++bar)
        position += m_pairs.at(2 * bar);
    return position;
}

double BarEdges::maximumIn(int first, int end) const
{
    const int firstBlock = (first + blockSize - 1) / blockSize;
    const int endBlock = end / blockSize;
    if (firstBlock >= endBlock)
        return scannedMaximum(first, end);
    const double before = scannedMaximum(first, firstBlock * blockSize);
    const double within = maximumFromZero(m_blockMaxima.constData() + firstBlock, endBlock - firstBlock);
    const double behind = scannedMaximum(endBlock * blockSize, end);
    return std::max({before, within, behind}); // none is a NaN, and no zero is negative
}

double BarEdges::scannedMaximum(int first, int end) const
{
    double maximum = 0.0;
    for (int bar = first; bar < end; ++bar) {
        if (m_pairs.at(2 * bar + 1) > maximum)
            maximum = m_pairs.at(2 * bar + 1);
    }
    return maximum;
}
