// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <utility>

namespace {

using Words = std::uint64_t __attribute__((vector_size(16)));

inline Words loadWords(const std::uint64_t *words)
{
    Words loaded;
    std::memcpy(&loaded, words, sizeof loaded);
    return loaded;
}

/// Four independent sums in wide registers: nothing but the loads takes time.
std::uint64_t sumOf(const std::uint64_t *words, std::size_t count)
{
    Words first{};
    Words second{};
    Words third{};
    Words fourth{};
    for (std::size_t i = 0; i + 8 <= count; i += 8) {
        first += loadWords(words + i);
        second += loadWords(words + i + 2);
        third += loadWords(words + i + 4);
        fourth += loadWords(words + i + 6);
    }
    const Words joined = (first + second) + (third + fourth);
    return joined[0] + joined[1];
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
