// SPDX-License-Identifier: MIT
#pragma once

#include "plotters/IPlotter1D.h"

#include <functional>

/// Writes down what a node feeds it.
class RecordingPlotter : public IPlotter1D
{
public:
    using IPlotter1D::IPlotter1D;
    ~RecordingPlotter() override { withdraw(); }

    void setData(const QVector<double> &data) override
    {
        series.append(data);
        if (onData)
            onData();
    }
    void setPlotterArea(const QRectF &area) override
    {
        areas.append(area);
        if (onArea)
            onArea();
    }

    QVector<QVector<double>> series;
    QVector<QRectF> areas;
    std::function<void()> onData; ///< called last, so it may delete the plotter
    std::function<void()> onArea;
};
