// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include "chart/ChartArea.h"
#include "plotters/AreaPlotter.h"
#include "plotters/BarPlotter.h"
#include "plotters/BarPlotterDx.h"

#include <cmath>

namespace {

/// A plotter that holds random values, or pairs of them, and was synchronised once.
template <class Plotter>
class Held
{
public:
    explicit Held(int count) : m_count(count)
    {
        plotter.setPlotterArea(QRectF(0.0, 0.0, count, 1.0));
        chart.addPlotter(&plotter);
        plotter.setData(randomSeries(count, 1));
        plotter.synchronize();
        chart.updateChartRect();
        chart.resetZoomView();
    }

    /// Places spread over the width without a pattern that a processor could guess.
    double place(int step) const
    {
        const double fraction = std::fmod(step * 0.6180339887498949, 1.0);
        return plotter.plotterArea().width() * fraction;
    }

    ChartArea chart;
    Plotter plotter;

private:
    int m_count;
};

/// Each waits for the one before, as those of a hand do: else a processor looks at several at once.
template <class Plotter>
void hoverOver(benchmark::State &state, int count)
{
    Held<Plotter> held(count);
    int step = 0;
    for ([[maybe_unused]] auto _ : state) {
        const SInfoPoint info = held.plotter.mouse_hovering(QPointF(held.place(++step), 0.1));
        step += int(0.1 * info.area.height()); // 0
    }
    benchmark::DoNotOptimize(step);
}

template <class Plotter>
void hover(benchmark::State &state)
{
    hoverOver<Plotter>(state, int(state.range(0)));
}

/// As many as there are pairs of a width and a value in a series of this length.
void hoverOverAsManyBars(benchmark::State &state)
{
    hoverOver<BarPlotter>(state, int(state.range(0)) / 2);
}

/// The largest value of nearly everything: both ends lie inside of blocks and slots.
template <class Plotter>
void largestIn(benchmark::State &state)
{
    Held<Plotter> held(int(state.range(0)));
    const double width = held.plotter.plotterArea().width();
    const QRectF area(0.01 * width, 0.0, 0.98 * width, 1.0);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(held.plotter.max_in(area));
}

/// What each accepted request for a frame does.
template <class Plotter>
void fitRectangles(benchmark::State &state)
{
    Held<Plotter> held(int(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        held.chart.updateChartRect();
}

void readOnce(benchmark::State &state)
{
    readLimit(state, 8 * state.range(0));
}

void readAnywhere(benchmark::State &state)
{
    const QVector<double> &series = randomSeries(int(state.range(0)), 1);
    int step = 0;
    for ([[maybe_unused]] auto _ : state) {
        const double fraction = std::fmod(++step * 0.6180339887498949, 1.0);
        benchmark::DoNotOptimize(series.at(int(fraction * series.size())));
    }
}

template <class Plotter>
void addRowsOf(const std::string &name)
{
    addRow("max_in of " + name, largestIn<Plotter>);
    addRow("max_in of " + name + "|read of the input", readOnce);
    addRow("fit of a request to " + name, fitRectangles<Plotter>);
    addRow("fit of a request to " + name + "|read of the input", readOnce);
}

} // namespace

void addQueryRows()
{
    addRow("hover over BarPlotter", hover<BarPlotter>);
    addRow("hover over BarPlotter|one value from anywhere", readAnywhere);
    addRow("hover over AreaPlotter", hover<AreaPlotter>);
    addRow("hover over AreaPlotter|one value from anywhere", readAnywhere);
    addRow("hover over BarPlotterDx", hover<BarPlotterDx>);
    addRow("hover over BarPlotterDx|BarPlotter of as many bars", hoverOverAsManyBars);
    addRowsOf<BarPlotter>("BarPlotter");
    addRowsOf<AreaPlotter>("AreaPlotter");
    addRowsOf<BarPlotterDx>("BarPlotterDx");
}
