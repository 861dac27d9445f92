// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVariantList>
#include <QVector>

#include <limits>

class PlotView;

/// A line across the view that tells the values where it stands. Declared inside a view; it's moved by the mouse, and
/// by Shift and the left and right keys. Two of them tell their differences. GUI thread.
class PlotCursor : public QObject
{
    Q_OBJECT
    /// Where it stands, in values of the x axis. NaN or an infinity changes nothing.
    Q_PROPERTY(double x READ x WRITE setX NOTIFY xChanged)
    /// The values there, one for each series of the view, in their order: that of the bar, or of the nearest point.
    /// NaN: none.
    Q_PROPERTY(QVariantList values READ values NOTIFY valuesChanged)
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible NOTIFY visibleChanged)

public:
    explicit PlotCursor(QObject *parent = nullptr);

    double x() const { return m_x; }
    void setX(double x);
    QVariantList values() const;
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible);

    // Called by the view.

    const QVector<double> &numbers() const { return m_values; }
    /// Looks anew at the values of the view's series.
    void look(const PlotView &view);
    void forgetValues();

signals:
    void xChanged();
    void valuesChanged();
    void visibleChanged();

private:
    double m_x = 0.0;
    bool m_visible = true;
    QVector<double> m_values;
};
