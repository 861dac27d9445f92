// SPDX-License-Identifier: MIT
#include "views/items/SeriesSource.h"

#include "views/store/NumberList.h"

#include <QJSValue>

SeriesSource::SeriesSource(QObject *parent) : QObject(parent) {}

bool SeriesSource::give(SeriesStore *store)
{
    if (store == m_given)
        return false;
    if (m_given)
        disconnect(m_given, nullptr, this, nullptr);
    m_given = store;
    if (store) {
        watch(store);
        connect(store, &QObject::destroyed, this, &SeriesSource::forget);
    }
    emit givenChanged();
    emit changed();
    return true;
}

void SeriesSource::forget()
{
    m_given = nullptr;
    emit givenChanged();
    emit changed();
}

QString SeriesSource::setValues(const QVariant &values)
{
    const bool isScript = values.userType() == qMetaTypeId<QJSValue>();
    const QVariant plain = isScript ? values.value<QJSValue>().toVariant() : values;
    const SNumbers numbers = numbersIn(plain);
    if (!numbers.error.isEmpty())
        return numbers.error;
    m_values = plain;
    if (!m_own) {
        m_own = new SeriesStore(this);
        watch(m_own);
    }
    m_own->setData(seriesOver(numbers.values)); // it tells of the change by itself
    emit valuesChanged();
    return QString();
}

void SeriesSource::watch(SeriesStore *store)
{
    connect(store, &SeriesStore::changed, this, [this, store] {
        if (store == this->store())
            emit changed();
    });
}
