// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointF>
#include <QVariantList>

class PlotSeries;
class PlotView;

/// What the series of a view are under the pointer: each value, or of a column of pixels that stands for many its
/// extreme and how many they are. GUI thread.
class PlotReadout : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool active READ isActive NOTIFY changed)
    /// In item pixels of the view.
    Q_PROPERTY(QPointF position READ position NOTIFY changed)
    /// Where the values stand, if that's one place; else the left edge of the column.
    Q_PROPERTY(QString title READ title NOTIFY changed)
    /// A list of {name, color, text}.
    Q_PROPERTY(QVariantList rows READ rows NOTIFY changed)

public:
    explicit PlotReadout(PlotView &view);

    bool isActive() const { return m_isActive && !m_rows.isEmpty(); }
    QPointF position() const { return m_position; }
    QString title() const { return m_title; }
    QVariantList rows() const { return m_rows; }

    void point(const QPointF &position);
    void leave();

signals:
    void changed();

private:
    void watchSeries();
    void look();
    /// `place` is the x of the value if there's only one in the column, else NaN.
    QVariantMap rowOf(const PlotSeries &series, double from, double to, double &place) const;

    PlotView &m_view;
    bool m_isActive = false;
    QPointF m_position;
    QString m_title;
    QVariantList m_rows;
};
