// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// One axis of a view: which part of the values is shown. GUI thread.
class PlotAxis : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double min READ min WRITE setMin NOTIFY minChanged)
    Q_PROPERTY(double max READ max WRITE setMax NOTIFY maxChanged)
    /// Whether the view keeps min and max around the values of its series. Off as soon as min or max is set.
    Q_PROPERTY(bool autoRange READ autoRange WRITE setAutoRange NOTIFY autoRangeChanged)

public:
    double min() const { return m_min; }
    void setMin(double min);
    double max() const { return m_max; }
    void setMax(double max);
    /// Both at once, without leaving the automatic range.
    void setRange(double min, double max);
    bool autoRange() const { return m_autoRange; }
    void setAutoRange(bool autoRange);
    virtual bool isLog() const { return false; }

signals:
    void minChanged();
    void maxChanged();
    void autoRangeChanged();
    /// After minChanged and maxChanged, once however many of them changed.
    void rangeChanged();

protected:
    explicit PlotAxis(QObject *parent = nullptr);

private:
    double m_min = 0.0;
    double m_max = 1.0;
    bool m_autoRange = true;
};
