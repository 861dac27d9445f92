// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

/// A range of bars: from `first` to one before `end`.
struct SBarRange
{
    int first = 0;
    int end = 0;
};

/// The positions of bars of individual widths that follow each other from 0: bar k lies between edge k and edge k + 1,
/// and edge k is the sum of the widths of the bars before k, added in order.
///
/// A value that shares the series and never changes: copies are cheap, any thread may read one.
class BarEdges
{
public:
    BarEdges() = default;

    /// Takes flat pairs (width, value), a last one without partner left out, and calls
    /// visit(rightEdge, value) for each bar on the way.
    template <class Visit>
    static BarEdges of(const QVector<double> &pairs, Visit &&visit);

    int barCount() const { return m_pairs.size() / 2; }
    /// Edge barCount().
    double total() const { return m_total; }

    /// The bars that lie in [left, right]: from the one that contains `left` to the one that contains `right`. What a
    /// scan over all edges finds, and found in logarithmic time unless a width is negative or NaN.
    SBarRange barsBetween(double left, double right) const;

private:
    /// An edge and its position.
    struct Edge
    {
        int index = 0;
        double position = 0.0;
    };

    Edge lastBlockBefore(double x) const;
    Edge firstAtOrBeyond(double x, Edge from) const;

    static constexpr int blockSize = 256; // bars: a scan of one costs about as much as the search for it

    QVector<double> m_pairs;
    QVector<double> m_blockEdges; ///< every blockSize-th edge, from edge 0
    double m_total = 0.0;
    bool m_ascending = true; ///< no edge lies before an earlier one
};

template <class Visit>
BarEdges BarEdges::of(const QVector<double> &pairs, Visit &&visit)
{
    BarEdges edges;
    edges.m_pairs = pairs;
    const int count = edges.barCount();
    edges.m_blockEdges.reserve(count / blockSize + 1);
    const double *pair = pairs.constData();
    double edge = 0.0;
    for (int bar = 0; bar < count; ++bar, pair += 2) {
        if (bar % blockSize == 0)
            edges.m_blockEdges.append(edge);
        const double left = edge;
        edge += pair[0];
        edges.m_ascending &= edge >= left; // false for a NaN
        visit(edge, pair[1]);
    }
    edges.m_total = edge;
    return edges;
}
