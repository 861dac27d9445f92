// SPDX-License-Identifier: MIT
#include "filters/RunningAverage.h"

#include "common/Storage.h"

#include <algorithm>

namespace {

/// A sum over `depth` values that moves on by one value per average. The sum is carried along as it is, rounding and
/// all; each step needs the one before, so there must be nothing else in the way.
class RunningAverage
{
public:
    RunningAverage(const QVector<double> &input, int depth)
        : m_values(input.constData()),
          m_last(input.size() - 1),
          m_depth(depth),
          m_sum(depth * m_values[0])
    {
    }

    /// Writes the averages from `first` to one before `end`.
    void write(int first, int end, double *averages)
    {
        const int within = std::min(std::max(m_depth, first), end); // from here on no index is cut,
        const int behind = std::min(std::max(m_last, within), end); // up to here
        averages = writeCut(first, within, averages);
        if (within < behind)
            averages = writeWhole(within, behind, averages);
        writeCut(behind, end, averages);
    }

private:
    double *writeCut(int first, int end, double *averages)
    {
        for (int i = first; i < end; ++i) {
            const int leaving = std::min(std::max(i - m_depth, 0), m_last);
            const int entering = std::min(i + 1, m_last);
            m_sum = m_sum - m_values[leaving] + m_values[entering];
            *averages++ = m_sum / m_depth;
        }
        return averages;
    }

    double *writeWhole(int first, int end, double *averages)
    {
        const double *leaving = m_values + first - m_depth;
        const double *entering = m_values + first + 1;
        double sum = m_sum;
        for (int i = first; i < end; ++i) {
            sum = sum - *leaving++ + *entering++;
            *averages++ = sum / m_depth;
        }
        m_sum = sum;
        return averages;
    }

    const double *m_values;
    int m_last;
    int m_depth;
    double m_sum;
};

} // namespace

void appendAverages(const QVector<double> &input, int depth, int size, QVector<double> &averages)
{
    RunningAverage average(input, depth);
    for (int done = 0; done < size; done += seriesPortion) {
        const int portion = std::min(seriesPortion, size - done);
        average.write(done, done + portion, extend(averages, portion));
    }
}
