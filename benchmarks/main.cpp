// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>

/// Plotters build their arrays once they were synchronised, which takes an OpenGL context.
int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    if (!context.create() || !context.makeCurrent(&surface))
        qFatal("There is no OpenGL context here; xvfb-run gives one");

    addSeriesRows();
    addPlotterRows();
    addFilterRows();
    addReadingRows();
    addReaderRows();
    addQueryRows();
    addStoreRows();
    addShapeRows();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
