// SPDX-License-Identifier: MIT
#include "filters/Pyramid.h"

#include "common/Series.h"
#include "filters/Buckets.h"

#include <algorithm>
#include <vector>

namespace {

/// A level that grows while its source does: all buckets are pairs but one, if the source has an odd size.
class HalvedLevel
{
public:
    HalvedLevel(const double *source, int sourceSize, QVector<double> &level)
        : m_source(source),
          m_single(singleBucket(sourceSize)),
          m_level(&level)
    {
    }

    /// Appends the buckets that lie within the first `available` values of the source; returns the size of the level.
    int advance(int available)
    {
        appendPairs(2 * m_level->size(), std::min(available / 2, m_single));
        if (available <= 2 * m_single)
            return m_level->size();
        if (m_level->size() == m_single)
            *extend(*m_level, 1) = maximumFromZero(m_source + 2 * m_single, 1);
        appendPairs(2 * m_level->size() - 1, (available + 1) / 2);
        return m_level->size();
    }

private:
    void appendPairs(int start, int newSize)
    {
        const int count = newSize - m_level->size();
        if (count > 0)
            pairMaxima(m_source + start, count, extend(*m_level, count));
    }

    const double *m_source;
    int m_single;
    QVector<double> *m_level;
};

/// Builds levels[first] and all above it from levels[first - 1].
void halve(QVector<QVector<double>> &levels, int first)
{
    const int sourceSize = levels.at(first - 1).size();
    std::vector<HalvedLevel> growing;
    int size = sourceSize;
    for (int k = first; k < levels.size(); ++k) {
        growing.emplace_back(levels.at(k - 1).constData(), size, levels[k]);
        size = coarseSize(size, 2.0);
    }
    for (int done = 0; done < sourceSize;) {
        done += std::min(seriesPortion, sourceSize - done);
        int available = done;
        for (HalvedLevel &level : growing)
            available = level.advance(available);
    }
}

} // namespace

void buildPyramid(QVector<QVector<double>> &levels, double factor)
{
    std::vector<int> sizes{levels.at(0).size()};
    while (sizes.back() > 1)
        sizes.push_back(coarseSize(sizes.back(), factor));
    levels.resize(int(sizes.size()));
    for (int k = 1; k < levels.size(); ++k)
        restart(levels[k], sizes[k]);

    int k = 1;
    for (; k < levels.size() && (factor != 2.0 || sizes[k - 1] > largestHalvedExactly); ++k)
        appendBucketMaxima(levels.at(k - 1).constData(), sizes[k - 1], sizes[k], levels[k]);
    halve(levels, k);
}
