// SPDX-License-Identifier: MIT
#include "views/items/SeriesItem.h"

#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"

SeriesItem::SeriesItem(PlotView &view, PlotSeries &series, QQuickItem *layer)
    : QQuickItem(layer),
      m_view(view),
      m_series(&series)
{
    connect(&series, &PlotSeries::visibleChanged, this, &SeriesItem::followLook);
    connect(&series, &PlotSeries::opacityChanged, this, &SeriesItem::followLook);
    followLook();
}

void SeriesItem::followLook()
{
    if (!m_series)
        return;
    setVisible(m_series->isVisible());
    setOpacity(m_series->opacity());
}
