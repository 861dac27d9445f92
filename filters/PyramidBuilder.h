// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

#include <atomic>
#include <memory>

class ParallelParts;

/// Builds a pyramid as buildPyramid() does, but of a long series only the levels that are asked for. The coarse ones
/// take a single look at the series. The fine ones are built when asked for, or later in the background, or never if
/// the next series comes first: a stream costs only what can be seen.
///
/// For one thread. While levels are unfinished, the owner leaves the vectors as they are and reads only ready levels.
class PyramidBuilder
{
public:
    /// `levels` are the owner's, levels[0] being the series, and live as long as this.
    explicit PyramidBuilder(QVector<QVector<double>> &levels);
    ~PyramidBuilder();

    /// Begins with a new series in levels[0]. Call giveUp() before you put it there. Of a series of less
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
