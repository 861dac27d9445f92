// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/FrameLook.h"

#include <QFontMetricsF>
#include <QQuickItem>

class PlotView;

/// What lies around and under the series of a view: its background, the grid, ticks, labels and titles. It tells the
/// view what room it takes. Looked at once a frame, and only when an axis, the theme or the size is another. A child of
/// the view, behind all else.
class PlotFrame : public QQuickItem
{
    Q_OBJECT

public:
    explicit PlotFrame(PlotView &view);

    /// Without any room around the plot area.
    void setBare(bool isBare);
    /// Room that is kept free under the labels, for an overview.
    void setRoomBelow(double room);
    double roomBelow() const { return m_roomBelow; }
    /// Without labels and title of x, where another view under this one has them.
    void setTellsX(bool tellsX);
    bool hasLabelsOfX() const;
    QString headingOfX() const;
    /// Lays out now what would be laid out before the next frame.
    void layOutNow();
    /// The texts of the labels and titles that are shown, for tests and for who describes the view.
    QStringList texts() const;

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    void watchAxes();
    void layOutRoom(const QFontMetricsF &metrics);
    QMarginsF alignedWithLinked(QMarginsF room);
    double widthOfLabels(const QFontMetricsF &metrics);

    PlotView &m_view;
    LabelPool m_labels;
    SFrameLook m_look;
    QFont m_font;
    double m_labelWidth = 0.0; ///< of the y axis
    double m_ownLeft = 0.0;    ///< the room that it wants beside the plot
    double m_ownRight = 0.0;
    double m_roomBelow = 0.0;
    bool m_isBare = false;
    bool m_tellsX = true;
};
