// SPDX-License-Identifier: MIT
#pragma once

#include "chart/IChartArea.h"
#include "common/Link.h"
#include "filters/DecimatorFilter.h"
#include "filters/Filter1D.h"

#include <QBasicTimer>

/// Publishes its input at the resolution of a chart: of a pyramid of maxima, the level whose bins are about a pixel
/// wide.
///
/// Zooming or resizing the chart publishes another level. Without a chart area, the input itself is published. An empty
/// series is ignored: the node publishes what it has once more. GUI thread.
///
/// A series of less than 2^20 values has all its levels at once. Of a longer one, the levels with 256 values to a bin
/// or more are built when the first of them is published. A background thread builds the finer ones once the node has
/// had both a chart area and no new series for 50 ms. A zoom that needs a level before it is built waits for it; later
/// ones compute nothing.
class DecimatorU64 : public Filter1D, public DecimatorFilter<double>
{
    Q_OBJECT
    /// The chart that shows the series. The level follows at its next change of width or zoom or with the next series,
    /// not when it is set. One that is destroyed is forgotten without a signal, and the level stays.
    Q_PROPERTY(IChartArea *chartArea READ chartArea WRITE setChartArea NOTIFY chartAreaChanged)

public:
    explicit DecimatorU64(QObject *parent = nullptr);
    ~DecimatorU64() override;

    IChartArea *chartArea() const { return m_chartArea.get(); }
    void setChartArea(IChartArea *chartArea);

    /// The selected level.
    const QVector<double> &data() const override;

signals:
    void chartAreaChanged();

protected:
    /// Deliberate: a series that moves the level is published twice, by the update of the level and as new data.
    bool _filter_func(const QVector<double> &data) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void updateLevel();
    void finishWhenAtRest();

    Link<IChartArea> m_chartArea;
    QBasicTimer m_rest; ///< runs while the next series may come before the present one is worth more work
};
