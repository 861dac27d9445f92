// SPDX-License-Identifier: MIT
#include "filters/DecimatorU64.h"

#include "chart/ChartArea.h"

#include <QAbstractEventDispatcher>
#include <QTimerEvent>

DecimatorU64::DecimatorU64(QObject *parent) : Filter1D(parent) {}

DecimatorU64::~DecimatorU64()
{
    withdraw();
}

void DecimatorU64::setChartArea(IChartArea *chartArea)
{
    if (chartArea == m_chartArea.get())
        return;
    // Deliberate: a former chart area stays connected; its changes then update the level for the present one.
    m_chartArea.set(chartArea);
    constexpr auto onceOnly = Qt::ConnectionType(Qt::AutoConnection | Qt::UniqueConnection);
    if (chartArea)
        connect(chartArea, &QQuickItem::widthChanged, this, &DecimatorU64::updateLevel, onceOnly);
    if (auto *zoomable = qobject_cast<ChartArea *>(chartArea))
        connect(zoomable, &ChartArea::zoomRectChanged, this, &DecimatorU64::updateLevel, onceOnly);
    finishWhenAtRest();
    emit chartAreaChanged();
}

const QVector<double> &DecimatorU64::data() const
{
    return selectedLevel();
}

bool DecimatorU64::_filter_func(const QVector<double> &data)
{
    if (isInput(data))
        return false;
    setInput(data);
    finishWhenAtRest();
    const QPointer<DecimatorU64> alive(this);
    updateLevel();
    return alive;
}

void DecimatorU64::finishWhenAtRest()
{
    constexpr int restMs = 50; // two frames of a stream
    if (m_chartArea && m_builder.isUnfinished() && QAbstractEventDispatcher::instance())
        m_rest.start(restMs, this);
}

void DecimatorU64::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_rest.timerId()) {
        Filter1D::timerEvent(event);
        return;
    }
    m_rest.stop();
    m_builder.goOnInBackground();
}

void DecimatorU64::updateLevel()
{
    if (!m_chartArea || m_chartArea->width() < 1.0 || m_levels.at(0).isEmpty())
        return;
    const int level = levelFor(m_chartArea->viewRect().width() / m_chartArea->width(), m_area);
    if (level == m_level)
        return;
    m_level = level;
    _request_data_update();
}
