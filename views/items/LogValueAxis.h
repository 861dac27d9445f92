// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/PlotAxis.h"

/// An axis on which equal ratios are equally long. Values of 0 and below have no place on it. GUI thread.
class LogValueAxis : public PlotAxis
{
    Q_OBJECT

public:
    explicit LogValueAxis(QObject *parent = nullptr) : PlotAxis(true, parent) {}
};
