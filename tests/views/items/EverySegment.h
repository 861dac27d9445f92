// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QQuickItem>
#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>
#include <QVector>

#include <cmath>

/// Draws each segment of a line by itself, with the triangles of a pen that is a pixel high and of one that is a pixel
/// wide: no columns, no cells. The scene graph's backend decides which pixels these are.
class EverySegment : public QQuickItem
{
public:
    EverySegment(QQuickItem *parent, double ratio, const QColor &color)
        : QQuickItem(parent),
          m_ratio(ratio),
          m_color(color)
    {
        setFlag(ItemHasContents);
    }

    /// In device pixels from the item's corner; NaN is a gap.
    void show(const QVector<double> &xs, const QVector<double> &ys)
    {
        m_xs = xs;
        m_ys = ys;
        update();
    }

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *) override
    {
        delete old;
        auto *all = new QSGNode;
        m_corners.clear();
        for (int i = 0; i < m_ys.size(); ++i) {
            addPoint(i);
            if (m_corners.size() > 30'000 || i + 1 == m_ys.size()) { // more than 65536 aren't drawn
                all->appendChildNode(createNode());
                m_corners.clear();
            }
        }
        return all;
    }

private:
    QSGNode *createNode() const
    {
        auto *node = new QSGGeometryNode;
        auto *geometry = new QSGGeometry(QSGGeometry::defaultAttributes_Point2D(), int(m_corners.size()));
        geometry->setDrawingMode(QSGGeometry::DrawTriangles);
        std::copy(m_corners.begin(), m_corners.end(), geometry->vertexDataAsPoint2D());
        node->setGeometry(geometry);
        node->setFlag(QSGNode::OwnsGeometry);
        auto *material = new QSGFlatColorMaterial;
        material->setColor(m_color);
        node->setMaterial(material);
        node->setFlag(QSGNode::OwnsMaterial);
        return node;
    }

    void addPoint(int i)
    {
        if (std::isnan(m_ys[i]))
            return;
        if (i > 0 && !std::isnan(m_ys[i - 1])) {
            addPen(m_xs[i - 1], m_ys[i - 1], m_xs[i], m_ys[i], 0.0, 0.5);
            addPen(m_xs[i - 1], m_ys[i - 1], m_xs[i], m_ys[i], 0.5, 0.0);
        }
        // The pixel of a first point; and of one that is just on a vertical middle, where triangles don't count both
        // ends.
        const bool isFirst = i == 0 || std::isnan(m_ys[i - 1]);
        const double column = std::floor(m_xs[i]);
        if (isFirst || m_xs[i] == column + 0.5)
            addPen(column, std::floor(m_ys[i]) + 0.5, column + 1.0, std::floor(m_ys[i]) + 0.5, 0.0, 0.5);
    }

    void addPen(double x0, double y0, double x1, double y1, double wide, double high)
    {
        const QPointF corners[] = {{x0 - wide, y0 - high}, {x0 + wide, y0 + high}, {x1 - wide, y1 - high},
                                   {x1 - wide, y1 - high}, {x0 + wide, y0 + high}, {x1 + wide, y1 + high}};
        for (const QPointF &corner : corners) {
            QSGGeometry::Point2D point;
            point.set(float(corner.x() / m_ratio), float(corner.y() / m_ratio));
            m_corners.append(point);
        }
    }

    double m_ratio;
    QColor m_color;
    QVector<double> m_xs;
    QVector<double> m_ys;
    QVector<QSGGeometry::Point2D> m_corners;
};
