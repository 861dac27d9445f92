// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

#include <cmath>

// The reductions as they are defined: one bucket after the other, each a copy of its part of the series.

/// The ends of the buckets of `count` values, by repeated addition, until one reaches the end of the values.
inline QVector<int> plainEnds(int count, int buckets)
{
    const double step = double(count) / buckets;
    QVector<int> ends;
    double x = 0.0;
    int end = 0;
    do {
        x += step;
        end = int(std::round(x));
        ends.append(end);
    } while (end < count);
    return ends;
}

inline QVector<double> plainCoarseLevel(const QVector<double> &values, double factor)
{
    const int buckets = int(std::ceil(values.size() / factor));
    QVector<double> level(buckets, 0.0);
    int start = 0;
    int j = 0;
    for (const int end : plainEnds(values.size(), buckets)) {
        const QVector<double> bucket = values.mid(start, end - start);
        double largest = 0.0;
        for (const double value : bucket) {
            if (value > largest)
                largest = value;
        }
        level[j++] = largest;
        start = end;
    }
    return level;
}

inline QVector<QVector<double>> plainPyramid(const QVector<double> &values, double factor = 2.0)
{
    QVector<QVector<double>> levels{values};
    while (levels.last().size() > 1)
        levels.append(plainCoarseLevel(levels.last(), factor));
    return levels;
}

/// The fixed reduction into `previous`, of which the buckets that are not reached keep what they hold.
inline QVector<double> plainFixedReduction(const QVector<double> &values, const QVector<double> &previous)
{
    QVector<double> reduced = previous;
    int start = 0;
    int j = 0;
    for (const int end : plainEnds(values.size(), previous.size())) {
        double largest = 0.0;
        for (int i = start; i < end; ++i) {
            if (i == start || values.at(i) > largest)
                largest = values.at(i);
        }
        reduced[j++] = largest;
        start = end;
    }
    return reduced;
}
