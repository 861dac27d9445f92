// SPDX-License-Identifier: MIT
#include "filters/Pyramid.h"

#include "common/Series.h"
#include "filters/Buckets.h"

#include <algorithm>
#include <vector>

namespace {

/// A level that is written while its source is: all buckets are pairs but one, if the source has an odd size.
///
/// Vectors are asked for their data once, not for every portion: their headers lie at the same place of a page each and
/// drive one another, and the values beside them, out of the first-level cache. That took as long as all the rest.
class HalvedLevel
{
public:
    HalvedLevel(const double *source, int sourceSize, QVector<double> &level)
        : m_source(source),
          m_single(singleBucket(sourceSize)),
          m_finalSize(coarseSize(sourceSize, 2.0)),
          m_level(&level)
    {
        prepare(level, m_finalSize);
        m_values = level.data();
        m_made = level.size();
    }

    const double *values() const { return m_values; }
    int size() const { return m_size; }
    int finalSize() const { return m_finalSize; }

    /// Writes the buckets that lie within the first `available` values of the source; false if there is no further one.
    bool advance(int available)
    {
        const int before = m_size;
        writePairs(2 * m_size, std::min(available / 2, m_single));
        if (available > 2 * m_single) {
            if (m_size == m_single)
                *place(1) = maximumFromZero(m_source + 2 * m_single, 1);
            writePairs(2 * m_size - 1, (available + 1) / 2);
        }
        return m_size > before;
    }

private:
    void writePairs(int start, int newSize)
    {
        const int count = newSize - m_size;
        if (count > 0)
            pairMaxima(m_source + start, count, place(count));
    }

    /// Where the next `count` buckets go, within the reserved storage.
    double *place(int count)
    {
        double *next = m_values + m_size;
        m_size += count;
        if (m_size > m_made) {
            m_made = std::min(m_size + seriesPortion, m_finalSize);
            m_level->resize(m_made);
        }
        return next;
    }

    const double *m_source;
    int m_single;
    int m_finalSize;
    QVector<double> *m_level;
    double *m_values; ///< of m_level
    int m_made;       ///< how many elements m_level has
    int m_size = 0;   ///< how many are written
};

/// Builds levels[first] and all above it from levels[first - 1].
void halve(QVector<QVector<double>> &levels, int first)
{
    const double *source = levels.at(first - 1).constData();
    const int sourceSize = levels.at(first - 1).size();
    std::vector<HalvedLevel> growing;
    growing.reserve(size_t(levels.size()));
    int size = sourceSize;
    for (int k = first; k < levels.size(); ++k) {
        growing.emplace_back(source, size, levels[k]);
        source = growing.back().values();
        size = growing.back().finalSize();
    }
    for (int done = 0; done < sourceSize;) {
        done += std::min(seriesPortion, sourceSize - done);
        int available = done;
        for (HalvedLevel &level : growing) {
            if (!level.advance(available))
                break; // and so nothing for the levels above
            available = level.size();
        }
    }
}

} // namespace

void buildPyramid(QVector<QVector<double>> &levels, double factor)
{
    std::vector<int> sizes{levels.at(0).size()};
    while (sizes.back() > 1)
        sizes.push_back(coarseSize(sizes.back(), factor));
    levels.resize(int(sizes.size()));

    int k = 1;
    for (; k < levels.size() && (factor != 2.0 || sizes[k - 1] > largestHalvedExactly); ++k) {
        restart(levels[k], sizes[k]);
        appendBucketMaxima(levels.at(k - 1).constData(), sizes[k - 1], sizes[k], levels[k]);
    }
    halve(levels, k);
}
