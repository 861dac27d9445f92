// SPDX-License-Identifier: MIT
#include "views/items/SeriesNode.h"

#include "views/items/WideRects.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace {

constexpr int mostRects = 10'000; // more than 65536 corners in a node aren't all drawn

} // namespace

SeriesNode::SeriesNode()
{
    for (QSGNode *part : {&m_fill, &m_stroke}) {
        part->setFlag(OwnedByParent, false);
        appendChildNode(part);
    }
}

SeriesNode::~SeriesNode()
{
    m_fills.clear(); // before the nodes that they are in
    m_strokes.clear();
}

template <class Node>
void SeriesNode::provide(std::vector<std::unique_ptr<Node>> &nodes, size_t count)
{
    QSGNode &parent = std::is_same_v<Node, FillNode> ? m_fill : m_stroke;
    nodes.resize(std::min(nodes.size(), count));
    while (nodes.size() < count) {
        nodes.push_back(std::make_unique<Node>());
        nodes.back()->setFlag(OwnedByParent, false);
        parent.appendChildNode(nodes.back().get());
    }
}

void SeriesNode::show(const SSeriesShape &shape, double ratioX, double ratioY)
{
    showFill(shape.fill.rects(), shape.fillColor, ratioX, ratioY);
    showStroke(strokeOf(shape.path, shape.pen), shape.pathColor, ratioX, ratioY);
}

void SeriesNode::showFill(const std::vector<SPixelRect> &rects, const QColor &color, double ratioX, double ratioY)
{
    makeWide(rects, m_wide);
    const int count = int(m_wide.size());
    provide(m_fills, size_t((count + mostRects - 1) / mostRects));
    for (size_t i = 0; i < m_fills.size(); ++i) {
        const int first = int(i) * mostRects;
        m_fills[i]->show(m_wide.data() + first, std::min(mostRects, count - first), color, ratioX, ratioY);
    }
}

void SeriesNode::showStroke(const std::vector<SStrokePart> &parts, const QColor &color, double ratioX, double ratioY)
{
    provide(m_strokes, parts.size());
    for (size_t i = 0; i < parts.size(); ++i)
        m_strokes[i]->show(parts[i], color, ratioX, ratioY);
}

SeriesNode::FillNode::FillNode() : m_geometry(QSGGeometry::defaultAttributes_Point2D(), 0)
{
    m_geometry.setDrawingMode(QSGGeometry::DrawTriangles);
    setGeometry(&m_geometry);
    setMaterial(&m_material);
}

void SeriesNode::FillNode::show(const SPixelRect *rects, int count, const QColor &color, double ratioX, double ratioY)
{
    m_geometry.allocate(6 * count);
    QSGGeometry::Point2D *corner = m_geometry.vertexDataAsPoint2D();
    for (const SPixelRect *rect = rects; rect != rects + count; ++rect) {
        const auto left = float(rect->left / ratioX);
        const auto top = float(rect->top / ratioY);
        const auto right = float(rect->right / ratioX);
        const auto bottom = float(rect->bottom / ratioY);
        corner[0].set(left, top);
        corner[1].set(right, top);
        corner[2].set(left, bottom);
        corner[3].set(left, bottom);
        corner[4].set(right, top);
        corner[5].set(right, bottom);
        corner += 6;
    }
    markDirty(DirtyGeometry);
    if (m_material.color() != color) {
        m_material.setColor(color);
        markDirty(DirtyMaterial);
    }
}

SeriesNode::StrokeNode::StrokeNode() : m_geometry(QSGGeometry::defaultAttributes_ColoredPoint2D(), 0, 0)
{
    m_geometry.setDrawingMode(QSGGeometry::DrawTriangles);
    setGeometry(&m_geometry);
    setMaterial(&m_material);
}

void SeriesNode::StrokeNode::show(const SStrokePart &part, const QColor &color, double ratioX, double ratioY)
{
    m_geometry.allocate(int(part.points.size()), int(part.corners.size()));
    std::copy(part.corners.begin(), part.corners.end(), m_geometry.indexDataAsUShort());
    QSGGeometry::ColoredPoint2D *point = m_geometry.vertexDataAsColoredPoint2D();
    for (const SStrokePoint &corner : part.points) {
        const double alpha = color.alphaF() * double(corner.coverage);
        const auto channel = [alpha](double share) { return uchar(std::lround(255.0 * share * alpha)); };
        point->set(float(double(corner.x) / ratioX), float(double(corner.y) / ratioY), channel(color.redF()),
                   channel(color.greenF()), channel(color.blueF()), channel(1.0));
        ++point;
    }
    markDirty(DirtyGeometry);
}
