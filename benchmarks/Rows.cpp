// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <utility>

namespace {

/// Four independent sums: nothing but the loads takes time.
__attribute__((target_clones("avx2", "default"))) std::uint64_t sumOf(const std::uint64_t *words, std::size_t count)
{
    std::uint64_t sums[4] = {};
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        for (int lane = 0; lane < 4; ++lane)
            sums[lane] += words[i + std::size_t(lane)];
    }
    for (; i < count; ++i)
        sums[0] += words[i];
    return sums[0] + sums[1] + sums[2] + sums[3];
}

} // namespace

const QVector<double> &randomSeries(int count, int seed)
{
    static std::map<std::pair<int, int>, QVector<double>> kept;
    QVector<double> &series = kept[{count, seed}];
    if (series.isEmpty()) {
        std::mt19937_64 random{std::uint64_t(seed)};
        std::uniform_real_distribution<double> uniform;
        series.resize(count);
        for (double &value : series)
            value = uniform(random);
    }
    return series;
}

QVector<double> separateCopy(const QVector<double> &series)
{
    QVector<double> copy = series;
    copy.detach();
    return copy;
}

void copyLimit(benchmark::State &state, qint64 bytes)
{
    const QVector<double> &source = randomSeries(int(bytes / 8), 1);
    QVector<double> target = separateCopy(source); // its pages are there
    for ([[maybe_unused]] auto _ : state) {
        std::memcpy(target.data(), source.constData(), std::size_t(bytes));
        benchmark::ClobberMemory();
    }
}

void readLimit(benchmark::State &state, qint64 bytes)
{
    const QVector<double> &source = randomSeries(int(bytes / 8), 1);
    const auto *words = reinterpret_cast<const std::uint64_t *>(source.constData());
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(sumOf(words, std::size_t(source.size())));
}
