// SPDX-License-Identifier: MIT
#pragma once

#include "chart/IChartArea.h"

/// A chart area that counts what it is asked for.
class CountingArea : public IChartArea
{
public:
    ~CountingArea() override { withdraw(); }
    void requestUpdate() override
    {
        ++requests;
        IChartArea::requestUpdate();
    }
    void updateChartRect() override
    {
        ++fits;
        IChartArea::updateChartRect();
    }

    int requests = 0;
    int fits = 0; ///< one for each request that was accepted
};
