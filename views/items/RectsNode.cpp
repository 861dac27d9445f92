// SPDX-License-Identifier: MIT
#include "views/items/RectsNode.h"

#include <algorithm>

namespace {

// The renderer leaves a geometry without vertices out of its batches, and doesn't notice when some come later. So there
// is always a rectangle, if only an empty one.
constexpr int leastRects = 1;
constexpr int verticesOfRect = 6;

} // namespace

RectsNode::RectsNode() : m_geometry(QSGGeometry::defaultAttributes_Point2D(), leastRects * verticesOfRect)
{
    std::fill_n(m_geometry.vertexDataAsPoint2D(), m_geometry.vertexCount(), QSGGeometry::Point2D{0.0f, 0.0f});
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
    m_geometry.allocate(verticesOfRect * std::max(leastRects, int(rects.size())));
    QSGGeometry::Point2D *vertex = m_geometry.vertexDataAsPoint2D();
    std::fill_n(vertex, m_geometry.vertexCount(), QSGGeometry::Point2D{0.0f, 0.0f});
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
