// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/PlotAxis.h"

/// An axis on which equal differences are equally long. GUI thread.
class ValueAxis : public PlotAxis
{
    Q_OBJECT

public:
    explicit ValueAxis(QObject *parent = nullptr) : PlotAxis(false, parent) {}
};
