// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisMapping.h"

/// The part of an axis that is shown, and what hands do to it. Plain values, any thread. On a log scale steps are steps
/// of the logarithm, so that a pan keeps the ratio of both ends and a zoom keeps the value under the pointer.
struct SAxisRange
{
    double min = 0.0;
    double max = 1.0;

    bool operator==(const SAxisRange &other) const { return min == other.min && max == other.max; }
    bool operator!=(const SAxisRange &other) const { return !(*this == other); }
    /// The length on the scale: in values, or in decades.
    double length(bool log) const { return log ? std::log10(max) - std::log10(min) : max - min; }
};

/// Ends beyond this are brought back to it, so that no span leaves what a double holds.
constexpr double farthestEnd = 1e300;

/// What an axis shows before it knows of any values.
inline SAxisRange firstRange(bool log)
{
    return log ? SAxisRange{1.0, 10.0} : SAxisRange{0.0, 1.0};
}

/// Whether a value can be an end of an axis: a number (infinity becomes farthestEnd), above 0 on a log scale.
bool canBeAnEnd(double value, bool log);

/// The range that can be shown: ordered, at most farthestEnd, wide enough that doubles in it differ. An end that can't
/// be one falls back to `fallback`.
SAxisRange showable(SAxisRange range, bool log, SAxisRange fallback);

/// The range moved into the limits, and cut to them if it is wider. A limit that is NaN or infinite is none, and
/// neither are two limits in the wrong order.
SAxisRange withinLimits(SAxisRange range, double lower, double upper, bool log);

/// `factor` times as long, `anchor` stays where it is. Below 1 zooms in. What isn't a positive number changes nothing.
SAxisRange zoomed(const SAxisRange &range, double factor, double anchor, bool log);

/// Moved to the right by a part of its length.
SAxisRange panned(const SAxisRange &range, double part, bool log);

/// The range around values from `lowest` to `highest`: with a margin of a twentieth on each side, though not beyond 0
/// where values end there; equal values get room around them.
SAxisRange rangeAround(double lowest, double highest, bool log);
