// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SIndexRange.h"

#include <QVector>

#include <algorithm>

/// The positions of bars of individual widths that follow each other: bar k lies between edge k and edge k + 1, and
/// edge k is the position of edge 0 and the widths of the bars before k, added in order.
///
/// A value that shares the series and never changes: copies are cheap, any thread may read one.
class BarEdges
{
public:
    BarEdges() = default;

    /// Takes flat pairs (width, value), a last one without partner left out, and the position of edge 0.
    static BarEdges of(const QVector<double> &pairs, double start);
    /// Calls visit(bar, count, edges) on the way: for `count` bars from number `bar` on, with their count + 1 edges.
    template <class Visit>
    static BarEdges of(const QVector<double> &pairs, double start, Visit &&visit);

    /// Whether this was made of `pairs`, or of a series that shares its storage, and `start`.
    bool isOf(const QVector<double> &pairs, double start) const
    {
        return m_pairs.constData() == pairs.constData() && m_pairs.size() == pairs.size() && m_start == start;
    }

    int barCount() const { return m_pairs.size() / 2; }
    /// Whether no edge lies before an earlier one, and none is a NaN.
    bool isAscending() const { return m_ascending; }
    /// Edge barCount().
    double total() const { return m_total; }
    /// Edge `index`, at most barCount().
    double edge(int index) const;

    /// The bars that lie in [left, right]: from the one that contains `left` to the one that contains `right`. What a
    /// scan over all edges finds, and found in logarithmic time unless a width is negative or NaN.
    SIndexRange barsBetween(double left, double right) const;
    /// The first edge that does not lie before x, barCount() if all do. Found as fast.
    int edgeAtOrBeyond(double x) const;
    /// The largest value of the bars from `first` to one before `end`, and 0.0.
    double maximumIn(int first, int end) const;

private:
    /// An edge and its position.
    struct Edge
    {
        int index = 0;
        double position = 0.0;
    };

    Edge firstEdge() const { return {0, m_start}; }
    Edge lastBlockBefore(double x) const;
    Edge firstAtOrBeyond(double x, Edge from) const;
    double scannedMaximum(int first, int end) const;

    static constexpr int blockSize = 256; // bars: a scan of one costs about as much as the search for it

    QVector<double> m_pairs;
    QVector<double> m_blockEdges;  ///< every blockSize-th edge, from edge 0
    QVector<double> m_blockMaxima; ///< the largest value of each block and 0.0
    double m_start = 0.0;
    double m_total = 0.0;
    bool m_ascending = true; ///< no edge lies before an earlier one
};

template <class Visit>
BarEdges BarEdges::of(const QVector<double> &pairs, double start, Visit &&visit)
{
    BarEdges edges;
    edges.m_pairs = pairs;
    edges.m_start = start;
    const int count = edges.barCount();
    edges.m_blockEdges.reserve(count / blockSize + 1);
    edges.m_blockMaxima.reserve(count / blockSize + 1);
    double blockOfEdges[blockSize + 1];
    blockOfEdges[0] = start;
    bool ascending = true;
    for (int bar = 0; bar < count; bar += blockSize) {
        const double *pair = pairs.constData() + 2 * bar;
        const int inBlock = std::min(blockSize, count - bar);
        edges.m_blockEdges.append(blockOfEdges[0]);
        double maximum = 0.0;
        for (int i = 0; i < inBlock; ++i, pair += 2) {
            blockOfEdges[i + 1] = blockOfEdges[i] + pair[0];
            ascending &= blockOfEdges[i + 1] >= blockOfEdges[i]; // false for a NaN
            maximum = pair[1] > maximum ? pair[1] : maximum;     // a NaN never is
        }
        edges.m_blockMaxima.append(maximum);
        visit(bar, inBlock, blockOfEdges);
        blockOfEdges[0] = blockOfEdges[inBlock];
    }
    edges.m_total = blockOfEdges[0];
    edges.m_ascending = ascending;
    return edges;
}
