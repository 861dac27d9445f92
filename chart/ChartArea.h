// SPDX-License-Identifier: MIT
#pragma once

#include "chart/IChartArea.h"

#include <QQuickItemGrabResult>
#include <QSharedPointer>

/// A chart area that shows a part of its chart rectangle, the zoom rectangle. Plotters are drawn and points are mapped
/// against it. Rectangles are in data coordinates.
class ChartArea : public IChartArea
{
    Q_OBJECT
    /// What is shown. Stored as set; each accepted request then cuts it with chartRect.
    Q_PROPERTY(QRectF zoomRect READ zoomRect WRITE setZoomRect NOTIFY zoomRectChanged)
    /// Whether requests fit the height to the largest visible value, at least 1.05.
    Q_PROPERTY(bool adaptChartHeight READ adaptChartHeight WRITE setAdaptChartHeight NOTIFY adaptChartHeightChanged)

public:
    explicit ChartArea(QQuickItem *parent = nullptr);
    ~ChartArea() override;

    const QRectF &zoomRect() const { return m_zoomRect; }
    void setZoomRect(const QRectF &zoomRect);
    bool adaptChartHeight() const { return m_adaptChartHeight; }
    void setAdaptChartHeight(bool adapt);

    const QRectF &viewRect() const override;
    Q_INVOKABLE QPointF mapPointToChart(QPointF point) override;
    void updateChartRect() override;

    /// Shows the whole chart rectangle.
    Q_INVOKABLE void resetZoomView();
    /// Grabs the item at twice its size and holds the result until the next call. Writes no file.
    Q_INVOKABLE void exportImage(QString path);

signals:
    void zoomRectChanged();
    void adaptChartHeightChanged();

private:
    double visibleMaximum() const;

    QRectF m_zoomRect{0.0, 0.0, 1.0, 1.0};
    QSharedPointer<QQuickItemGrabResult> m_pendingGrab;
    bool m_adaptChartHeight = true;
};
