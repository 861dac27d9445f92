// SPDX-License-Identifier: MIT
#include "views/items/RectsNode.h"

RectsNode::RectsNode() : m_geometry(QSGGeometry::defaultAttributes_Point2D(), 0)
{
    m_geometry.setDrawingMode(QSGGeometry::DrawTriangles);
    setGeometry(&m_geometry);
    setMaterial(&m_material);
}

void RectsNode::show(const QVector<QRectF> &rects, const QColor &color)
{
    if (m_material.color() != color) {
        m_material.setColor(color);
        markDirty(DirtyMaterial);
    }
    if (m_rects == rects)
        return;
    m_rects = rects;
    m_geometry.allocate(6 * int(rects.size()));
    QSGGeometry::Point2D *vertex = m_geometry.vertexDataAsPoint2D();
    for (const QRectF &rect : rects) {
        const float left = float(rect.left()), right = float(rect.right());
        const float top = float(rect.top()), bottom = float(rect.bottom());
        (vertex++)->set(left, top);
        (vertex++)->set(right, top);
        (vertex++)->set(left, bottom);
        (vertex++)->set(left, bottom);
        (vertex++)->set(right, top);
        (vertex++)->set(right, bottom);
    }
    markDirty(DirtyGeometry);
}
