// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

#include <atomic>
#include <memory>

class ParallelParts;

/// Builds a pyramid as buildPyramid() does, but of a long series only what is asked for: the coarse levels, which take
/// no more than a look at the series, or the fine ones; these otherwise later, in the background, or never if the next
/// series comes before. Who watches a stream pays for what can be seen.
///
/// For one thread. While levels are unfinished nobody else changes the vectors or reads a level that is not ready.
class PyramidBuilder
{
public:
    /// `levels` are the owner's, levels[0] being the series, and live as long as this.
    explicit PyramidBuilder(QVector<QVector<double>> &levels);
    ~PyramidBuilder();

    /// Begins with a new series in levels[0]. Before it is put there, giveUp() has to be called. Of a series of less
    /// than `longSeries` values all levels are ready on return.
    void begin(double factor, int longSeries = 1 << 20);
    /// Leaves unfinished levels as they are.
    void giveUp();

    bool isUnfinished() const { return !m_fineReady; }
    /// Has a thread finish the fine levels.
    void goOnInBackground();
    /// Returns when this level is ready.
    void waitFor(int level);

private:
    void finishCoarse();
    void finishFine();

    QVector<QVector<double>> &m_levels;
    bool m_coarseReady = true;
    bool m_fineReady = true;
    std::atomic<bool> m_givenUp{false};
    std::unique_ptr<ParallelParts> m_background; ///< the work on the fine levels, null when it has not begun
};
