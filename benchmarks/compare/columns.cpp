// SPDX-License-Identifier: MIT
#include "benchmarks/compare/QuickStage.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>

#include <algorithm>
#include <cmath>

namespace {

/// Draws the maximum of each pixel column: what a programmer who knows the series' use writes by hand.
class ColumnMaxima final : public QQuickItem
{
public:
    ColumnMaxima(const QString &kind, const QVector<double> &series) : m_kind(kind), m_series(series)
    {
        setFlag(ItemHasContents);
    }

    void setSeries(const QVector<double> &series)
    {
        m_series = series;
        update();
    }
    void setShown(const SView &view)
    {
        m_view = view;
        update();
    }

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *) override
    {
        auto *node = static_cast<QSGGeometryNode *>(old);
        if (!node)
            node = createNode();
        QSGGeometry::Point2D *points = node->geometry()->vertexDataAsPoint2D();
        const int columns = int(width());
        for (int x = 0; x < columns; ++x) {
            const float y = float(height() * (1.0 - maximumOf(x, columns) / plotTop));
            writeColumn(points, x, y);
        }
        node->markDirty(QSGNode::DirtyGeometry);
        return node;
    }

private:
    bool isLine() const { return m_kind == QLatin1String("line"); }
    bool isBars() const { return m_kind == QLatin1String("bars"); }
    int pointsPerColumn() const { return isLine() ? 1 : isBars() ? 6 : 2; }

    QSGGeometryNode *createNode() const
    {
        auto *node = new QSGGeometryNode;
        auto *geometry = new QSGGeometry(QSGGeometry::defaultAttributes_Point2D(), pointsPerColumn() * int(width()));
        geometry->setDrawingMode(isLine()       ? QSGGeometry::DrawLineStrip
                                     : isBars() ? QSGGeometry::DrawTriangles
                                                : QSGGeometry::DrawTriangleStrip);
        node->setGeometry(geometry);
        node->setFlag(QSGNode::OwnsGeometry);
        auto *material = new QSGFlatColorMaterial;
        material->setColor(QColor(7, 203, 242));
        node->setMaterial(material);
        node->setFlag(QSGNode::OwnsMaterial);
        return node;
    }

    double maximumOf(int column, int columns) const
    {
        const double count = m_series.size();
        const double perColumn = (m_view.to - m_view.from) * count / columns;
        const double from = m_view.from * count + column * perColumn;
        const int first = std::clamp(int(from), 0, m_series.size() - 1);
        const int last = std::clamp(int(std::ceil(from + perColumn)), first + 1, m_series.size());
        const double *values = m_series.constData();
        double maximum = 0.0;
        for (int i = first; i < last; ++i)
            maximum = values[i] > maximum ? values[i] : maximum;
        return maximum;
    }

    void writeColumn(QSGGeometry::Point2D *points, int x, float y) const
    {
        const float left = float(x);
        const float bottom = float(height());
        if (isLine()) {
            points[x].set(left + 0.5f, y);
        } else if (isBars()) {
            QSGGeometry::Point2D *corner = points + 6 * x;
            corner[0].set(left, bottom);
            corner[1].set(left + 1.0f, bottom);
            corner[2].set(left, y);
            corner[3].set(left, y);
            corner[4].set(left + 1.0f, bottom);
            corner[5].set(left + 1.0f, y);
        } else {
            points[2 * x].set(left + 0.5f, bottom);
            points[2 * x + 1].set(left + 0.5f, y);
        }
    }

    QString m_kind;
    QVector<double> m_series;
    SView m_view;
};

class Columns final : public Contender
{
public:
    QStringList variants(const QString &) const override { return {QString()}; }

    QWindow *open(const STask &task, const QVector<double> &series) override
    {
        m_item = new ColumnMaxima(task.kind, series);
        m_stage.open(m_item);
        return &m_stage.view();
    }
    void replace(const QVector<double> &series) override { m_item->setSeries(series); }
    void zoom(const SView &view) override { m_item->setShown(view); }

private:
    QuickStage m_stage;
    ColumnMaxima *m_item = nullptr;
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    Columns contender;
    return runContest(contender);
}
