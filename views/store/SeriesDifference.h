// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/CalculatedStore.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>

/// The difference of two series, value by value, in a store of its own that grows as both do: value i of `minuend` less
/// `factor` times value i of `subtrahend`. Where either has a gap, the difference has one, too; it ends where the
/// shorter series ends. Where values stand isn't known here. It's worked out in portions of some milliseconds between
/// the events of this object's thread, to which all of it belongs.
class SeriesDifference : public QObject
{
    Q_OBJECT
    /// The two series. While one is null, `store` is empty.
    Q_PROPERTY(SeriesStore *minuend READ minuend WRITE setMinuend NOTIFY seriesChanged)
    Q_PROPERTY(SeriesStore *subtrahend READ subtrahend WRITE setSubtrahend NOTIFY seriesChanged)
    /// NaN and infinities change nothing.
    Q_PROPERTY(double factor READ factor WRITE setFactor NOTIFY factorChanged)
    /// The differences. Never null. It's complete once both series are and all is worked out, and refuses append().
    /// If memory runs out, it isn't, and a warning says so; the rest is tried again when more values come.
    Q_PROPERTY(SeriesStore *store READ store CONSTANT)
    /// Whether there is something to work out now.
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)

public:
    explicit SeriesDifference(QObject *parent = nullptr);
    ~SeriesDifference() override;

    SeriesStore *minuend() const { return m_minuend.series; }
    void setMinuend(SeriesStore *series) { setSeries(m_minuend, series); }
    SeriesStore *subtrahend() const { return m_subtrahend.series; }
    void setSubtrahend(SeriesStore *series) { setSeries(m_subtrahend, series); }
    double factor() const { return m_factor; }
    void setFactor(double factor);
    SeriesStore *store() { return &m_differences.store(); }
    bool isBusy() const { return m_work.isActive(); }

signals:
    void seriesChanged();
    void factorChanged();
    void busyChanged();

private:
    struct STerm
    {
        QPointer<SeriesStore> series;
        int revision = 0; ///< of the series: another one has other values
    };

    void setSeries(STerm &term, SeriesStore *series);
    void restart();
    void look();
    void work();
    void setBusy(bool busy);

    STerm m_minuend;
    STerm m_subtrahend;
    double m_factor = 1.0;
    CalculatedStore m_differences;
    QTimer m_work;
    QVector<double> m_portion;
    QVector<double> m_lessened;
};
