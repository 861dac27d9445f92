// SPDX-License-Identifier: MIT
#pragma once

/// A range of bars, points or spans by number: from `first` to one before `end`.
struct SIndexRange
{
    int first = 0;
    int end = 0;

    friend bool operator==(const SIndexRange &a, const SIndexRange &b) { return a.first == b.first && a.end == b.end; }
};
