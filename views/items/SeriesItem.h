// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/SeriesShape.h"
#include "views/store/SeriesSnapshot.h"

#include <QPointer>
#include <QQuickItem>

class PlotSeries;
class PlotView;

/// Draws one series of a view, as a child of the view's layer of series. It covers the plot area and draws on whole
/// device pixels of it. Made and deleted by the view.
class SeriesItem : public QQuickItem
{
    Q_OBJECT

public:
    SeriesItem(PlotView &view, PlotSeries &series, QQuickItem *layer);

    /// Draws anew with the next frame.
    void redraw();

protected:
    // render thread, GUI thread blocked
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    void followLook();
    void followData();
    void cover();
    SSeriesFrame frame() const;
    bool hasTranslucentPath() const;
    QSGNode *pixelsOf(const SSeriesFrame &now) const;

    PlotView &m_view;
    QQuickItem &m_layer;
    QPointer<PlotSeries> m_series;
    SSeriesShape m_shape; ///< of the last frame; the render thread writes it while the GUI thread is blocked
    SeriesSnapshot m_seenValues;
    SeriesSnapshot m_seenPlaces;
};
