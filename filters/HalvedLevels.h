// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

#include <atomic>
#include <vector>

class HalvedLevel;

/// Consecutive levels of a pyramid at factor 2, which are written together, portion by portion, while what they need is
/// in the cache. Storage that is large enough and not shared is used again.
///
/// Doesn't own the levels that it writes to: they must stay where they are as long as this lives.
class HalvedLevels
{
public:
    /// levels[first] to levels[end - 1]. levels[first - 1] is there already.
    HalvedLevels(QVector<QVector<double>> &levels, int first, int end);
    ~HalvedLevels();
    HalvedLevels(const HalvedLevels &) = delete;
    HalvedLevels &operator=(const HalvedLevels &) = delete;

    /// Whether no storage has to grow: the condition for writing parts.
    bool areMade() const;

    /// Writes all, or up to some point when given up meanwhile.
    void write(const std::atomic<bool> &givenUp);
    void write();
    /// Writes one of several parts, which are alike in size. Threads may write different ones at the same time.
    void writePart(int part, int parts) const;

private:
    std::vector<HalvedLevel> m_levels;
    int m_sourceSize;
};

/// Writes levels[first] to levels[end - 1], where nothing has to grow the long ones in `parts` by threads.
void writeHalved(QVector<QVector<double>> &levels, int first, int end, int parts);
