// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/CalculatedStore.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>

/// The running average of a series, in a store of its own that grows as the source does. It's worked out in portions
/// of some milliseconds between the events of this object's thread, which so isn't held up.
///
/// Value i is the mean of the `depth` values around value i of the source, from i - (depth - 1) / 2 on, rounded down;
/// gaps are left out, and so is what lies beyond the ends. Where there are only gaps, it's a gap.
///
/// While the source isn't complete, its last averages wait for the values to come. A store that programs append to
/// counts as complete all the time, so its averages reach its end at first. Once more values come behind that end, they
/// are worked out again, and from then on end depth / 2 values before the source does.
class MovingAverage : public QObject
{
    Q_OBJECT
    /// The series to average, or null.
    Q_PROPERTY(SeriesStore *source READ source WRITE setSource NOTIFY sourceChanged)
    /// How many values are averaged, 1 to 1000000; what lies outside is brought inside.
    Q_PROPERTY(int depth READ depth WRITE setDepth NOTIFY depthChanged)
    /// The averages. Never null. It's complete once the source is and all is worked out. If memory runs out, it isn't,
    /// and a warning says so; the rest is tried again when more values come.
    Q_PROPERTY(SeriesStore *store READ store CONSTANT)
    /// Whether there is something to work out now.
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)

public:
    explicit MovingAverage(QObject *parent = nullptr);
    ~MovingAverage() override;

    SeriesStore *source() const { return m_source; }
    void setSource(SeriesStore *source);
    int depth() const { return m_depth; }
    void setDepth(int depth);
    SeriesStore *store() { return &m_averages.store(); }
    bool isBusy() const { return m_work.isActive(); }

signals:
    void sourceChanged();
    void depthChanged();
    void busyChanged();

private:
    void restart();
    void workOutAgain();
    void look();
    void work();
    void setBusy(bool busy);
    void leaveOutBefore(qint64 begin);
    bool average(const SeriesSnapshot &values, qint64 from, qint64 to);

    QPointer<SeriesStore> m_source;
    int m_depth = 1;
    int m_revision = 0;   ///< of the source: another one has other values
    qint64 m_endedAt = 0; ///< the end of the source when the averages near it were worked out; 0 before that
    bool m_grows = false; ///< values came behind that end
    CalculatedStore m_averages;
    QTimer m_work;
    QVector<double> m_portion; ///< of the source, with what is around it
    QVector<double> m_means;
};
