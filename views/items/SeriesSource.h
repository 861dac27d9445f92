// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesStore.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

/// Where the numbers of a series come from: a store that was given, or values of its own. The store wins while there is
/// one. GUI thread.
class SeriesSource : public QObject
{
    Q_OBJECT

public:
    explicit SeriesSource(QObject *parent);

    /// The store that was given, null if there is none; it stays the giver's.
    SeriesStore *given() const { return m_given; }
    bool give(SeriesStore *store);
    /// What was set last.
    QVariant values() const { return m_values; }
    /// Numbers as a list, QVector<double> or ArrayBuffer. What is none of them is refused: the result says why, and is
    /// empty if all is well.
    QString setValues(const QVariant &values);

    /// The store in use; null if there are no numbers from anywhere.
    const SeriesStore *store() const { return m_given ? m_given.data() : m_own; }
    /// The numbers of this frame.
    SeriesSnapshot snapshot() const { return store() ? store()->frameSnapshot() : SeriesSnapshot(); }

signals:
    /// The store that was given is another, or was destroyed.
    void givenChanged();
    void valuesChanged();
    /// snapshot() is another one.
    void changed();

private:
    void watch(SeriesStore *store);
    void forget();

    QPointer<SeriesStore> m_given;
    SeriesStore *m_own = nullptr;
    QVariant m_values;
};
