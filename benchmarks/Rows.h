// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <QVector>

#include <string>

// What the benchmarks share. A row is a work and the limit that the machine sets to it, measured in the same run; both
// carry the row's name, the limit behind a bar: "pyramid" and "pyramid|memcpy of the input".

/// Uniform numbers in [0, 1), the same in every run; another series for another `seed`. Kept, so that asking is free.
const QVector<double> &randomSeries(int count, int seed);

/// A copy with storage of its own.
QVector<double> separateCopy(const QVector<double> &series);

/// Registers `run(state)` for 1e3 to 1e7 values, state.range(0) of them.
template <class Run>
void addRow(const std::string &name, Run run)
{
    benchmark::RegisterBenchmark(name.c_str(), run)->RangeMultiplier(10)->Range(1'000, 10'000'000)->UseRealTime();
}

// Limits: what the machine needs for the same bytes.

/// A copy of `bytes` bytes.
void copyLimit(benchmark::State &state, qint64 bytes);
/// Adds up `bytes` bytes in the widest registers.
void readLimit(benchmark::State &state, qint64 bytes);

// The groups, each in a file of its own.

void addSeriesRows();
void addPlotterRows();
void addFilterRows();
void addReadingRows();
void addReaderRows();
void addQueryRows();
void addStoreRows();
void addShapeRows();
