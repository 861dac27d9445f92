// SPDX-License-Identifier: MIT
#include "views/store/SeriesStore.h"

#include "common/Change.h"
#include "views/store/NumberList.h"
#include "views/store/StoreState.h"

#include <QDebug>

#include <cmath>
#include <utility>

namespace {

void warn(const QObject *store, const QString &words)
{
    qWarning().noquote() << store << words;
}

SeriesStore::Refusal refusal = warn;

/// Up to here cells of external memory are built at once: some milliseconds.
constexpr qint64 mostBuiltAtOnce = 1 << 22;

} // namespace

SeriesWriter::SeriesWriter(std::shared_ptr<StoreState> state) : m_state(std::move(state)) {}

bool SeriesWriter::appendValues(SampleType type, const void *values, qint64 count)
{
    return m_state && m_state->append(type, values, count);
}

SeriesStore::SeriesStore(QObject *parent) : QObject(parent), m_state(std::make_shared<StoreState>(*this)) {}

SeriesStore::~SeriesStore()
{
    m_state->revoke();
}

void SeriesStore::setRefusal(Refusal newRefusal)
{
    refusal = newRefusal ? newRefusal : warn;
}

void SeriesStore::refuse(const QString &words) const
{
    refusal(this, words);
}

void SeriesStore::append(const QVariant &values)
{
    const SNumbers numbers = numbersIn(values);
    if (!numbers.error.isEmpty())
        refuse(QStringLiteral("append: ") + numbers.error);
    else if (isNothing(values))
        refuse(QStringLiteral("append: a number or a list of numbers was expected"));
    else if (!append(numbers.values.constData(), numbers.values.size()))
        refuse(QStringLiteral("append: ") + whyNotTaken());
}

void SeriesStore::appendBuffer(const QVariant &buffer, ValueType type)
{
    if (buffer.userType() != QMetaType::QByteArray) {
        refuse(QStringLiteral("appendBuffer: an ArrayBuffer was expected; of a typed array, hand over its buffer"));
        return;
    }
    if (!isSampleType(type)) {
        refuse(QStringLiteral("appendBuffer: %1 is not a value type").arg(int(type)));
        return;
    }
    const QByteArray bytes = buffer.toByteArray();
    const int size = sizeOf(SampleType(type));
    if (bytes.size() % size != 0)
        refuse(QStringLiteral("appendBuffer: %1 bytes are not a whole number of %2 values")
                   .arg(QString::number(bytes.size()), QLatin1String(nameOf(SampleType(type)))));
    else if (!appendValues(SampleType(type), bytes.constData(), bytes.size() / size))
        refuse(QStringLiteral("appendBuffer: ") + whyNotTaken());
}

QString SeriesStore::whyNotTaken() const
{
    if (m_state->isFilledElsewhere())
        return m_whyNotTaken;
    return QStringLiteral("a value doesn't fit into %1, or memory has run out")
        .arg(QLatin1String(nameOf(data()->type())));
}

void SeriesStore::clear()
{
    if (m_state->isFilledElsewhere())
        refuse(QStringLiteral("clear: ") + whyNotTaken());
    else if (snapshot().end() > 0)
        setData(SeriesData::create(data()->type()));
}

qreal SeriesStore::count() const
{
    return qreal(snapshot().count());
}

SeriesStore::ValueType SeriesStore::valueType() const
{
    return ValueType(data()->type());
}

void SeriesStore::setValueType(ValueType type)
{
    if (type == valueType())
        return;
    if (m_state->isFilledElsewhere()) {
        refuse(QStringLiteral("valueType: ") + whyNotTaken());
        return;
    }
    if (!isSampleType(type) || !snapshot().isEmpty()) {
        refuse(isSampleType(type) ? QStringLiteral("valueType: the store isn't empty; clear() it before")
                                  : QStringLiteral("valueType: %1 is not a value type").arg(int(type)));
        return;
    }
    setData(SeriesData::create(SampleType(type)));
}

qreal SeriesStore::minimum() const
{
    const SExtremes extremes = snapshot().extremes();
    return extremes.isEmpty() ? std::nan("") : extremes.lowest;
}

qreal SeriesStore::maximum() const
{
    const SExtremes extremes = snapshot().extremes();
    return extremes.isEmpty() ? std::nan("") : extremes.highest;
}

qreal SeriesStore::gapCount() const
{
    const SeriesSnapshot now = snapshot();
    return qreal(now.count() - now.statisticsIn(now.begin(), now.end()).count);
}

bool SeriesStore::isComplete() const
{
    return m_isFilled && data()->isBuilt();
}

void SeriesStore::setComplete(bool complete)
{
    m_isFilled = complete;
    showChanges();
}

void SeriesStore::setFilledElsewhere(bool isFilledElsewhere, const QString &words)
{
    m_whyNotTaken = words.isEmpty() ? QStringLiteral("another thread fills this store") : words;
    m_state->setFilledElsewhere(isFilledElsewhere);
    if (!isFilledElsewhere)
        m_state->setMaximumCount(m_state->maximumCount()); // what came meanwhile may be too much
}

qreal SeriesStore::maximumCount() const
{
    return qreal(m_state->maximumCount());
}

void SeriesStore::setMaximumCount(qreal count)
{
    constexpr qreal most = qreal(qint64(1) << 53);
    const qint64 wanted = count > 0.0 ? qint64(std::min(count, most)) : 0;
    if (wanted == m_state->maximumCount())
        return;
    m_state->setMaximumCount(wanted);
    emit maximumCountChanged();
}

void SeriesStore::setStartTime(qreal seconds)
{
    if (changeExactly(m_startTime, seconds))
        emit startTimeChanged();
}

bool SeriesStore::appendValues(SampleType type, const void *values, qint64 count)
{
    return m_state->append(type, values, count);
}

SeriesWriter SeriesStore::writer() const
{
    return SeriesWriter(m_state);
}

SeriesSnapshot SeriesStore::snapshot() const
{
    return data()->snapshot();
}

std::shared_ptr<SeriesData> SeriesStore::data() const
{
    return m_state->data();
}

void SeriesStore::announce()
{
    m_state->announce();
}

void SeriesStore::setData(const std::shared_ptr<SeriesData> &data)
{
    const ValueType before = valueType();
    if (data->end() <= mostBuiltAtOnce)
        data->buildNow();
    ++m_revision;
    m_state->setData(data);
    if (!data->isBuilt()) {
        data->buildInBackground([state = std::weak_ptr<StoreState>(m_state)] {
            if (const std::shared_ptr<StoreState> alive = state.lock())
                alive->announce();
        });
    }
    if (before != valueType())
        emit valueTypeChanged();
}

void SeriesStore::showChanges()
{
    m_state->announced();
    const SeriesSnapshot before = std::exchange(m_frame, snapshot());
    const bool wasComplete = std::exchange(m_wasComplete, isComplete());
    const bool isDifferent = before != m_frame || !m_frame.isExact() || wasComplete != m_wasComplete;
    if (isDifferent)
        emit countChanged();
    if (wasComplete != m_wasComplete)
        emit completeChanged();
    emit changed();
}
