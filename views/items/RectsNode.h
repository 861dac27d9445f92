// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QRectF>
#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>
#include <QVector>

/// The border of a rectangle, inside of it.
inline QVector<QRectF> frameOf(const QRectF &rect, double width)
{
    return {{rect.left(), rect.top(), rect.width(), width},
            {rect.left(), rect.bottom() - width, rect.width(), width},
            {rect.left(), rect.top(), width, rect.height()},
            {rect.right() - width, rect.top(), width, rect.height()}};
}

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
