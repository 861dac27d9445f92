// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

class PlotView;

/// How many values of the visible series have no place on the log scales of a view: on a log scale of y those of 0 and
/// below in the shown part of x, on one of x those that stand at 0 or below. Gaps don't count. It's counted shortly
/// after something changed. GUI thread.
class LeftOut : public QObject
{
    Q_OBJECT
    /// The number in a sentence; empty if it's 0.
    Q_PROPERTY(QString words READ words NOTIFY changed)

public:
    explicit LeftOut(PlotView &view);

    double count() const { return m_count; }
    QString words() const;
    /// Counts now what would be counted soon.
    void countNow();

signals:
    void changed();

private:
    void watchSeries();
    void look();

    PlotView &m_view;
    QTimer m_soon;
    double m_count = 0.0;
};
