// SPDX-License-Identifier: MIT
#include "common/Series.h"

#include <algorithm>

namespace {

constexpr int compareBlock = 1024; // values: two blocks stay in the first-level cache

/// No early exit inside a block, so that the compiler may use vector instructions.
bool sameBlock(const double *a, const double *b, int count)
{
    bool same = true;
    for (int i = 0; i < count; ++i)
        same &= a[i] == b[i];
    return same;
}

} // namespace

bool sameSeries(const QVector<double> &a, const QVector<double> &b)
{
    const double *left = a.constData();
    const double *right = b.constData();
    if (left == right)
        return true;
    const int size = a.size();
    if (size != b.size())
        return false;
    for (int start = 0; start < size; start += compareBlock) {
        if (!sameBlock(left + start, right + start, std::min(compareBlock, size - start)))
            return false;
    }
    return true;
}

double maximumFromZero(const double *values, int count)
{
    double maximum = 0.0;
    for (int i = 0; i < count; ++i) {
        if (values[i] > maximum)
            maximum = values[i];
    }
    return maximum;
}
