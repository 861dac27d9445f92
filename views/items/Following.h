// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisRange.h"

#include <algorithm>

// How a range follows its values. Plain arithmetic, any thread.

/// The range with its right end moved to `end`, as long as before.
inline SAxisRange slidTo(const SAxisRange &range, double end, bool log)
{
    if (!canBeAnEnd(end, log) || !std::isfinite(end))
        return range;
    const SAxisRange slid =
        log ? SAxisRange{end * (range.min / range.max), end} : SAxisRange{end - (range.max - range.min), end};
    return showable(slid, log, range);
}

/// The range with its right end at `end` and its left end where it is.
inline SAxisRange stretchedTo(const SAxisRange &range, double end, bool log)
{
    return canBeAnEnd(end, log) && end > range.min ? showable({range.min, end}, log, range) : range;
}

/// Both ranges together.
inline SAxisRange hull(const SAxisRange &a, const SAxisRange &b)
{
    return {std::min(a.min, b.min), std::max(a.max, b.max)};
}

/// Lets a range grow at once and shrink after a rest, so that it doesn't breathe with each value.
class RestingRange
{
public:
    /// What to show while `wanted` is needed and `shown` is shown: both. If much less is needed, the wait for a rest
    /// begins or goes on.
    SAxisRange grown(const SAxisRange &shown, const SAxisRange &wanted, bool log)
    {
        constexpr double worthwhile = 0.9; // a smaller gain isn't worth a move
        const SAxisRange both = hull(shown, wanted);
        const bool couldShrink = wanted.length(log) < both.length(log) * worthwhile;
        if (couldShrink)
            m_needed = m_isWaiting ? hull(m_needed, wanted) : wanted;
        m_isWaiting = couldShrink;
        return both;
    }
    bool isWaiting() const { return m_isWaiting; }
    /// After the rest: all that was needed during the wait.
    SAxisRange rested()
    {
        m_isWaiting = false;
        return m_needed;
    }

private:
    SAxisRange m_needed;
    bool m_isWaiting = false;
};
