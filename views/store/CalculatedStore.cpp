// SPDX-License-Identifier: MIT
#include "views/store/CalculatedStore.h"

#include <QDebug>

CalculatedStore::CalculatedStore(const char *who)
{
    m_store.setFilledElsewhere(
        true, QStringLiteral("a %1 fills this store. Use a store of your own").arg(QLatin1String(who)));
}

void CalculatedStore::begin(qint64 index)
{
    m_isShort = false;
    if (end() > 0 || index > 0)
        m_store.setData(SeriesData::create(SampleType::Float64, index));
}

bool CalculatedStore::append(const double *values, qint64 count)
{
    const bool isAppended = m_store.data()->append(values, count);
    if (!isAppended && !m_isShort)
        qWarning().noquote() << &m_store
                             << QStringLiteral("out of memory: value %1 and all that follow are missing").arg(end());
    m_isShort = !isAppended;
    return isAppended;
}
