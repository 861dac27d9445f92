// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/SeriesShape.h"

#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>
#include <QSGVertexColorMaterial>

#include <memory>
#include <vector>

/// Draws the shape of a series with Qt's own materials. Render thread, GUI thread blocked.
class SeriesNode : public QSGNode
{
public:
    SeriesNode();
    ~SeriesNode() override;

    /// `ratioX` and `ratioY` are the device pixels of an item pixel.
    void show(const SSeriesShape &shape, double ratioX, double ratioY);

private:
    class FillNode : public QSGGeometryNode
    {
    public:
        FillNode();
        void show(const SPixelRect *rects, int count, const QColor &color, double ratioX, double ratioY);

    private:
        QSGGeometry m_geometry;
        QSGFlatColorMaterial m_material;
    };

    class StrokeNode : public QSGGeometryNode
    {
    public:
        StrokeNode();
        void show(const SStrokePart &part, const QColor &color, double ratioX, double ratioY);

    private:
        QSGGeometry m_geometry;
        QSGVertexColorMaterial m_material;
    };

    void showFill(const std::vector<SPixelRect> &rects, const QColor &color, double ratioX, double ratioY);
    void showStroke(const std::vector<SStrokePart> &parts, const QColor &color, double ratioX, double ratioY);

    /// Has as many nodes as are needed.
    template <class Node>
    void provide(std::vector<std::unique_ptr<Node>> &nodes, size_t count);

    std::vector<SPixelRect> m_wide; ///< kept for its memory
    QSGNode m_fill;                 ///< under the line
    QSGNode m_stroke;
    std::vector<std::unique_ptr<FillNode>> m_fills;
    std::vector<std::unique_ptr<StrokeNode>> m_strokes;
};
