// SPDX-License-Identifier: MIT
#pragma once

#include "plotters/SAreaPlotterProgram.h"

/// The program "area_gradient": as "area", shaded from "color_bot" at value 0 to "color_top" at the top of the view.
class SAreaGradientProgram : public SAreaPlotterProgram
{
public:
    QString name() const override { return QStringLiteral("area_gradient"); }
    QString vertexSource() const override;
    QString fragmentSource() const override;
};
