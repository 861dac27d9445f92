// SPDX-License-Identifier: MIT
#include "common/Extent.h"

#include "common/Lanes.h"

SExtent extentOf(const double *values, int count)
{
    const Lanes first{values[0], values[0]};
    Lanes lowest[laneGroups] = {first, first, first, first};
    Lanes highest[laneGroups] = {first, first, first, first};
    int i = 0;
    for (; i <= count - valuesPerRound; i += valuesPerRound) {
        for (int group = 0; group < laneGroups; ++group) {
            const Lanes some = loadLanes(values + i + group * lanes);
            lowest[group] = lesser(some, lowest[group]);
            highest[group] = greater(some, highest[group]);
        }
    }
    SExtent extent{values[0], values[0]};
    const auto reach = [&extent](double low, double high) {
        extent = {lesser(low, extent.lowest), greater(high, extent.highest)};
    };
    for (int group = 0; group < laneGroups; ++group) {
        for (int lane = 0; lane < lanes; ++lane)
            reach(lowest[group][lane], highest[group][lane]);
    }
    for (; i < count; ++i)
        reach(values[i], values[i]);
    return extent;
}
