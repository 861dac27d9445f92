// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QRectF>
#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>
#include <QVector>

/// Rectangles of one color, as lines of a grid are. Render thread, GUI thread blocked.
class RectsNode : public QSGGeometryNode
{
public:
    RectsNode();

    void show(const QVector<QRectF> &rects, const QColor &color);

private:
    QSGGeometry m_geometry;
    QSGFlatColorMaterial m_material;
    QVector<QRectF> m_rects;
};
