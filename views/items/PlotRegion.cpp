// SPDX-License-Identifier: MIT
#include "views/items/PlotRegion.h"

#include "common/Change.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"

#include <algorithm>

PlotRegion::PlotRegion(QObject *parent) : QObject(parent) {}

void PlotRegion::setFrom(double from)
{
    if (!std::isfinite(from) || !changeExactly(m_from, from))
        return;
    emit fromChanged();
}

void PlotRegion::setTo(double to)
{
    if (!std::isfinite(to) || !changeExactly(m_to, to))
        return;
    emit toChanged();
}

void PlotRegion::setSeries(PlotSeries *series)
{
    if (m_series == series)
        return;
    m_series = series;
    emit seriesChanged();
}

void PlotRegion::setVisible(bool visible)
{
    if (!change(m_visible, visible))
        return;
    emit visibleChanged();
}

void PlotRegion::setName(const QString &name)
{
    if (!change(m_name, name))
        return;
    emit nameChanged();
}

void PlotRegion::look(const PlotView &view)
{
    const PlotSeries *series = m_series;
    if (!series) {
        const QVector<PlotSeries *> &all = view.series();
        const auto visible =
            std::find_if(all.begin(), all.end(), [](const PlotSeries *one) { return one->isVisible(); });
        series = visible == all.end() ? nullptr : *visible;
    }
    std::optional<RegionPart> part;
    if (series)
        part.emplace(SeriesProbe(*series), m_from, m_to);
    const bool isSame = part && m_part ? part->isSame(*m_part) : !part && !m_part;
    m_part = part; // even if it's the same: an old one would keep values that have left the store
    if (isSame)
        return;
    m_told = part ? part->statistics() : SRegionStatistics();
    emit statisticsChanged();
}
