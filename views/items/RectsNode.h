// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QRectF>
#include <QSGNode>
#include <QVector>

#include <memory>
#include <vector>

class QQuickWindow;
class QSGSimpleRectNode;

/// The border of a rectangle, inside of it.
inline QVector<QRectF> frameOf(const QRectF &rect, double width)
{
    return {{rect.left(), rect.top(), rect.width(), width},
            {rect.left(), rect.bottom() - width, rect.width(), width},
            {rect.left(), rect.top(), width, rect.height()},
            {rect.right() - width, rect.top(), width, rect.height()}};
}

/// Whether the scene graph of a window draws vertices of any kind. The software renderer doesn't: it knows rectangles
/// and pictures. Any thread, once the window has drawn.
bool drawsGeometry(const QQuickWindow &window);

/// Rectangles of one color, as lines of a grid are. Render thread, GUI thread blocked.
class RectsNode : public QSGNode
{
public:
    explicit RectsNode(const QQuickWindow &window);
    ~RectsNode() override;

    /// A color that is wholly transparent shows nothing.
    void show(const QVector<QRectF> &wanted, const QColor &color);

private:
    class TrianglesNode;

    void showEach();

    std::unique_ptr<TrianglesNode> m_triangles;               ///< all of them; null where those can't be drawn
    std::vector<std::unique_ptr<QSGSimpleRectNode>> m_single; ///< one for each, where triangles can't be drawn
    QVector<QRectF> m_rects;
    QColor m_color;
};

/// Rectangles of one color, and others over them. Render thread, GUI thread blocked.
class FramedRectsNode : public QSGNode
{
public:
    explicit FramedRectsNode(const QQuickWindow &window);
    ~FramedRectsNode() override;

    RectsNode fills;
    RectsNode lines;
};
