// SPDX-License-Identifier: MIT
#include "views/store/MovingAverage.h"

#include "common/Change.h"
#include "views/store/Levels.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int deepest = 1'000'000;
constexpr qint64 portionSize = 65536;
constexpr qint64 turnMilliseconds = 5;

/// Adds and takes away values, without the rest that plain sums would keep of large ones.
class RunningSum
{
public:
    void add(double value, int sign)
    {
        if (std::isnan(value))
            return;
        m_count += sign;
        const double summand = sign * value;
        const double sum = m_sum + summand;
        m_rest += std::abs(m_sum) >= std::abs(summand) ? (m_sum - sum) + summand : (summand - sum) + m_sum;
        m_sum = sum;
    }
    double mean() const
    {
        return m_count > 0 ? (m_sum + m_rest) / double(m_count) : std::numeric_limits<double>::quiet_NaN();
    }

private:
    double m_sum = 0.0;
    double m_rest = 0.0;
    qint64 m_count = 0;
};

} // namespace

MovingAverage::MovingAverage(QObject *parent) : QObject(parent), m_averages("MovingAverage")
{
    m_work.setInterval(0);
    connect(&m_work, &QTimer::timeout, this, &MovingAverage::work);
}

MovingAverage::~MovingAverage()
{
    if (m_source)
        disconnect(m_source, nullptr, this, nullptr); // in a circle, the store tells of its own end
}

void MovingAverage::setSource(SeriesStore *source)
{
    if (source == m_source)
        return;
    if (m_source)
        disconnect(m_source, nullptr, this, nullptr);
    m_source = source;
    if (source) {
        connect(source, &SeriesStore::changed, this, &MovingAverage::look);
        connect(source, &SeriesStore::completeChanged, this, &MovingAverage::look);
        connect(source, &QObject::destroyed, this, &MovingAverage::restart);
    }
    restart();
    emit sourceChanged();
}

void MovingAverage::setDepth(int depth)
{
    if (!change(m_depth, std::clamp(depth, 1, deepest)))
        return;
    restart();
    emit depthChanged();
}

void MovingAverage::restart()
{
    m_grows = false;
    workOutAgain();
}

void MovingAverage::workOutAgain()
{
    m_endedAt = 0;
    m_averages.begin();
    m_revision = m_source ? m_source->revision() : 0;
    look();
}

void MovingAverage::look()
{
    if (m_source && m_source->revision() != m_revision)
        return restart();
    if (m_source && m_endedAt > 0 && m_source->data()->end() > m_endedAt) {
        m_grows = true;
        return workOutAgain();
    }
    if (m_source && !m_source->isComplete())
        m_grows = false; // it tells of its end
    const bool hasWork = m_source && m_depth > 1;
    if (store()->isComplete() == hasWork)
        store()->setComplete(!hasWork);
    if (m_source)
        store()->setStartTime(m_source->startTime());
    setBusy(hasWork);
}

void MovingAverage::setBusy(bool busy)
{
    if (busy == m_work.isActive())
        return;
    if (busy)
        m_work.start();
    else
        m_work.stop();
    emit busyChanged();
}

/// Works out as much as there is, at most for one turn. Averages near the end wait until it's clear what comes there.
void MovingAverage::work()
{
    const SeriesSnapshot values = m_source ? m_source->frameSnapshot() : SeriesSnapshot();
    leaveOutBefore(values.begin());
    const bool isAll = m_source && m_source->isComplete() && !m_grows;
    const qint64 end = isAll ? values.end() : values.end() - m_depth / 2;
    QElapsedTimer turn;
    turn.start();
    qint64 from = m_averages.end();
    for (; from < end && turn.elapsed() < turnMilliseconds; from = m_averages.end()) {
        if (!average(values, from, std::min(end, from + std::max(portionSize, qint64(m_depth)))))
            break;
    }
    if (from < end && turn.elapsed() >= turnMilliseconds)
        return;
    if (isAll && from >= end) {
        m_endedAt = values.end();
        store()->setComplete(true);
    }
    setBusy(false);
}

/// What has left the source has no averages, however much of it there was.
void MovingAverage::leaveOutBefore(qint64 begin)
{
    if (m_averages.end() < roundDown(begin, chunkBits))
        m_averages.begin(begin);
}

/// Appends the averages of [from, to). False if memory ran out.
bool MovingAverage::average(const SeriesSnapshot &values, qint64 from, qint64 to)
{
    const qint64 before = (m_depth - 1) / 2;
    const qint64 count = to - from;
    m_portion.resize(int(count + m_depth));
    m_means.resize(int(count));
    double *const portion = m_portion.data(); // value from - before + k is at k
    values.copyValues(from - before, to + m_depth - before, portion);
    RunningSum sum;
    for (int k = 0; k < m_depth; ++k)
        sum.add(portion[k], 1);
    for (qint64 i = 0; i < count; ++i) {
        m_means[int(i)] = sum.mean();
        sum.add(portion[i], -1);
        sum.add(portion[i + m_depth], 1);
    }
    const bool isAppended = m_averages.append(m_means.constData(), count);
    m_averages.dropBefore(values.begin());
    store()->announce();
    return isAppended;
}
