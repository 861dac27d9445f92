// SPDX-License-Identifier: MIT
#include "common/Series.h"

#include <algorithm>

namespace {

/// No early exit inside a portion, so that the compiler may use vector instructions.
bool samePortion(const double *a, const double *b, int count)
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
    for (int start = 0; start < size; start += seriesPortion) {
        if (!samePortion(left + start, right + start, std::min(seriesPortion, size - start)))
            return false;
    }
    return true;
}

void restart(QVector<double> &series, int capacity)
{
    if (series.isDetached() && series.capacity() >= capacity) {
        series.resize(0);
        return;
    }
    series = QVector<double>(); // frees the old storage before the new one is made
    series.reserve(capacity);
}

double *extend(QVector<double> &series, int count)
{
    const int size = series.size();
    series.resize(size + count);
    return series.data() + size;
}
