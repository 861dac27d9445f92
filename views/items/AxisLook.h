// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisMapping.h"
#include "views/items/TimeTicks.h"

#include <QString>
#include <QVector>

class PlotAxis;

/// A tick with its label, where it stands on the axis.
struct STickLabel
{
    double pixels = 0.0;
    QString text;
};

/// All that there is to draw of one axis: places in pixels, ascending in value.
struct SAxisLook
{
    QVector<STickLabel> labels; ///< of the major ticks
    QVector<double> minor;
    QString base; ///< what the labels are counted from, or the day; empty if they stand for themselves
};

/// The ticks and labels of an axis. `pixels` is the least distance of two labels with numbers.
SAxisLook axisLook(const PlotAxis &axis, const AxisMapping &mapping, double pixels, const SLabelSpace &space);
