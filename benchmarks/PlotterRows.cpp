// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include "chart/ChartArea.h"
#include "plotters/AreaPlotter.h"
#include "plotters/BarPlotter.h"
#include "plotters/BarPlotterDx.h"

namespace {

/// A plotter in a chart area, synchronised once; two series take turns.
template <class Plotter, int numbersPerBar = 1>
void replaceSeries(benchmark::State &state)
{
    const int count = numbersPerBar * int(state.range(0));
    const QVector<double> series[2] = {randomSeries(count, 1), randomSeries(count, 2)};
    ChartArea chart;
    Plotter plotter;
    plotter.setPlotterArea(QRectF(0.0, 0.0, count, 1.0));
    chart.addPlotter(&plotter);
    chart.lock_update(); // the fit to the data has a row of its own
    plotter.setData(series[1]);
    plotter.synchronize();
    int turn = 0;
    for ([[maybe_unused]] auto _ : state) {
        plotter.setData(series[turn]);
        turn = 1 - turn;
    }
}

void copyOnce(benchmark::State &state)
{
    copyLimit(state, 8 * state.range(0));
}

} // namespace

void addPlotterRows()
{
    addRow("vertices of BarPlotter", replaceSeries<BarPlotter>);
    addRow("vertices of BarPlotter|memcpy of the input", copyOnce);
    addRow("vertices of AreaPlotter", replaceSeries<AreaPlotter>);
    addRow("vertices of AreaPlotter|memcpy of the input", copyOnce);
    addRow("vertices of BarPlotterDx", replaceSeries<BarPlotterDx>);
    addRow("vertices of BarPlotterDx|memcpy of the input", copyOnce);
    addRow("as many bars of BarPlotterDx", replaceSeries<BarPlotterDx, 2>);
    addRow("as many bars of BarPlotterDx|BarPlotter", replaceSeries<BarPlotter>);
}
