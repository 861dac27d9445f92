// SPDX-License-Identifier: MIT
#include "filters/HalvedLevels.h"

#include "common/Maxima.h"
#include "common/ParallelParts.h"
#include "common/Storage.h"
#include "filters/Buckets.h"

#include <algorithm>

/// A level that is written while its source is.
///
/// Vectors are asked for their data once. Asked for every portion, the whole took twice as long, most likely because
/// their headers lie at the same place of a page each and drive one another out of the first-level cache.
class HalvedLevel
{
public:
    HalvedLevel(const double *source, int sourceSize, QVector<double> &level)
        : m_source(source),
          m_halving(sourceSize),
          m_level(&level)
    {
        prepare(level, m_halving.size());
        m_values = level.data();
        m_made = level.size();
    }

    const double *values() const { return m_values; }
    int size() const { return m_size; }
    int finalSize() const { return m_halving.size(); }
    bool isMade() const { return m_made == finalSize(); }
    int sourceOf(int bucket) const { return m_halving.sourceOf(bucket); }

    /// Goes on with this bucket; those before it are another's.
    void skipTo(int bucket) { m_size = bucket; }

    /// Writes the buckets that lie within the first `available` values of the source; false if it
    /// wrote none.
    bool advance(int available)
    {
        const int before = m_size;
        const int single = m_halving.single();
        writePairs(std::min(available / 2, single));
        if (available > 2 * single) {
            if (m_size == single)
                *place(1) = maximumFromZero(m_source + 2 * single, 1);
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
            m_made = std::min(m_size + seriesPortion, finalSize());
            m_level->resize(m_made);
        }
        return next;
    }

    const double *m_source;
    Halving m_halving;
    QVector<double> *m_level;
    double *m_values; ///< of m_level
    int m_made;       ///< how many elements m_level has
    int m_size = 0;   ///< how many are written
};

namespace {

const std::atomic<bool> never{false};

/// Takes the values [begin, end) of the lowest level's source; the levels have got what lies before.
void advance(std::vector<HalvedLevel> &levels, int begin, int end, const std::atomic<bool> &givenUp)
{
    for (int done = begin; done < end && !givenUp;) {
        done += std::min(seriesPortion, end - done);
        int available = done;
        for (HalvedLevel &level : levels) {
            if (!level.advance(available))
                break; // and so nothing for the levels above
            available = level.size();
        }
    }
}

} // namespace

HalvedLevels::HalvedLevels(QVector<QVector<double>> &levels, int first, int end)
    : m_sourceSize(levels.at(first - 1).size())
{
    m_levels.reserve(size_t(end - first));
    const double *source = levels.at(first - 1).constData();
    int size = m_sourceSize;
    for (int k = first; k < end; ++k) {
        m_levels.emplace_back(source, size, levels[k]);
        source = m_levels.back().values();
        size = m_levels.back().finalSize();
    }
}

HalvedLevels::~HalvedLevels() = default;

bool HalvedLevels::areMade() const
{
    return std::all_of(m_levels.begin(), m_levels.end(), [](const HalvedLevel &level) { return level.isMade(); });
}

void HalvedLevels::write(const std::atomic<bool> &givenUp)
{
    advance(m_levels, 0, m_sourceSize, givenUp);
}

void HalvedLevels::write()
{
    write(never);
}

void HalvedLevels::writePart(int part, int parts) const
{
    std::vector<HalvedLevel> levels = m_levels;
    const qint64 top = levels.back().finalSize();
    int begin = int(top * part / parts);
    int end = int(top * (part + 1) / parts);
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
        level->skipTo(begin);
        begin = level->sourceOf(begin);
        end = level->sourceOf(end);
    }
    advance(levels, begin, end, never);
}

void writeHalved(QVector<QVector<double>> &levels, int first, int end, int parts)
{
    constexpr int shortSize = 1 << 12; // buckets
    int firstShort = first;
    for (int size = levels.at(first - 1).size(); firstShort < end; ++firstShort) {
        size = coarseSize(size, 2.0);
        if (size < shortSize)
            break;
    }
    const HalvedLevels lower(levels, first, firstShort);
    const bool inParts = parts > 1 && firstShort > first && lower.areMade();
    if (inParts)
        doParts(parts, [&](int part) { lower.writePart(part, parts); });
    HalvedLevels(levels, inParts ? firstShort : first, end).write();
}
