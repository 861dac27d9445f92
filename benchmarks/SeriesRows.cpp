// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include "common/Maxima.h"
#include "common/Series.h"
#include "filters/Filter1D.h"

namespace {

int countOf(const benchmark::State &state)
{
    return int(state.range(0));
}

void compareEqual(benchmark::State &state)
{
    const QVector<double> &series = randomSeries(countOf(state), 1);
    const QVector<double> copy = separateCopy(series);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(sameSeries(series, copy));
}

/// An unchanged series reaches a node again, in storage of its own.
void setEqual(benchmark::State &state)
{
    const QVector<double> &series = randomSeries(countOf(state), 1);
    const QVector<double> copy = separateCopy(series);
    Filter1D node;
    node.setData(series);
    for ([[maybe_unused]] auto _ : state)
        node.setData(copy);
}

void readBoth(benchmark::State &state)
{
    readLimit(state, 16 * state.range(0));
}

void largest(benchmark::State &state)
{
    const QVector<double> &series = randomSeries(countOf(state), 1);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(maximumFromZero(series.constData(), series.size()));
}

void readOnce(benchmark::State &state)
{
    readLimit(state, 8 * state.range(0));
}

} // namespace

void addSeriesRows()
{
    addRow("comparison of equal series", compareEqual);
    addRow("comparison of equal series|read of both", readBoth);
    addRow("unchanged series, set again", setEqual);
    addRow("unchanged series, set again|read of both", readBoth);
    addRow("largest value", largest);
    addRow("largest value|read of the input", readOnce);
}
