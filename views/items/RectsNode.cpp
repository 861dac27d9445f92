// SPDX-License-Identifier: MIT
#include "views/items/RectsNode.h"

#include <QQuickWindow>
#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>
#include <QSGRendererInterface>
#include <QSGSimpleRectNode>

#include <algorithm>

namespace {

// The renderer leaves a geometry without vertices out of its batches, and doesn't notice when some come later. So there
// is always a rectangle, if only an empty one.
constexpr int leastRects = 1;
constexpr int verticesOfRect = 6;

} // namespace

bool drawsGeometry(const QQuickWindow &window)
{
    return window.rendererInterface()->graphicsApi() != QSGRendererInterface::Software;
}

class RectsNode::TrianglesNode : public QSGGeometryNode
{
public:
    TrianglesNode() : m_geometry(QSGGeometry::defaultAttributes_Point2D(), leastRects * verticesOfRect)
    {
        m_geometry.setDrawingMode(QSGGeometry::DrawTriangles);
        setGeometry(&m_geometry);
        setMaterial(&m_material);
        showRects({});
    }

    void showColor(const QColor &color)
    {
        m_material.setColor(color);
        markDirty(DirtyMaterial);
    }

    void showRects(const QVector<QRectF> &rects)
    {
        m_geometry.allocate(verticesOfRect * std::max(leastRects, int(rects.size())));
        QSGGeometry::Point2D *vertex = m_geometry.vertexDataAsPoint2D();
        QSGGeometry::Point2D *const end = vertex + m_geometry.vertexCount();
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
        std::fill(vertex, end, QSGGeometry::Point2D{0.0f, 0.0f});
        markDirty(DirtyGeometry);
    }

private:
    QSGGeometry m_geometry;
    QSGFlatColorMaterial m_material;
};

RectsNode::RectsNode(const QQuickWindow &window)
{
    if (!drawsGeometry(window))
        return;
    m_triangles = std::make_unique<TrianglesNode>();
    m_triangles->setFlag(OwnedByParent, false);
    appendChildNode(m_triangles.get());
}

RectsNode::~RectsNode()
{
    removeAllChildNodes();
}

void RectsNode::show(const QVector<QRectF> &wanted, const QColor &color)
{
    // Blending what can't be seen with what's below costs more than drawing it opaque.
    const QVector<QRectF> rects = color.alpha() > 0 ? wanted : QVector<QRectF>();
    const bool isOtherColor = m_color != color;
    const bool areOthers = m_rects != rects;
    m_color = color;
    m_rects = rects;
    if (!m_triangles) {
        if (isOtherColor || areOthers)
            showEach();
        return;
    }
    if (isOtherColor)
        m_triangles->showColor(color);
    if (areOthers)
        m_triangles->showRects(rects);
}

void RectsNode::showEach()
{
    while (int(m_single.size()) > m_rects.size()) {
        removeChildNode(m_single.back().get());
        m_single.pop_back();
    }
    while (int(m_single.size()) < m_rects.size()) {
        m_single.push_back(std::make_unique<QSGSimpleRectNode>());
        m_single.back()->setFlag(OwnedByParent, false);
        appendChildNode(m_single.back().get());
    }
    for (int i = 0; i < m_rects.size(); ++i) {
        m_single[size_t(i)]->setRect(m_rects.at(i));
        m_single[size_t(i)]->setColor(m_color);
    }
}

FramedRectsNode::FramedRectsNode(const QQuickWindow &window) : fills(window), lines(window)
{
    for (RectsNode *node : {&fills, &lines}) {
        node->setFlag(OwnedByParent, false);
        appendChildNode(node);
    }
}

FramedRectsNode::~FramedRectsNode()
{
    removeAllChildNodes();
}
