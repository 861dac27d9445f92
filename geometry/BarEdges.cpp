// SPDX-License-Identifier: MIT
#include "geometry/BarEdges.h"

#include "common/Cache.h"
#include "common/Maxima.h"
#include "common/Storage.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The share of the way from `first` to `last` at which x lies; 0 for a NaN, too.
double shareOf(double x, double first, double last)
{
    const double share = (x - first) / (last - first);
    return share > 0.0 ? std::min(share, 1.0) : 0.0;
}

/// How many of the ascending edges lie before x, looked for around `guess`: of many, few need to be read.
qint64 countBefore(double x, const QVector<double> &edges, qint64 guess)
{
    const double *const begin = edges.constData();
    const qint64 count = edges.size();
    for (qint64 reach = 2;; reach *= 8) {
        const qint64 first = std::max(guess - reach, qint64(0));
        const qint64 end = std::min(guess + reach, count);
        const bool isBehind = first == 0 || begin[first - 1] < x;
        const bool isBefore = end == count || !(begin[end] < x);
        if (isBehind && isBefore)
            return std::lower_bound(begin + first, begin + end, x) - begin;
    }
}

/// What is known after some bars.
struct SPassed
{
    double position;
    double maximum;
    bool isAscending;
    bool areValuesFinite;
};

SPassed passBars(SPassed passed, const double *pair, int count)
{
    constexpr double largest = std::numeric_limits<float>::max();
    for (const double *const behind = pair + 2 * count; pair != behind; pair += 2) {
        const double right = passed.position + pair[0];
        if (!(right >= passed.position)) // for a NaN, too
            passed.isAscending = false;
        if (!(std::abs(pair[1]) <= largest))
            passed.areValuesFinite = false;
        passed.position = right;
        passed.maximum = pair[1] > passed.maximum ? pair[1] : passed.maximum; // a NaN never is
    }
    return passed;
}

} // namespace

BarEdges BarEdges::of(const QVector<double> &pairs, double start)
{
    BarEdges edges;
    edges.m_pairs = pairs;
    edges.m_start = start;
    const int count = edges.barCount();
    edges.m_edges.reserve(count / edgeStep + 1);
    edges.m_farEdges.reserve(count / (edgeStep * farStep) + 1);
    edges.m_blockMaxima.reserve(count / blockSize + 1);
    edges.m_maximum = count > 0 ? pairs.at(1) : 0.0;
    double position = start;
    for (int bar = 0; bar < count; bar += blockSize)
        position = edges.appendBlock(position, bar, std::min(bar + blockSize, count));
    for (int edge = 0; edge < edges.m_edges.size(); edge += farStep)
        edges.m_farEdges.append(edges.m_edges.at(edge));
    edges.m_total = position;
    return edges;
}

/// Looks at the bars of a block, whose first edge is at `position`, and returns the position of its last.
double BarEdges::appendBlock(double position, int first, int end)
{
    SPassed passed{position, 0.0, m_ascending, m_finite};
    double *edge = extend(m_edges, (end - first + edgeStep - 1) / edgeStep);
    for (int bar = first; bar < end; bar += edgeStep) {
        *edge++ = passed.position;
        passed = passBars(passed, m_pairs.constData() + 2 * bar, std::min(edgeStep, end - bar));
    }
    m_ascending = passed.isAscending;
    m_finite = passed.areValuesFinite;
    m_blockMaxima.append(passed.maximum);
    if (passed.maximum > 0.0)
        m_maximum = passed.maximum > m_maximum ? passed.maximum : m_maximum;
    else if (m_maximum < 0.0)
        raiseMaximum(first, end);
    return passed.position;
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
        begin = lastKeptBefore(left);
    begin = firstAtOrBeyond(left, begin);
    Edge end = begin;
    if (m_ascending) {
        const Edge kept = lastKeptBefore(right);
        if (kept.index > end.index)
            end = kept;
    }
    end = firstAtOrBeyond(right, end);
    return {std::max(begin.index - 1, 0), end.index};
}

BarEdges::Edge BarEdges::lastKeptBefore(double x) const
{
    const qint64 farCount = m_farEdges.size();
    const qint64 before = countBefore(x, m_farEdges, qint64(shareOf(x, m_start, m_total) * double(farCount)));
    if (before == 0)
        return firstEdge();
    const qint64 first = (before - 1) * farStep;
    const qint64 end = std::min(first + farStep, qint64(m_edges.size()));
    const double farEnd = before < farCount ? m_farEdges.at(int(before)) : m_total;
    const double share = shareOf(x, m_farEdges.at(int(before) - 1), farEnd);
    expectBar(qint64((double(first) + share * double(end - first)) * edgeStep));
    const double *const edges = m_edges.constData();
    const qint64 kept = first + std::count_if(edges + first, edges + end, [x](double edge) { return edge < x; }) - 1;
    return {int(kept) * edgeStep, edges[kept]};
}

/// Brings what is likely to be looked at next into the cache while edges are searched: the bars around this one, from
/// the kept edge before them on.
void BarEdges::expectBar(qint64 bar) const
{
    constexpr qint64 doubt = 6;     // bars: widths differ
    constexpr int pairsPerLine = 4; // of the cache
    const double *const pairs = m_pairs.constData();
    const qint64 end = std::min(bar + doubt, qint64(barCount()));
    for (qint64 i = std::max(bar - doubt, qint64(0)) / edgeStep * edgeStep; i < end; i += pairsPerLine)
        expectRead(pairs + 2 * i);
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
    return firstAtOrBeyond(x, m_ascending ? lastKeptBefore(x) : firstEdge()).index;
}

double BarEdges::edge(int index) const
{
    const int kept = std::min(index / edgeStep, int(m_edges.size()) - 1);
    if (kept < 0)
        return m_start;
    double position = m_edges.at(kept);
    for (int bar = kept * edgeStep; bar < index; ++bar)
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
