// SPDX-License-Identifier: MIT
#include "views/store/SeriesStore.h"

#include <QSignalSpy>
#include <QtTest>

#include <thread>

class tst_SeriesStore : public QObject
{
    Q_OBJECT

private slots:
    void appendsNumbersAndLists();
    void manyAppendsAreToldOnce();
    void aForeignThreadAppends();
};

void tst_SeriesStore::appendsNumbersAndLists()
{
    SeriesStore store;
    store.append(QVariant(1.5));
    store.append(QVariant(QVariantList{2, -3.0}));
    QCOMPARE(store.count(), 3.0);
    QCOMPARE(store.minimum(), -3.0);
    QCOMPARE(store.maximum(), 2.0);
}

void tst_SeriesStore::manyAppendsAreToldOnce()
{
    SeriesStore store;
    QSignalSpy changes(&store, &SeriesStore::changed);
    for (int i = 0; i < 1000; ++i)
        store.append(double(i));
    QCOMPARE(changes.count(), 0);
    QTRY_COMPARE(changes.count(), 1);
    QCOMPARE(store.frameSnapshot().count(), qint64(1000));
}

void tst_SeriesStore::aForeignThreadAppends()
{
    SeriesStore store;
    std::thread thread([writer = store.writer()]() mutable {
        for (int i = 0; i < 100000; ++i)
            writer.append(double(i));
    });
    QTRY_COMPARE(store.count(), 100000.0);
    thread.join();
    QCOMPARE(store.maximum(), 99999.0);
}

QTEST_GUILESS_MAIN(tst_SeriesStore)
#include "tst_SeriesStore.moc"
