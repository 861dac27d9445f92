// SPDX-License-Identifier: MIT
#include "filters/Pyramid.h"

#include "common/Helpers.h"
#include "common/Series.h"
#include "filters/Buckets.h"

#include <algorithm>
#include <atomic>
#include <vector>

namespace {

/// A level that is written while its source is: all buckets are pairs but one, if the source has an odd size.
///
/// Vectors are asked for their data once. Asked for every portion, the whole took twice as long, most likely because
/// their headers lie at the same place of a page each and drive one another out of the first-level cache.
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
    /// Whether the storage need not grow: then parts of the level may be written by several threads.
    bool isMade() const { return m_made == m_finalSize; }

    /// Where the source of a bucket begins.
    int sourceOf(int bucket) const { return bucket <= m_single ? 2 * bucket : 2 * bucket - 1; }
    /// Goes on with this bucket; those before it are another's.
    void skipTo(int bucket) { m_size = bucket; }

    /// Writes the buckets that lie within the first `available` values of the source; false if there is no further one.
    bool advance(int available)
    {
        const int before = m_size;
        writePairs(std::min(available / 2, m_single));
        if (available > 2 * m_single) {
            if (m_size == m_single)
                *place(1) = maximumFromZero(m_source + 2 * m_single, 1);
            writePairs((available + 1) / 2);
        }
        return m_size > before;
    }

private:
    void writePairs(int newSize)
    {
        const double *pairs = m_source + sourceOf(m_size);
        const int count = newSize - m_size;
        if (count > 0)
            pairMaxima(pairs, count, place(count));
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

/// Levels on top of one another, together, while what they need is in the cache.
using Levels = std::vector<HalvedLevel>;

/// Takes the values [begin, end) of the lowest level's source; the levels have got what lies before.
void grow(Levels &levels, int begin, int end)
{
    for (int done = begin; done < end;) {
        done += std::min(seriesPortion, end - done);
        int available = done;
        for (HalvedLevel &level : levels) {
            if (!level.advance(available))
                break; // and so nothing for the levels above
            available = level.size();
        }
    }
}

/// Takes one of several parts, which are alike in size.
void growPart(Levels levels, int part, int parts)
{
    const qint64 top = levels.back().finalSize();
    int begin = int(top * part / parts);
    int end = int(top * (part + 1) / parts);
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
        level->skipTo(begin);
        begin = level->sourceOf(begin);
        end = level->sourceOf(end);
    }
    grow(levels, begin, end);
}

/// In parts by as many threads, where nothing has to grow: the long levels, and then the short ones above them.
void growInParts(Levels &levels, int sourceSize, int parts)
{
    constexpr int shortSize = 1 << 12; // buckets
    const auto firstShort =
        std::find_if(levels.begin(), levels.end(), [](const HalvedLevel &one) { return one.finalSize() < shortSize; });
    if (parts <= 1 || firstShort == levels.begin()
        || !std::all_of(levels.begin(), firstShort, [](const HalvedLevel &one) { return one.isMade(); })) {
        grow(levels, 0, sourceSize);
        return;
    }
    const Levels lower(levels.begin(), firstShort);
    Levels upper(firstShort, levels.end());
    {
        std::atomic<int> next{0};
        const auto work = [&] {
            for (int part = next++; part < parts; part = next++)
                growPart(lower, part, parts);
        };
        const Helpers helpers(parts - 1, work);
        work();
    }
    grow(upper, 0, lower.back().finalSize());
}

/// Builds levels[first] and all above it from levels[first - 1].
void halve(QVector<QVector<double>> &levels, int first, int parts)
{
    const double *source = levels.at(first - 1).constData();
    const int sourceSize = levels.at(first - 1).size();
    Levels halved;
    halved.reserve(size_t(levels.size()));
    int size = sourceSize;
    for (int k = first; k < levels.size(); ++k) {
        halved.emplace_back(source, size, levels[k]);
        source = halved.back().values();
        size = halved.back().finalSize();
    }
    constexpr int worthThread = 1 << 20; // values
    growInParts(halved, sourceSize, parts > 0 ? parts : Helpers::threadsFor(sourceSize / worthThread));
}

} // namespace

void buildPyramid(QVector<QVector<double>> &levels, double factor, int parts)
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
    halve(levels, k, parts);
}
