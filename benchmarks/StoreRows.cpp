// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include "views/store/SeriesData.h"

#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ctime>
#include <memory>
#include <vector>

namespace {

constexpr int columns = 2000;
constexpr qint64 chunkSize = 1 << 18;

/// Single-precision numbers of a wave with noise, of which no more are kept than a long series needs to look like one.
const std::vector<float> &wave()
{
    static const std::vector<float> made = [] {
        const QVector<double> &noise = randomSeries(1'000'000, 1);
        std::vector<float> values;
        for (int i = 0; i < noise.size(); ++i)
            values.push_back(float(std::sin(i * 1e-3) + 0.3 * noise.at(i)));
        return values;
    }();
    return made;
}

template <class T>
std::shared_ptr<SeriesData> longSeries(qint64 count, T factor)
{
    std::vector<T> portion;
    for (const float value : wave())
        portion.push_back(T((value + 1.0f) * float(factor)));
    const std::shared_ptr<SeriesData> series = SeriesData::create(sampleTypeOf<T>());
    while (series->end() < count)
        series->append(portion.data(), std::min(count - series->end(), qint64(portion.size())));
    return series;
}

/// Lets go of what was made, outside of the measurement, and gives the memory back to the system: the next is fresh.
template <class Made>
void dropAndTrim(benchmark::State &state, Made &made)
{
    state.PauseTiming();
    made = Made();
    malloc_trim(0);
    state.ResumeTiming();
}

void appendToStore(benchmark::State &state)
{
    const std::vector<float> &values = wave();
    for ([[maybe_unused]] auto _ : state) {
        std::shared_ptr<SeriesData> series = SeriesData::create(SampleType::Float32);
        for (qint64 left = state.range(0); left > 0; left -= qint64(values.size()))
            series->append(values.data(), std::min(left, qint64(values.size())));
        benchmark::DoNotOptimize(series->end());
        dropAndTrim(state, series);
    }
}

void copyToFreshChunks(benchmark::State &state)
{
    const std::vector<float> &values = wave();
    for ([[maybe_unused]] auto _ : state) {
        std::vector<std::unique_ptr<float[]>> chunks;
        for (qint64 left = state.range(0); left > 0; left -= chunkSize) {
            chunks.emplace_back(new float[chunkSize]);
            std::memcpy(chunks.back().get(), values.data(), size_t(std::min(left, chunkSize)) * sizeof(float));
        }
        benchmark::DoNotOptimize(chunks.data());
        dropAndTrim(state, chunks);
    }
}

const SeriesData &longWave(qint64 count)
{
    static std::shared_ptr<SeriesData> series;
    if (!series || series->end() != count)
        series = longSeries<float>(count, 1.0f);
    return *series;
}

/// A frame: a snapshot, and the extremes behind every column of a wide view.
void lookAtColumns(const SeriesData &series, double left, double width)
{
    const SeriesSnapshot snapshot = series.snapshot();
    double sum = 0.0;
    for (int i = 0; i < columns; ++i)
        sum += snapshot.extremesIn(qint64(left + i * width), qint64(left + (i + 1) * width)).highest;
    benchmark::DoNotOptimize(sum);
}

/// At another zoom each time.
void columnsOfStore(benchmark::State &state)
{
    const SeriesData &series = longWave(state.range(0));
    double shift = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        shift = std::fmod(shift + 0.6180339887498949, 1.0);
        lookAtColumns(series, 0.0, double(series.end()) / columns * (0.5 + 0.5 * shift));
    }
}

double processorSeconds()
{
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

/// The slowest of many views, anywhere and at any zoom. In processor time: on a clock, it would be the one in which the
/// thread had to wait.
void slowestColumnsOfStore(benchmark::State &state)
{
    constexpr int views = 1000;
    const SeriesData &series = longWave(state.range(0));
    const double count = double(series.end());
    const QVector<double> &random = randomSeries(2 * views, 3);
    for ([[maybe_unused]] auto _ : state) {
        double slowest = 0.0;
        for (int view = 0; view < views; ++view) {
            const double shown = count * std::pow(columns / count, random.at(2 * view));
            const double begin = processorSeconds();
            lookAtColumns(series, (count - shown) * random.at(2 * view + 1), shown / columns);
            slowest = std::max(slowest, processorSeconds() - begin);
        }
        state.SetIterationTime(slowest);
    }
}

void statisticsOfStore(benchmark::State &state)
{
    static std::shared_ptr<SeriesData> series;
    if (!series || series->end() != state.range(0))
        series = longSeries<quint8>(state.range(0), quint8(90));
    const SeriesSnapshot snapshot = series->snapshot();
    qint64 margin = 1;
    for ([[maybe_unused]] auto _ : state) {
        margin = margin * 7 % 100'003;
        benchmark::DoNotOptimize(snapshot.statisticsIn(margin, snapshot.end() - 2 * margin).m2);
    }
}

} // namespace

void addStoreRows()
{
    addRow("append to a stored series", appendToStore);
    addRow("append to a stored series|copy to fresh memory", copyToFreshChunks);
    benchmark::RegisterBenchmark("2000 columns of a stored series", columnsOfStore)
        ->RangeMultiplier(10)
        ->Range(10'000, 100'000'000)
        ->UseRealTime();
    benchmark::RegisterBenchmark("slowest 2000 columns of a stored series", slowestColumnsOfStore)
        ->RangeMultiplier(10)
        ->Range(10'000, 100'000'000)
        ->Iterations(1)
        ->UseManualTime();
    benchmark::RegisterBenchmark("statistics of a stored series", statisticsOfStore)
        ->RangeMultiplier(10)
        ->Range(10'000'000, 1'000'000'000)
        ->UseRealTime();
}
