// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/Levels.h"
#include "views/store/SCell.h"

/// What is above zero and no gap.
template <class T>
struct SPositives
{
    T smallest = 0; ///< 0 if there is none
    qint64 count = 0;

    void include(const SPositives &other)
    {
        smallest = smallerPositive(smallest, other.smallest);
        count += other.count;
    }
};

/// The sums of distances from a value, and of their squares.
struct SSums
{
    qint64 count = 0; ///< of values that aren't gaps
    double sum = 0.0;
    double squares = 0.0;
};

/// The sums of values of 8 or 16 bits, and of their squares.
struct SWholeSums
{
    qint64 sum = 0;
    quint64 squares = 0;
};

/// The loops over values, with registers of so many bytes: `narrowRegisters` for any processor, or `wideRegisters` for
/// one of which hasAvx2() is true. They find the same, to the last bit of a sum and to the sign of a zero.
template <class T, int registerSize>
struct ScanLoops
{
    /// The lowest and highest of `count` values; sets `hasGap` if there is a gap among them.
    static SCell<T> cellOf(const char *values, qint64 count, bool &hasGap);
    /// The same of each of up to 64 cells of level 1, whose values follow each other. A bit for each that has a gap.
    static quint64 cellsOf(const char *values, int cells, SCell<T> *found);
    static SPositives<T> positivesOf(const char *values, qint64 count);
    /// The sums of `count` values. `hasGap`: whether there may be gaps among them.
    static SSums sumsFrom(double base, const char *values, qint64 count, bool hasGap);
    /// The same where whole numbers will do; of a block of values at most.
    static SWholeSums wholeSums(const char *values, qint64 count);
};

constexpr int narrowRegisters = 16;
constexpr int wideRegisters = 32;
