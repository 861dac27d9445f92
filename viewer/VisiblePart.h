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
    /// Moves the plotter to the right by so many of its bars: a half for one that draws points instead of bars.
    Q_PROPERTY(double shift READ shift WRITE setShift NOTIFY changed)

public:
    using QObject::QObject;

    QObject *node() const { return m_node; }
    void setNode(QObject *node);
    QObject *chart() const { return m_chart; }
    void setChart(QObject *chart);
    QObject *plotter() const { return m_plotter; }
    void setPlotter(QObject *plotter);
    double shift() const { return m_shift; }
    void setShift(double shift);

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
    void serve(const SRange &part, double barWidth);
    void restart();

    QPointer<QObject> m_node;
    QPointer<QObject> m_chart;
    QPointer<QObject> m_plotter;
    double m_shift = 0.0;
    QVector<double> m_series; ///< the node's, shared
    QRectF m_area;
    SRange m_part; ///< what the plotter has
};
