// SPDX-License-Identifier: MIT
#include "views/items/LeftOut.h"

#include "common/Change.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"
#include "views/items/SeriesProbe.h"

namespace {

constexpr int soonMilliseconds = 50; // of 1e9 values, counting takes some: not in each frame of a pan

qint64 countOf(const SeriesProbe &probe, const PlotAxis &x, const PlotAxis &y)
{
    const SeriesSnapshot &values = probe.values();
    if (probe.isEmpty())
        return 0;
    qint64 count = 0;
    if (x.isLog())
        count += values.statisticsIn(values.begin(), probe.firstAbove(0.0)).count;
    if (!y.isLog())
        return count;
    const qint64 from = probe.firstFrom(x.min());
    const qint64 to = probe.firstAbove(x.max());
    if (values.extremesIn(from, to).lowest > 0.0)
        return count;
    const SStatistics statistics = values.statisticsIn(from, to);
    return count + statistics.count - statistics.positiveCount;
}

} // namespace

LeftOut::LeftOut(PlotView &view) : m_view(view)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(soonMilliseconds);
    connect(&m_soon, &QTimer::timeout, this, &LeftOut::countNow);
    connect(&view, &PlotView::rangesChanged, this, &LeftOut::look);
    connect(&view, &PlotView::seriesListChanged, this, &LeftOut::watchSeries);
}

void LeftOut::watchSeries()
{
    for (PlotSeries *series : m_view.series()) {
        connect(series, &PlotSeries::dataChanged, this, &LeftOut::look, Qt::UniqueConnection);
        connect(series, &PlotSeries::redrawNeeded, this, &LeftOut::look, Qt::UniqueConnection);
        connect(series, &PlotSeries::visibleChanged, this, &LeftOut::look, Qt::UniqueConnection);
    }
    look();
}

void LeftOut::look()
{
    const bool canLose = m_view.axisX()->isLog() || m_view.axisY()->isLog();
    if (!m_soon.isActive() && (canLose || m_count > 0.0))
        m_soon.start();
}

void LeftOut::countNow()
{
    m_soon.stop();
    qint64 count = 0;
    for (const PlotSeries *series : m_view.series()) {
        if (series->isVisible())
            count += countOf(SeriesProbe(*series), *m_view.axisX(), *m_view.axisY());
    }
    if (change(m_count, double(count)))
        emit changed();
}

QString LeftOut::words() const
{
    if (m_count == 0.0)
        return {};
    return m_count == 1.0 ? tr("1 value of 0 or below has no place on the log scale")
                          : tr("%1 values of 0 or below have no place on the log scale").arg(m_count, 0, 'f', 0);
}
