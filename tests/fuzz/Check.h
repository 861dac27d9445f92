// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Bits.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

/// Ends the run with a message: this is how a target reports a finding.
[[noreturn]] inline void fail(const char *what, const QByteArray &details)
{
    std::fprintf(stderr, "%s: %s\n", what, details.constData());
    std::abort();
}

/// Equal bit by bit; any NaN equals any other, because their bits depend on the order of the operands.
inline bool equal(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || bitsOf(a) == bitsOf(b);
}

inline void compare(const char *what, const QVector<double> &actual, const QVector<double> &expected)
{
    bool same = actual.size() == expected.size();
    for (int i = 0; same && i < actual.size(); ++i)
        same = equal(actual.at(i), expected.at(i));
    if (!same)
        fail(what, difference(actual, expected));
}
