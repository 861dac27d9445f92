// SPDX-License-Identifier: MIT
#include "common/BlockMaxima.h"
#include "common/Maxima.h"
#include "common/Series.h"
#include "common/Storage.h"
#include "filters/Buckets.h"
#include "filters/Pyramid.h"
#include "filters/PyramidBuilder.h"
#include "filters/RunningAverage.h"
#include "geometry/BarEdges.h"
#include "geometry/Slots.h"
#include "geometry/Vertices.h"
#include "geometry/VisibleElements.h"
#include "plotters/BarPlotterDx.h"
#include "sources/NumberLines.h"

#include <QBuffer>
#include <QRectF>

#include <valgrind/callgrind.h>

#include <cstdlib>

// Runs each hot function once under callgrind, which counts its instructions. The counts do not depend on what else the
// machine does. Storage exists beforehand where the plotters and nodes keep theirs, too.

namespace {

constexpr int values = 100'000;

/// Counts what `work` executes, under `name`.
template <class Work>
void count(const char *name, Work &&work)
{
    CALLGRIND_TOGGLE_COLLECT;
    work();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name);
}

/// The same in every run; without a pattern that would make branches easy.
QVector<double> noise(int size)
{
    QVector<double> series(size);
    quint64 state = 1;
    for (double &value : series) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        value = double(state >> 11) / 9007199254740992.0;
    }
    return series;
}

QByteArray lines(const QVector<double> &series)
{
    QByteArray text;
    for (const double value : series)
        text += QByteArray::number(1000.0 * value, 'g', 6) + '\n';
    return text;
}

/// Results go here, so that no call is left out.
volatile double sink;

void countSeries(const QVector<double> &series)
{
    QVector<double> copy = series;
    copy.detach();
    count("sameSeries", [&] { sink = sameSeries(series, copy); });
    count("maximumFromZero", [&] { sink = maximumFromZero(series.constData(), values); });
    count("finiteInSingle", [&] { sink = finiteInSingle(series.constData(), values); });
    count("firstMaximum", [&] { sink = firstMaximum(series.constData(), values); });

    BlockMaxima maxima;
    count("BlockMaxima::of", [&] { maxima = BlockMaxima::of(series); });
    count("BlockMaxima::maximumIn", [&] { sink = maxima.maximumIn(7, values - 7); });
}

void countFilters(const QVector<double> &series)
{
    QVector<QVector<double>> levels{series};
    buildPyramid(levels, 2.0); // makes the storage
    count("buildPyramid", [&] { buildPyramid(levels, 2.0); });
    PyramidBuilder builder(levels);
    count("PyramidBuilder::waitFor", [&] {
        builder.begin(2.0, 0);
        builder.waitFor(levels.size() - 1);
    });

    QVector<double> reduced(256);
    count("writeFirstMaxima", [&] { writeFirstMaxima(series.constData(), values, reduced.data(), reduced.size()); });

    QVector<double> averages;
    restart(averages, values);
    count("appendAverages", [&] { appendAverages(series, 16, values, averages); });
}

void countVertices(const QVector<double> &series)
{
    QVector<float> heights(4 * values);
    count("writeBarHeights", [&] { writeBarHeights(series.constData(), values, heights.data()); });

    QVector<SPointVertex> fill(2 * values);
    QVector<SPointVertex> border(values);
    count("writeFillVertices", [&] { writeFillVertices(series.constData(), 0, values, fill.data()); });
    count("writeBorderVertices", [&] { writeBorderVertices(series.constData(), 0, values, border.data()); });

    QVector<SHResVertex> corners(4 * (values / 2));
    count("writeHResVertices", [&] { writeHResVertices(series.constData(), 0.0, 0.0, values / 2, corners.data()); });

    QVector<float> streamed(8 * values);
    const SPlacedEdges edges{-1.0, 2.0 / values, 0.0f, 1.0f};
    count("writeBars", [&] { writeBars(series.constData(), {0, values}, edges, streamed.data()); });

    QVector<uint> indices;
    indices.reserve(6 * values);
    count("appendBarIndices", [&] { appendBarIndices(indices, 0, values); });
}

void countQueries(const QVector<double> &series)
{
    BarEdges edges;
    count("BarEdges::of", [&] { edges = BarEdges::of(series, 0.0); });
    count("BarEdges::edgeAtOrBeyond", [&] { sink = edges.edgeAtOrBeyond(0.61 * edges.total()); });
    count("BarEdges::maximumIn", [&] { sink = edges.maximumIn(7, values / 2 - 7); });
    const SPlacedEdges row{0.0, 1.0, -1.0f, 2.0f / 10'000'000};
    count("elementsOnPixelCentres", [&] { sink = elementsOnPixelCentres(row, {0, 10'000'000}, {1000, 8}).size(); });
    count("slotAt", [&] { sink = slotAt(QRectF(0.0, 0.0, values, 1.0), values, 0.61 * values); });
}

void countReading(const QVector<double> &series)
{
    QByteArray text = lines(series);
    QBuffer device(&text);
    if (!device.open(QIODevice::ReadOnly))
        std::abort();
    count("readNumberLines", [&] { sink = readNumberLines(device, values, {1 << 18, 1}).values.size(); });
}

} // namespace

int main()
{
    const QVector<double> series = noise(values);
    countSeries(series);
    countFilters(series);
    countVertices(series);
    countQueries(series);
    countReading(series);
    return 0;
}
