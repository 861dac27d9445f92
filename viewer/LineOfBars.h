// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QVector>

/// Feeds an AreaPlotter with a line through the middles of a data node's bars, as far as its chart shows them.
///
/// Such a plotter ends with the last point in view, so a line with one point to a bar would end up to a bar before the
/// chart does. This one has further points between the bars, about one a pixel; only what is shown has room for them.
/// GUI thread.
class LineOfBars : public QObject
{
    Q_OBJECT
    /// A Filter1D; its `data` and `area` are read.
    Q_PROPERTY(QObject *node READ node WRITE setNode NOTIFY changed)
    /// A ChartArea; its `zoomRect` says what is shown.
    Q_PROPERTY(QObject *chart READ chart WRITE setChart NOTIFY changed)
    /// An AreaPlotter; gets `plotterArea` and `data`. Null while nothing is drawn as a line.
    Q_PROPERTY(QObject *plotter READ plotter WRITE setPlotter NOTIFY changed)

public:
    using QObject::QObject;

    QObject *node() const { return m_node; }
    void setNode(QObject *node);
    QObject *chart() const { return m_chart; }
    void setChart(QObject *chart);
    QObject *plotter() const { return m_plotter; }
    void setPlotter(QObject *plotter);

    /// The bar of the node's series over x, standing on 0; null for none.
    Q_INVOKABLE QRectF barAt(double x) const;

public slots:
    void update();

signals:
    void changed();

private:
    struct SRange
    {
        int first = 0;
        int end = 0;
    };

    SRange shownRange(double barWidth) const;
    bool isServed(const SRange &shown) const;
    int pointsPerBar() const;
    void serve(const SRange &part, double barWidth);
    void restart();

    QPointer<QObject> m_node;
    QPointer<QObject> m_chart;
    QPointer<QObject> m_plotter;
    QVector<double> m_series; ///< the node's, shared
    QRectF m_area;
    SRange m_part; ///< what the plotter has
};
