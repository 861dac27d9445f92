// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include "views/items/BarShape.h"
#include "views/items/LinePath.h"
#include "views/items/LineShape.h"
#include "views/store/SeriesData.h"

#include <memory>
#include <vector>

// What series are drawn as that have a gap at every other value, for a view of all of them: on a log scale, values of 0
// and below are gaps.

namespace {

constexpr int columns = 1000;
constexpr int rows = 600;

SeriesSnapshot halfBelowZero(qint64 count)
{
    static std::shared_ptr<SeriesData> series;
    if (series && series->end() == count)
        return series->snapshot();
    series = SeriesData::create(SampleType::Float32);
    std::vector<float> portion;
    for (const double value : randomSeries(1'000'000, 1))
        portion.push_back(float(value - 0.5));
    while (series->end() < count)
        series->append(portion.data(), std::min(count - series->end(), qint64(portion.size())));
    return series->snapshot();
}

/// Calls draw(values, places, grid, scale).
template <class Draw>
void drawAll(benchmark::State &state, Draw &&draw)
{
    const SeriesSnapshot values = halfBelowZero(state.range(0));
    const SeriesPlaces places(0.0, 1.0, 0, values.end(), false);
    const ColumnGrid grid = ColumnGrid::over(0.0, double(values.end()), columns, 0.0);
    const RowScale scale({1e-4, 1.0, true, double(rows), 0.0}, rows);
    for ([[maybe_unused]] auto _ : state)
        draw(values, places, grid, scale);
}

template <class Add>
void drawRects(benchmark::State &state, Add &&add)
{
    PixelRects rects;
    drawAll(state, [&](auto &&...all) {
        rects.begin(rows);
        add(rects, all...);
        benchmark::DoNotOptimize(rects.rects().data());
    });
}

void drawBars(benchmark::State &state)
{
    drawRects(state, [](auto &&...all) { addBars(all..., 1e-4); });
}

void drawLine(benchmark::State &state)
{
    drawRects(state, [](auto &&...all) { addThinLine(all...); });
}

void drawArea(benchmark::State &state)
{
    drawRects(state, [](auto &&...all) { addArea(all..., 1e-4); });
}

void drawWideLine(benchmark::State &state)
{
    drawAll(state, [](auto &&...all) {
        LinePath path;
        addPath(path, all..., 2);
        benchmark::DoNotOptimize(path.points.data());
    });
}

} // namespace

void addShapeRows()
{
    addRow("bars, every other one below 0 on a log scale", drawBars);
    addRow("line with every other value below 0 on a log scale", drawLine);
    addRow("area with every other value below 0 on a log scale", drawArea);
    addRow("wide line with every other value below 0 on a log scale", drawWideLine);
}
