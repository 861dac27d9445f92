// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QVector>

/// Feeds a plotter with what its chart shows of a data node's series, and a margin around it.
///
/// A plotter turns every value that it is given into triangles, shown or not: with ten million values that is half a
/// gigabyte. It also counts bars in single precision from the first one on, which is exact near the first one only. A
/// part of a few thousand bars is cheap and exact at every zoom. GUI thread.
class VisiblePart : public QObject
{
    Q_OBJECT
    /// A Filter1D; its `data` and `area` are read.
    Q_PROPERTY(QObject *node READ node WRITE setNode NOTIFY changed)
    /// A ChartArea; its `zoomRect` says what is shown.
    Q_PROPERTY(QObject *chart READ chart WRITE setChart NOTIFY changed)
    /// An IPlotter1D; gets `plotterArea` and `data`.
    Q_PROPERTY(QObject *plotter READ plotter WRITE setPlotter NOTIFY changed)
    /// For a plotter that draws a line through points instead of bars: each point stands in the middle of its bar, and
    /// the line gets further points, about one a pixel. Such a plotter ends with the last point that is shown; the line
    /// would end up to a bar before the chart does.
    Q_PROPERTY(bool asLine READ isLine WRITE setLine NOTIFY changed)

public:
    using QObject::QObject;

    QObject *node() const { return m_node; }
    void setNode(QObject *node);
    QObject *chart() const { return m_chart; }
    void setChart(QObject *chart);
    QObject *plotter() const { return m_plotter; }
    void setPlotter(QObject *plotter);
    bool isLine() const { return m_asLine; }
    void setLine(bool asLine);

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
    /// How many times what is shown a part may be.
    int widest() const { return m_asLine ? 6 : 16; }
    int pointsPerBar() const;
    void serve(const SRange &part, double barWidth);
    void restart();

    QPointer<QObject> m_node;
    QPointer<QObject> m_chart;
    QPointer<QObject> m_plotter;
    bool m_asLine = false;
    QVector<double> m_series; ///< the node's, shared
    QRectF m_area;
    SRange m_part; ///< what the plotter has
};
