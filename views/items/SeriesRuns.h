// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/RowScale.h"
#include "views/items/SeriesPlaces.h"

#include <array>

/// A run of values without a gap between them: indices [from, to), their lowest and highest.
struct SRun
{
    qint64 from = 0;
    qint64 to = 0;
    double lowest = 0.0;
    double highest = 0.0;
};

/// Finds the runs between the gaps of a series. A gap is a value that isn't finite, one whose place doesn't ascend, and
/// on a log scale one of 0 and below. What has no gap isn't looked at value by value. For one frame, one thread.
class SeriesRuns
{
public:
    SeriesRuns(const SeriesSnapshot &values, const SeriesPlaces &places, const RowScale &rows);

    /// The value if it can be shown, else NaN.
    double valueAt(qint64 index) const;

    /// Calls take(run) for the runs in [from, to), in order. Once there were so many gaps in this frame that it would
    /// take too long, what is left counts as a run from the first to the last value.
    template <class Take>
    void visit(qint64 from, qint64 to, Take &&take)
    {
        visit(from, to, take, [](double, double) { return false; });
    }
    /// The same. Where isKnown(lowest, highest) is true of the values of a part that has gaps, it doesn't matter what
    /// runs these values form: only the first and the last of them are taken, with what they're joined to outside.
    template <class Take, class IsKnown>
    void visit(qint64 from, qint64 to, Take &&take, IsKnown &&isKnown)
    {
        m_open = SRun();
        visitPart(from, to, take, isKnown);
        close(take);
    }

private:
    static constexpr int leafSize = 128;
    static constexpr int mostLeaves = 100'000; ///< some 20 ms; with a gap at every other value, tenths of a second

    bool isClean(qint64 from, qint64 to, const SExtremes &extremes) const
    {
        return !extremes.hasGap && (!m_rows.isLog() || extremes.lowest > 0.0) && !m_places.hasMisplaced(from, to);
    }
    bool hasNothing(const SExtremes &extremes) const
    {
        return extremes.isEmpty() || (m_rows.isLog() && !(extremes.highest > 0.0));
    }

    template <class Take, class IsKnown>
    void visitPart(qint64 from, qint64 to, Take &take, IsKnown &isKnown)
    {
        const SExtremes extremes = m_values.extremesIn(from, to);
        if (hasNothing(extremes)) {
            close(take);
        } else if (isClean(from, to, extremes) || m_leaves >= mostLeaves) {
            extend(from, to, lowestShown(from, to, extremes), extremes.highest);
        } else if (isKnown(lowestShown(from, to, extremes), extremes.highest)) {
            passOver(from, to, take);
        } else if (to - from <= leafSize) {
            visitValues(from, to, take);
        } else {
            const qint64 middle = from + (to - from) / 2;
            visitPart(from, middle, take, isKnown);
            visitPart(middle, to, take, isKnown);
        }
    }

    /// Takes the first and the last value of a part, each with its neighbour outside.
    template <class Take>
    void passOver(qint64 from, qint64 to, Take &take)
    {
        const double first = valueAt(from);
        if (!std::isnan(first))
            extend(from, from + 1, first, first);
        close(take);
        const double last = valueAt(to - 1);
        if (!std::isnan(last))
            extend(to - 1, to, last, last);
    }

    template <class Take>
    void visitValues(qint64 from, qint64 to, Take &take)
    {
        ++m_leaves;
        m_values.copyValues(from, to, m_leaf.data());
        const bool mayBeMisplaced = m_places.hasMisplaced(from, to);
        for (qint64 i = from; i < to; ++i) {
            const double value = m_leaf[size_t(i - from)];
            if (m_rows.hasPlace(value) && !(mayBeMisplaced && m_places.hasMisplaced(i, i + 1)))
                extend(i, i + 1, value, value);
            else
                close(take);
        }
    }

    template <class Take>
    void close(Take &take)
    {
        if (m_open.to > m_open.from)
            take(m_open);
        m_open = SRun();
    }

    void extend(qint64 from, qint64 to, double lowest, double highest);
    double lowestShown(qint64 from, qint64 to, const SExtremes &extremes) const;

    const SeriesSnapshot &m_values;
    const SeriesPlaces &m_places;
    const RowScale &m_rows;
    SRun m_open;
    int m_leaves = 0;
    std::array<double, leafSize> m_leaf;
};
