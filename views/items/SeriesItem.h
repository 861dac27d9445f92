// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QQuickItem>

class PlotSeries;
class PlotView;

/// Draws one series of a view, as a child of the view's layer of series. It covers the plot area and draws in device
/// pixels of it. Made and deleted by the view.
class SeriesItem : public QQuickItem
{
    Q_OBJECT

public:
    SeriesItem(PlotView &view, PlotSeries &series, QQuickItem *layer);

private:
    void followLook();

    PlotView &m_view;
    QPointer<PlotSeries> m_series;
};
