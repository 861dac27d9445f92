// SPDX-License-Identifier: MIT
#include "views/store/SeriesDifference.h"

#include "common/Change.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr qint64 portionSize = 65536;
constexpr qint64 turnMilliseconds = 5;

} // namespace

SeriesDifference::SeriesDifference(QObject *parent)
    : QObject(parent),
      m_differences("SeriesDifference"),
      m_portion(portionSize),
      m_lessened(portionSize)
{
    m_work.setInterval(0);
    connect(&m_work, &QTimer::timeout, this, &SeriesDifference::work);
}

SeriesDifference::~SeriesDifference()
{
    for (const STerm &term : {m_minuend, m_subtrahend}) {
        if (term.series)
            disconnect(term.series, nullptr, this, nullptr); // in a circle, the store tells of its own end
    }
}

void SeriesDifference::setSeries(STerm &term, SeriesStore *series)
{
    if (series == term.series)
        return;
    const bool isBoth = m_minuend.series == m_subtrahend.series;
    if (term.series && !isBoth)
        disconnect(term.series, nullptr, this, nullptr);
    term.series = series;
    if (series) {
        connect(series, &SeriesStore::changed, this, &SeriesDifference::look, Qt::UniqueConnection);
        connect(series, &SeriesStore::completeChanged, this, &SeriesDifference::look, Qt::UniqueConnection);
        connect(series, &QObject::destroyed, this, &SeriesDifference::restart, Qt::UniqueConnection);
    }
    restart();
    emit seriesChanged();
}

void SeriesDifference::setFactor(double factor)
{
    if (!std::isfinite(factor) || !change(m_factor, factor))
        return;
    restart();
    emit factorChanged();
}

void SeriesDifference::restart()
{
    m_differences.begin();
    for (STerm *term : {&m_minuend, &m_subtrahend})
        term->revision = term->series ? term->series->revision() : 0;
    look();
}

void SeriesDifference::look()
{
    const auto isOther = [](const STerm &term) { return term.series && term.series->revision() != term.revision; };
    if (isOther(m_minuend) || isOther(m_subtrahend))
        return restart();
    const bool hasWork = m_minuend.series && m_subtrahend.series;
    if (store()->isComplete() == hasWork)
        store()->setComplete(!hasWork);
    if (hasWork)
        store()->setStartTime(m_minuend.series->startTime());
    setBusy(hasWork);
}

void SeriesDifference::setBusy(bool busy)
{
    if (busy == m_work.isActive())
        return;
    if (busy)
        m_work.start();
    else
        m_work.stop();
    emit busyChanged();
}

/// Works out as much as there is, at most for one turn.
void SeriesDifference::work()
{
    const SeriesSnapshot values = m_minuend.series->frameSnapshot();
    const SeriesSnapshot others = m_subtrahend.series->frameSnapshot();
    const qint64 end = std::min(values.end(), others.end());
    const auto extent = [this] { return std::pair(store()->data()->begin(), m_differences.end()); };
    const auto before = extent();
    QElapsedTimer turn;
    turn.start();
    bool isAppended = true;
    while (isAppended && m_differences.end() < end && turn.elapsed() < turnMilliseconds) {
        const qint64 from = m_differences.end();
        const qint64 to = std::min(end, from + portionSize);
        values.copyValues(from, to, m_portion.data());
        others.copyValues(from, to, m_lessened.data());
        for (int i = 0; i < int(to - from); ++i)
            m_portion[i] -= m_factor * m_lessened[i];
        isAppended = m_differences.append(m_portion.constData(), to - from);
    }
    m_differences.dropBefore(std::max(values.begin(), others.begin()));
    if (extent() != before)
        store()->announce(); // only then, as in a circle it would lead back here
    const bool isAll = m_differences.end() >= end;
    if (!isAll && isAppended)
        return;
    if (isAll && m_minuend.series->isComplete() && m_subtrahend.series->isComplete())
        store()->setComplete(true);
    setBusy(false);
}
