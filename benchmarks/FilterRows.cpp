// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include "filters/DecimatorU64.h"
#include "filters/FixedDecimator2D.h"
#include "filters/FixedDecimatorU64.h"
#include "filters/MinimalWidth2D.h"
#include "filters/MovingAvarangeU64.h"

namespace {

constexpr int averageDepth = 16; // the node's default

/// A node of which all levels are wanted.
class WholePyramid : public DecimatorU64
{
public:
    void setData(const QVector<double> &data)
    {
        DecimatorU64::setData(data);
        m_builder.waitFor(1);
        m_builder.waitFor(m_levels.size() - 1);
    }
};

/// A node that publishes a level of some thousand values, as for a chart that shows all.
class ShownLevel : public DecimatorU64
{
public:
    void setData(const QVector<double> &data)
    {
        DecimatorU64::setData(data);
        m_level = std::max(m_levels.size() - 11, 0); // of the next one, too
        benchmark::DoNotOptimize(this->data().constData());
    }
};

/// A node whose buffers exist; two series take turns.
template <class Node>
void filterSeries(benchmark::State &state)
{
    const int count = int(state.range(0));
    const QVector<double> series[2] = {randomSeries(count, 1), randomSeries(count, 2)};
    Node node;
    node.setArea(QRectF(0.0, 0.0, count, 1.0));
    node.setData(series[1]);
    int turn = 0;
    for ([[maybe_unused]] auto _ : state) {
        node.setData(series[turn]);
        turn = 1 - turn;
    }
}

void copyOnce(benchmark::State &state)
{
    copyLimit(state, 8 * state.range(0));
}

void readOnce(benchmark::State &state)
{
    readLimit(state, 8 * state.range(0));
}

/// What cannot run in parallel: each sum needs the one before.
void serialChain(benchmark::State &state)
{
    const QVector<double> &series = randomSeries(int(state.range(0)), 1);
    QVector<double> averages = separateCopy(series);
    const double *values = series.constData();
    double *average = averages.data();
    for ([[maybe_unused]] auto _ : state) {
        double sum = averageDepth * values[0];
        for (int i = averageDepth; i + 1 < series.size(); ++i) {
            sum = sum - values[i - averageDepth] + values[i + 1];
            average[i] = sum / averageDepth;
        }
        benchmark::ClobberMemory();
    }
}

} // namespace

void addFilterRows()
{
    addRow("pyramid of DecimatorU64", filterSeries<WholePyramid>);
    addRow("pyramid of DecimatorU64|memcpy of the input", copyOnce);
    addRow("shown level of DecimatorU64", filterSeries<ShownLevel>);
    addRow("shown level of DecimatorU64|read of the input", readOnce);
    addRow("reduction of FixedDecimatorU64", filterSeries<FixedDecimatorU64>);
    addRow("reduction of FixedDecimatorU64|read of the input", readOnce);
    addRow("average of MovingAvarangeU64", filterSeries<MovingAvarangeU64>);
    addRow("average of MovingAvarangeU64|its serial chain", serialChain);
    addRow("merging of MinimalWidth2D", filterSeries<MinimalWidth2D>);
    addRow("merging of MinimalWidth2D|memcpy of the input", copyOnce);
    addRow("resampling of FixedDecimator2D", filterSeries<FixedDecimator2D>);
    addRow("resampling of FixedDecimator2D|read of the input", readOnce);
}
