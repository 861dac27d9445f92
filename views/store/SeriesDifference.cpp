// SPDX-License-Identifier: MIT
#include "views/store/SeriesDifference.h"

#include "common/Change.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>

namespace {

constexpr qint64 portionSize = 65536;
constexpr qint64 turnMilliseconds = 5;

} // namespace

SeriesDifference::SeriesDifference(QObject *parent) : QObject(parent), m_portion(portionSize), m_lessened(portionSize)
{
    m_work.setInterval(0);
    connect(&m_work, &QTimer::timeout, this, &SeriesDifference::work);
    m_store.setFilledElsewhere(true, QStringLiteral("a SeriesDifference fills this store. Use a store of your own"));
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
    if (m_store.snapshot().end() > 0)
        m_store.setData(SeriesData::create(SampleType::Float64));
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
    if (m_store.isComplete() == hasWork)
        m_store.setComplete(!hasWork);
    if (hasWork)
        m_store.setStartTime(m_minuend.series->startTime());
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
    const std::shared_ptr<SeriesData> differences = m_store.data();
    QElapsedTimer turn;
    turn.start();
    bool isAppended = true;
    while (isAppended && differences->end() < end && turn.elapsed() < turnMilliseconds) {
        const qint64 from = differences->end();
        const qint64 to = std::min(end, from + portionSize);
        values.copyValues(from, to, m_portion.data());
        others.copyValues(from, to, m_lessened.data());
        for (int i = 0; i < int(to - from); ++i)
            m_portion[i] -= m_factor * m_lessened[i];
        isAppended = differences->append(m_portion.constData(), to - from);
    }
    differences->dropBefore(std::max(values.begin(), others.begin()));
    m_store.announce();
    if (isAppended && differences->end() < end)
        return;
    if (m_minuend.series->isComplete() && m_subtrahend.series->isComplete())
        m_store.setComplete(true);
    setBusy(false);
}
