// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisRange.h"

/// Two fingers along one axis, in pixels of it.
struct SFingers
{
    double first = 0.0;
    double second = 0.0;

    double distance() const { return std::abs(first - second); }
    double middle() const { return (first + second) * 0.5; }
};

/// The range after two fingers moved from `before` to `now`: the values that were under them still are, so they zoom
/// and pan at once. With `mayZoom` false, or fingers that are too close to tell, they pan. `mapping` is that of the
/// moment when they came down.
inline SAxisRange pinched(const AxisMapping &mapping, const SFingers &before, const SFingers &now, bool mayZoom)
{
    constexpr double tooClose = 20.0; // pixels
    const SAxisRange range{mapping.from, mapping.to};
    const bool zooms = mayZoom && before.distance() >= tooClose && now.distance() >= tooClose;
    const double factor = zooms ? before.distance() / now.distance() : 1.0;
    const SAxisRange scaled = zoomed(range, factor, mapping.toValue(before.middle()), mapping.log);
    return panned(scaled, (before.middle() - now.middle()) / mapping.pixelSpan(), mapping.log);
}
