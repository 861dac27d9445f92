// SPDX-License-Identifier: MIT
#include "filters/Pyramid.h"

#include "common/Storage.h"
#include "filters/Buckets.h"
#include "filters/HalvedLevels.h"

void buildPyramid(QVector<QVector<double>> &levels, double factor, int parts)
{
    resizePyramid(levels, factor);
    int k = 1;
    for (; k < levels.size(); ++k) {
        const QVector<double> &source = levels.at(k - 1);
        if (factor == 2.0 && source.size() <= largestHalvedExactly)
            break;
        const int size = coarseSize(source.size(), factor);
        restart(levels[k], size);
        appendBucketMaxima(source.constData(), source.size(), size, levels[k]);
    }
    if (k < levels.size())
        writeHalved(levels, k, levels.size(), parts > 0 ? parts : partsFor(levels.at(0).size()));
}

void resizePyramid(QVector<QVector<double>> &levels, double factor)
{
    int count = 1;
    for (int size = levels.at(0).size(); size > 1; size = coarseSize(size, factor))
        ++count;
    levels.resize(count);
}

int partsFor(int seriesSize)
{
    constexpr int worthThreads = 1 << 20; // values
    constexpr int partSize = 1 << 17;     // values
    return seriesSize < worthThreads ? 1 : seriesSize / partSize;
}
