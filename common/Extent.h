// SPDX-License-Identifier: MIT
#pragma once

/// From the lowest to the highest of some values.
struct SExtent
{
    double lowest = 0.0;
    double highest = 0.0;
};

/// Of `count` values, at least one, none of them a NaN. Thread-safe.
SExtent extentOf(const double *values, int count);
