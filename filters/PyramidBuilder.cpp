// SPDX-License-Identifier: MIT
#include "filters/PyramidBuilder.h"

#include "common/Maxima.h"
#include "common/ParallelParts.h"
#include "common/Storage.h"
#include "filters/Buckets.h"
#include "filters/HalvedLevels.h"
#include "filters/Pyramid.h"

#include <algorithm>
#include <vector>

namespace {

/// How a level lies on the series, some levels below.
class Descent
{
public:
    Descent(int seriesSize, int level) : m_size(seriesSize)
    {
        for (int k = 0; k < level; ++k) {
            m_halvings.emplace_back(m_size);
            m_size = m_halvings.back().size();
        }
    }

    /// The number of buckets.
    int size() const { return m_size; }
    /// Where the source of a bucket begins, or that of the last one ends.
    int sourceOf(int bucket) const
    {
        for (auto halving = m_halvings.rbegin(); halving != m_halvings.rend(); ++halving)
            bucket = halving->sourceOf(bucket);
        return bucket;
    }

private:
    std::vector<Halving> m_halvings;
    int m_size;
};

/// Builds a level from the series at once: the largest of a few maxima is the largest of what they stand for, and the
/// same in every bit, because a maximum is neither a NaN nor a negative zero.
void buildFromSeries(QVector<QVector<double>> &levels, int level)
{
    const QVector<double> &series = levels.at(0);
    const Descent descent(series.size(), level);
    prepare(levels[level], descent.size());
    levels[level].resize(descent.size());

    const double *values = series.constData();
    double *maxima = levels[level].data();
    const int parts = std::min(partsFor(series.size()), descent.size());
    doParts(parts, [&](int part) {
        const int last = int(qint64(descent.size()) * (part + 1) / parts);
        int bucket = int(qint64(descent.size()) * part / parts);
        for (int begin = descent.sourceOf(bucket); bucket < last; ++bucket) {
            const int end = descent.sourceOf(bucket + 1);
            maxima[bucket] = maximumFromZero(values + begin, end - begin);
            begin = end;
        }
    });
}

/// From this level on, which is built from the series itself, all have so few values (256 in a bucket) that they are
/// cheaper than one look at the series.
constexpr int coarseLevel = 8;

} // namespace

PyramidBuilder::PyramidBuilder(QVector<QVector<double>> &levels) : m_levels(levels) {}

PyramidBuilder::~PyramidBuilder()
{
    giveUp();
}

void PyramidBuilder::begin(double factor, int longSeries)
{
    giveUp();
    const int size = m_levels.at(0).size();
    resizePyramid(m_levels, factor);
    const bool isLong =
        factor == 2.0 && size >= longSeries && size <= largestHalvedExactly && m_levels.size() > coarseLevel;
    if (!isLong)
        buildPyramid(m_levels, factor);
    m_fineReady = m_coarseReady = !isLong;
}

void PyramidBuilder::giveUp()
{
    m_givenUp = true;
    m_background.reset();
    m_givenUp = false;
}

void PyramidBuilder::goOnInBackground()
{
    if (m_fineReady || m_background)
        return;
    const auto fine = std::make_shared<HalvedLevels>(m_levels, 1, coarseLevel);
    m_background = std::make_unique<ParallelParts>(1, [this, fine](int) { fine->write(m_givenUp); });
    m_background->begin(1);
}

void PyramidBuilder::waitFor(int level)
{
    if (level >= coarseLevel)
        finishCoarse();
    else if (level > 0)
        finishFine();
}

void PyramidBuilder::finishCoarse()
{
    if (m_coarseReady)
        return;
    int first = coarseLevel;
    if (!m_fineReady)
        buildFromSeries(m_levels, first++);
    writeHalved(m_levels, first, m_levels.size(), 1);
    m_coarseReady = true;
}

void PyramidBuilder::finishFine()
{
    if (m_fineReady)
        return;
    if (m_background)
        m_background->finish();
    else
        writeHalved(m_levels, 1, coarseLevel, partsFor(m_levels.at(0).size()));
    m_background.reset();
    m_fineReady = true;
}
