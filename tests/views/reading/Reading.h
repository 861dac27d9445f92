// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/SeriesReader.h"
#include "views/store/SeriesSnapshot.h"

#include <QFile>
#include <QtTest>

#include <cmath>

// What tests of the reader share.

inline QByteArray shownValue(double value)
{
    return std::isnan(value) ? QByteArray("-") : QByteArray::number(value, 'g', 17);
}

inline SeriesSnapshot snapshotOf(const QObject *store)
{
    return static_cast<const SeriesStore *>(store)->snapshot();
}

/// The values of a store: "1 2 -", a dash for a gap.
inline QByteArray shownStore(const SeriesStore *store)
{
    if (!store)
        return "none";
    const SeriesSnapshot snapshot = store->snapshot();
    QByteArrayList values;
    for (qint64 i = snapshot.begin(); i < snapshot.end(); ++i)
        values << shownValue(snapshot.valueAt(i));
    return values.join(' ');
}

/// All stores, column after column: "1 2|3 -".
inline QByteArray shownStores(const SeriesReader &reader)
{
    QByteArrayList columns;
    for (const QObject *store : reader.stores())
        columns << shownStore(static_cast<const SeriesStore *>(store));
    return columns.join('|');
}

inline bool hasEnded(const SeriesReader &reader)
{
    return reader.status() == SeriesReader::Error
        || (reader.status() == SeriesReader::Ready && (!reader.store() || reader.store()->isComplete()));
}

inline void writeFile(const QString &path, const QByteArray &bytes, QIODevice::OpenMode mode = QIODevice::WriteOnly)
{
    QFile file(path);
    if (!file.open(mode | QIODevice::Unbuffered) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}
