// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SIndexRange.h"

#include <QVector>

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

    /// Whether this was made of `pairs`, or of a series that shares its storage, and `start`.
    bool isOf(const QVector<double> &pairs, double start) const
    {
        return m_pairs.constData() == pairs.constData() && m_pairs.size() == pairs.size() && m_start == start;
    }

    const QVector<double> &pairs() const { return m_pairs; }
    int barCount() const { return m_pairs.size() / 2; }
    /// Whether no edge lies before an earlier one, and none is a NaN.
    bool isAscending() const { return m_ascending; }
    /// Edge barCount().
    double total() const { return m_total; }
    /// Whether every value is, in single precision.
    bool areValuesFinite() const { return m_finite; }
    /// The largest value, beginning with that of the first bar; a NaN there stays. 0.0 without bars.
    double maximum() const { return m_maximum; }
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
    Edge lastKeptBefore(double x) const;
    void expectBar(qint64 bar) const;
    Edge firstAtOrBeyond(double x, Edge from) const;
    double scannedMaximum(int first, int end) const;
    double appendBlock(double position, int first, int end);
    void raiseMaximum(int first, int end);

    static constexpr int edgeStep = 16;   // bars: a scan of so many costs less than the search for one of them
    static constexpr int farStep = 8;     // kept edges: what lies in a line or two of a cache
    static constexpr int blockSize = 128; // bars

    QVector<double> m_pairs;
    QVector<double> m_edges;       ///< every edgeStep-th edge, from edge 0
    QVector<double> m_farEdges;    ///< every farStep-th of those: of millions of bars, what a cache holds
    QVector<double> m_blockMaxima; ///< the largest value of each block and 0.0
    double m_start = 0.0;
    double m_total = 0.0;
    double m_maximum = 0.0;
    bool m_ascending = true; ///< no edge lies before an earlier one
    bool m_finite = true;
};
