// SPDX-License-Identifier: MIT
#include "views/items/AxisRange.h"

#include <algorithm>

namespace {

constexpr double resolution = 1e-12;    // the narrowest range, as a part of its ends
constexpr double narrowest = 1e-290;    // around 0
constexpr double logResolution = 1e-11; // decades
constexpr double smallestOnLog = 1e-300;

double limited(double value, bool log)
{
    return std::clamp(value, log ? smallestOnLog : -farthestEnd, farthestEnd);
}

/// Ends on the scale on which equal steps are equally long.
struct SScaled
{
    double min;
    double max;
};

SScaled scaled(const SAxisRange &range, bool log)
{
    return log ? SScaled{std::log10(range.min), std::log10(range.max)} : SScaled{range.min, range.max};
}

SAxisRange unscaled(const SScaled &range, bool log)
{
    return log ? SAxisRange{std::pow(10.0, range.min), std::pow(10.0, range.max)} : SAxisRange{range.min, range.max};
}

SAxisRange widened(const SAxisRange &range, bool log)
{
    SScaled ends = scaled(range, log);
    const double farthest = std::max(std::abs(ends.min), std::abs(ends.max));
    const double least = log ? logResolution : std::max(farthest * resolution, narrowest);
    if (ends.max - ends.min >= least)
        return range;
    const double middle = ends.min + (ends.max - ends.min) * 0.5;
    ends = {middle - least, middle + least};
    return unscaled(ends, log);
}

} // namespace

bool canBeAnEnd(double value, bool log)
{
    return log ? value > 0.0 : !std::isnan(value);
}

SAxisRange showable(SAxisRange range, bool log, SAxisRange fallback)
{
    if (!canBeAnEnd(range.min, log))
        range.min = fallback.min;
    if (!canBeAnEnd(range.max, log))
        range.max = fallback.max;
    range = {limited(range.min, log), limited(range.max, log)};
    if (range.max < range.min)
        std::swap(range.min, range.max);
    return widened(range, log);
}

SAxisRange withinLimits(SAxisRange range, double lower, double upper, bool log)
{
    const bool hasLower = std::isfinite(lower) && canBeAnEnd(lower, log);
    const bool hasUpper = std::isfinite(upper) && canBeAnEnd(upper, log);
    if (hasLower && hasUpper && lower >= upper)
        return range;
    const auto moved = [&](double from, double to) {
        const SScaled ends = scaled(range, log);
        const double shift = log ? std::log10(to) - std::log10(from) : to - from;
        return unscaled({ends.min + shift, ends.max + shift}, log);
    };
    if (hasUpper && range.max > upper) {
        range = moved(range.max, upper);
        range.max = upper;
    }
    if (hasLower && range.min < lower) {
        range = moved(range.min, lower);
        range.min = lower;
    }
    if (hasUpper)
        range.max = std::min(range.max, upper);
    return range;
}

SAxisRange zoomed(const SAxisRange &range, double factor, double anchor, bool log)
{
    if (!(factor > 0.0) || !std::isfinite(factor) || !canBeAnEnd(anchor, log) || !std::isfinite(anchor))
        return range;
    const double place = log ? std::log10(anchor) : anchor;
    const SScaled ends = scaled(range, log);
    const SAxisRange wanted = unscaled({place + (ends.min - place) * factor, place + (ends.max - place) * factor}, log);
    const SAxisRange shown = showable(wanted, log, range);
    // A zoom that ends at the resolution of doubles stays where it is instead of wandering.
    return factor < 1.0 && shown.length(log) >= range.length(log) ? range : shown;
}

SAxisRange panned(const SAxisRange &range, double part, bool log)
{
    if (!std::isfinite(part))
        return range;
    const SScaled ends = scaled(range, log);
    const double shift = (ends.max - ends.min) * part;
    const SAxisRange moved = unscaled({ends.min + shift, ends.max + shift}, log);
    const bool fits =
        std::abs(moved.min) <= farthestEnd && std::abs(moved.max) <= farthestEnd && (!log || moved.min > 0.0);
    return fits ? showable(moved, log, range) : range;
}

SAxisRange rangeAround(double lowest, double highest, bool log)
{
    constexpr double margin = 0.05;
    if (log) {
        if (!(lowest > 0.0) || !(highest >= lowest))
            return {1.0, 10.0};
        const double decades = std::log10(highest / lowest);
        const double room = std::isfinite(decades) && decades > 0.0 ? decades * margin : 0.5;
        return showable({lowest / std::pow(10.0, room), highest * std::pow(10.0, room)}, true, {1.0, 10.0});
    }
    if (!std::isfinite(lowest) || !std::isfinite(highest) || highest < lowest)
        return {};
    if (lowest == highest) {
        const double room = lowest == 0.0 ? 1.0 : std::abs(lowest) * 0.1;
        return showable({lowest - room, highest + room}, false, {});
    }
    const double room = highest * margin - lowest * margin; // their difference could overflow
    return showable({lowest == 0.0 ? 0.0 : lowest - room, highest == 0.0 ? 0.0 : highest + room}, false, {});
}
