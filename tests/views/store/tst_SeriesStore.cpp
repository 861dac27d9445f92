// SPDX-License-Identifier: MIT
#include "views/store/NumberList.h"
#include "views/store/SeriesStore.h"

#include <QJSEngine>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <memory>
#include <thread>

namespace {

/// As the QML module does.
void throwIt(const QObject *store, const QString &words)
{
    if (QJSEngine *engine = qjsEngine(store))
        engine->throwError(words);
}

} // namespace

class tst_SeriesStore : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void beginsEmpty();
    void scriptsAppendNumbersAndLists();
    void scriptsAppendBuffers();
    void scriptsAreToldWhatIsWrong_data();
    void scriptsAreToldWhatIsWrong();
    void aWarningIsGivenWhereNobodyThrows();
    void theTypeChangesOnlyWhileEmpty();
    void manyAppendsAreToldOnce();
    void aFrameSeesWhatWasTold();
    void clearingBeginsAnew();
    void whatIsTooOldLeaves();
    void strangeMaximumCounts();
    void numbersAreShownWithoutACopy();
    void longNumbersAreBuiltInTheBackground();
    void externalValuesAreCopiedWhenTheyGrow();
    void completeMeansThatNothingIsMissing();
    void everyPropertyTellsOfItsChanges();
    void aForeignThreadAppends();
    void severalThreadsTakeTurns();
    void clearingWhileAThreadAppends();
    void theStoreMayGoBeforeItsWriter();
    void whatQmlHandsOverBecomesNumbers();

private:
    QVariant evaluate(const QString &expression);

    std::unique_ptr<QQmlEngine> m_engine;
    SeriesStore *m_store = nullptr;
    QString m_thrown;
};

void tst_SeriesStore::initTestCase()
{
    qmlRegisterType<SeriesStore>("Tested", 1, 0, "SeriesStore");
}

void tst_SeriesStore::init()
{
    SeriesStore::setRefusal(throwIt);
    m_engine = std::make_unique<QQmlEngine>();
    QQmlComponent component(m_engine.get());
    component.setData("import Tested 1.0\nSeriesStore {}", {});
    m_store = qobject_cast<SeriesStore *>(component.create());
    QVERIFY2(m_store, qPrintable(component.errorString()));
    m_store->setParent(m_engine.get());
    m_engine->rootContext()->setContextProperty(QStringLiteral("store"), m_store);
}

void tst_SeriesStore::cleanup()
{
    m_engine.reset();
    SeriesStore::setRefusal(nullptr);
}

/// What the expression is; what it throws is in m_thrown.
QVariant tst_SeriesStore::evaluate(const QString &expression)
{
    const QJSValue type = m_engine->newQMetaObject(&SeriesStore::staticMetaObject);
    m_engine->globalObject().setProperty(QStringLiteral("SeriesStore"), type);
    m_engine->globalObject().setProperty(QStringLiteral("store"), m_engine->newQObject(m_store));
    QQmlEngine::setObjectOwnership(m_store, QQmlEngine::CppOwnership);
    const QJSValue value = m_engine->evaluate(expression);
    m_thrown = value.isError() ? value.toString() : QString();
    return value.toVariant();
}

void tst_SeriesStore::beginsEmpty()
{
    QCOMPARE(m_store->count(), 0.0);
    QCOMPARE(m_store->valueType(), SeriesStore::Float64);
    QVERIFY(std::isnan(m_store->minimum()));
    QVERIFY(std::isnan(m_store->maximum()));
    QCOMPARE(m_store->gapCount(), 0.0);
    QVERIFY(m_store->isComplete());
    QCOMPARE(m_store->maximumCount(), 0.0);
    QVERIFY(std::isnan(m_store->startTime()));
}

void tst_SeriesStore::scriptsAppendNumbersAndLists()
{
    evaluate(QStringLiteral("store.append(1.5); store.append([2, -3.25, NaN, undefined, null]); store.append([])"));
    QCOMPARE(m_thrown, QString());
    QCOMPARE(m_store->count(), 6.0);
    QCOMPARE(m_store->minimum(), -3.25);
    QCOMPARE(m_store->maximum(), 2.0);
    QCOMPARE(m_store->gapCount(), 3.0);
    QCOMPARE(evaluate(QStringLiteral("store.count")).toDouble(), 6.0); // at once, not after an event
}

void tst_SeriesStore::scriptsAppendBuffers()
{
    evaluate(
        QStringLiteral("store.appendBuffer(new Float64Array([1, 2, 3]).buffer);"
                       "store.appendBuffer(new Int16Array([-4, 5]).buffer, SeriesStore.Int16);"
                       "store.appendBuffer(new ArrayBuffer(0), SeriesStore.UInt8);"
                       "store.append(new Float64Array([7]).buffer)"));
    QCOMPARE(m_thrown, QString());
    const double expected[] = {1.0, 2.0, 3.0, -4.0, 5.0, 7.0};
    QCOMPARE(m_store->count(), 6.0);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(m_store->snapshot().valueAt(i), expected[i]);
}

void tst_SeriesStore::scriptsAreToldWhatIsWrong_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("words");
    QTest::newRow("typed array") << "append(new Float64Array([1, 2]))"
                                 << "of a typed array, hand over its buffer";
    QTest::newRow("object") << "append({ a: 1 })"
                            << "a number or a list of numbers";
    QTest::newRow("text") << "append('12')"
                          << "a number or a list of numbers";
    QTest::newRow("truth") << "append(true)"
                           << "a number or a list of numbers";
    QTest::newRow("undefined") << "append(undefined)"
                               << "a number or a list of numbers";
    QTest::newRow("null") << "append(null)"
                          << "a number or a list of numbers";
    QTest::newRow("date") << "append(new Date())"
                          << "a number or a list of numbers";
    QTest::newRow("text in a list") << "append([1, 'x'])"
                                    << "entry 1 of the list is not a number";
    QTest::newRow("list in a list") << "append([[1]])"
                                    << "entry 0 of the list is not a number";
    QTest::newRow("truth in a list") << "append([1, 2, true])"
                                     << "entry 2 of the list is not a number";
    QTest::newRow("typed array as a buffer") << "appendBuffer(new Int8Array(3), 6)"
                                             << "hand over its buffer";
    QTest::newRow("list as a buffer") << "appendBuffer([1], 0)"
                                      << "an ArrayBuffer was expected";
    QTest::newRow("no buffer") << "appendBuffer(undefined, 0)"
                               << "an ArrayBuffer was expected";
    QTest::newRow("no type") << "appendBuffer(new ArrayBuffer(8), 77)"
                             << "77 is not a value type";
    QTest::newRow("below the types") << "appendBuffer(new ArrayBuffer(8), -1)"
                                     << "-1 is not a value type";
    QTest::newRow("half a value") << "appendBuffer(new ArrayBuffer(12), 0)"
                                  << "12 bytes are not a whole number of";
}

void tst_SeriesStore::scriptsAreToldWhatIsWrong()
{
    QFETCH(QString, call);
    QFETCH(QString, words);
    evaluate(QStringLiteral("store.") + call);
    QVERIFY2(m_thrown.contains(words), qPrintable(m_thrown));
    QCOMPARE(m_store->count(), 0.0);
}

void tst_SeriesStore::aWarningIsGivenWhereNobodyThrows()
{
    SeriesStore::setRefusal(nullptr);
    SeriesStore store;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("append: a number or a list of numbers")));
    store.append(QVariant(QStringLiteral("x")));
}

void tst_SeriesStore::theTypeChangesOnlyWhileEmpty()
{
    QSignalSpy changes(m_store, &SeriesStore::valueTypeChanged);
    m_store->setValueType(SeriesStore::Int16);
    QCOMPARE(changes.count(), 1);
    evaluate(QStringLiteral("store.append([300.4, -5])"));
    QCOMPARE(m_store->snapshot().valueAt(0), 300.0);
    evaluate(QStringLiteral("store.append([1, 40000])"));
    QVERIFY2(m_thrown.contains(QStringLiteral("fit into Int16")), qPrintable(m_thrown));
    evaluate(QStringLiteral("store.append(NaN)"));
    QVERIFY2(m_thrown.contains(QStringLiteral("fit into Int16")), qPrintable(m_thrown));
    QCOMPARE(m_store->count(), 2.0);
    evaluate(QStringLiteral("store.valueType = SeriesStore.UInt8"));
    QCOMPARE(m_store->valueType(), SeriesStore::Int16);
    m_store->clear();
    evaluate(QStringLiteral("store.valueType = SeriesStore.UInt8"));
    QCOMPARE(m_store->valueType(), SeriesStore::UInt8);
    evaluate(QStringLiteral("store.valueType = 99"));
    QCOMPARE(m_store->valueType(), SeriesStore::UInt8);
    QCOMPARE(changes.count(), 2);
}

void tst_SeriesStore::manyAppendsAreToldOnce()
{
    QSignalSpy changes(m_store, &SeriesStore::changed);
    QSignalSpy counts(m_store, &SeriesStore::countChanged);
    for (int i = 0; i < 1000; ++i)
        m_store->append(double(i));
    QCOMPARE(changes.count(), 0);
    QTRY_COMPARE(changes.count(), 1);
    QCOMPARE(counts.count(), 1);
    QTest::qWait(20);
    QCOMPARE(changes.count(), 1);
    m_store->append(1.0);
    QTRY_COMPARE(changes.count(), 2);
}

void tst_SeriesStore::aFrameSeesWhatWasTold()
{
    QCOMPARE(m_store->frameSnapshot().count(), qint64(0));
    m_store->append(1.0);
    QCOMPARE(m_store->frameSnapshot().count(), qint64(0));
    QCOMPARE(m_store->snapshot().count(), qint64(1));
    QSignalSpy changes(m_store, &SeriesStore::changed);
    QTRY_COMPARE(changes.count(), 1);
    QCOMPARE(m_store->frameSnapshot().count(), qint64(1));
    QVERIFY(m_store->frameSnapshot() == m_store->snapshot());
}

void tst_SeriesStore::clearingBeginsAnew()
{
    const int revision = m_store->revision();
    m_store->clear(); // nothing to clear
    QCOMPARE(m_store->revision(), revision);
    m_store->append(5.0);
    const SeriesSnapshot before = m_store->snapshot();
    m_store->clear();
    QCOMPARE(m_store->revision(), revision + 1);
    QCOMPARE(m_store->count(), 0.0);
    m_store->append(7.0);
    QCOMPARE(m_store->snapshot().valueAt(0), 7.0);
    QVERIFY(!m_store->snapshot().isOfSameSeries(before));
    QCOMPARE(before.valueAt(0), 5.0);
}

void tst_SeriesStore::whatIsTooOldLeaves()
{
    m_store->setMaximumCount(300'000);
    const std::vector<double> portion(10'000, 1.0);
    for (int i = 0; i < 200; ++i) {
        m_store->append(portion.data(), qint64(portion.size()));
        QVERIFY(m_store->count() >= std::min(300'000.0, (i + 1) * 10'000.0));
        QVERIFY(m_store->count() < 300'000.0 + 262'144.0);
    }
    const SeriesSnapshot snapshot = m_store->snapshot();
    QCOMPARE(snapshot.end(), qint64(2'000'000));
    QVERIFY(snapshot.begin() > 0);
    m_store->setMaximumCount(1); // at once
    QCOMPARE(m_store->snapshot().begin(), qint64(2'000'000) / 262'144 * 262'144);
}

void tst_SeriesStore::strangeMaximumCounts()
{
    m_store->append(1.0);
    for (const double strange : {-1.0, std::nan(""), -std::numeric_limits<double>::infinity(), 0.3}) {
        m_store->setMaximumCount(strange);
        QCOMPARE(m_store->maximumCount(), 0.0);
    }
    m_store->setMaximumCount(std::numeric_limits<double>::infinity());
    QVERIFY(m_store->maximumCount() > 1e15);
    m_store->append(2.0);
    QCOMPARE(m_store->count(), 2.0);
}

void tst_SeriesStore::numbersAreShownWithoutACopy()
{
    QVector<double> numbers(100'000, 3.0);
    m_store->setData(seriesOver(numbers));
    QVERIFY(!numbers.isDetached()); // the store shares it
    QVERIFY(m_store->isComplete());
    QCOMPARE(m_store->count(), 100'000.0);
    numbers[5] = 9.0; // detaches
    QCOMPARE(m_store->maximum(), 3.0);
    m_store->clear();
    QVERIFY(numbers.isDetached());
}

void tst_SeriesStore::longNumbersAreBuiltInTheBackground()
{
    QVector<double> numbers(6'000'000, 3.0);
    numbers[4'321'098] = 4.0;
    QSignalSpy changes(m_store, &SeriesStore::changed);
    QSignalSpy completes(m_store, &SeriesStore::completeChanged);
    m_store->setData(seriesOver(numbers));
    QTRY_VERIFY(m_store->isComplete());
    QCOMPARE(m_store->maximum(), 4.0);
    QTRY_VERIFY(changes.count() > 0);
    QTRY_COMPARE(completes.count() % 2, 0); // no longer, and again
}

void tst_SeriesStore::externalValuesAreCopiedWhenTheyGrow()
{
    m_store->setData(seriesOver({1.0, std::nan(""), 3.0}));
    m_store->append(4.0);
    QCOMPARE(m_store->count(), 4.0);
    QCOMPARE(m_store->snapshot().valueAt(0), 1.0);
    QCOMPARE(m_store->snapshot().valueAt(3), 4.0);
    QCOMPARE(m_store->gapCount(), 1.0);
}

void tst_SeriesStore::completeMeansThatNothingIsMissing()
{
    QSignalSpy completes(m_store, &SeriesStore::completeChanged);
    m_store->setComplete(false);
    QCOMPARE(completes.count(), 1);
    m_store->append(1.0);
    QVERIFY(!m_store->isComplete());
    m_store->setComplete(true);
    QCOMPARE(completes.count(), 2);
}

void tst_SeriesStore::everyPropertyTellsOfItsChanges()
{
    const QMetaObject &type = SeriesStore::staticMetaObject;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i)
        QVERIFY2(type.property(i).hasNotifySignal(), type.property(i).name());
    QSignalSpy maxima(m_store, &SeriesStore::maximumCountChanged);
    m_store->setMaximumCount(5);
    m_store->setMaximumCount(5);
    QCOMPARE(maxima.count(), 1);
    QSignalSpy times(m_store, &SeriesStore::startTimeChanged);
    m_store->setStartTime(std::nan(""));
    QCOMPARE(times.count(), 0);
    m_store->setStartTime(1.6e9);
    m_store->setStartTime(1.6e9);
    QCOMPARE(times.count(), 1);
    m_store->setStartTime(1.6e9 + 0.001); // a millisecond is another moment
    QCOMPARE(m_store->startTime(), 1.6e9 + 0.001);
    QCOMPARE(times.size(), 2);
}

void tst_SeriesStore::aForeignThreadAppends()
{
    std::thread thread([writer = m_store->writer()]() mutable {
        for (int i = 0; i < 100'000; ++i)
            writer.append(double(i));
    });
    QTRY_COMPARE(m_store->count(), 100'000.0);
    thread.join();
    QTRY_COMPARE(m_store->frameSnapshot().count(), qint64(100'000));
    for (const qint64 i : {0, 1, 50'000, 99'999})
        QCOMPARE(m_store->snapshot().valueAt(i), double(i));
}

void tst_SeriesStore::severalThreadsTakeTurns()
{
    std::vector<std::thread> threads;
    for (int number = 0; number < 3; ++number) {
        threads.emplace_back([this, number] {
            const std::vector<double> portion(100, double(number));
            for (int i = 0; i < 300; ++i)
                m_store->append(portion.data(), 100);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(m_store->count(), 90'000.0);
    for (qint64 first = 0; first < 90'000; first += 100) {
        const SExtremes extremes = m_store->snapshot().extremesIn(first, first + 100);
        QCOMPARE(extremes.lowest, extremes.highest); // a portion stays together
    }
}

void tst_SeriesStore::clearingWhileAThreadAppends()
{
    std::atomic<bool> isEnding{false};
    std::thread thread([&isEnding, writer = m_store->writer()]() mutable {
        const std::vector<double> portion(1000, 2.0);
        while (!isEnding)
            writer.append(portion.data(), 1000);
    });
    for (int round = 0; round < 300; ++round) {
        const SeriesSnapshot snapshot = m_store->snapshot();
        QVERIFY(snapshot.isEmpty() || snapshot.extremes().highest == 2.0);
        if (round % 3 == 0)
            m_store->clear();
        else if (round % 7 == 0)
            m_store->setData(seriesOver(QVector<double>(5000, 2.0)));
        QCoreApplication::processEvents();
    }
    isEnding = true;
    thread.join();
    QVERIFY(m_store->snapshot().isEmpty() || m_store->snapshot().extremes().lowest == 2.0);
}

void tst_SeriesStore::theStoreMayGoBeforeItsWriter()
{
    for (int round = 0; round < 50; ++round) {
        auto store = std::make_unique<SeriesStore>();
        std::atomic<bool> hasBegun{false};
        std::atomic<bool> wasRefused{false};
        std::thread thread([&, writer = store->writer()]() mutable {
            while (writer.append(1.0))
                hasBegun = true;
            wasRefused = true;
        });
        QTRY_VERIFY(hasBegun);
        const SeriesSnapshot snapshot = store->snapshot();
        store.reset();
        thread.join();
        QVERIFY(wasRefused);
        QCOMPARE(snapshot.extremes().highest, 1.0);
    }
    SeriesWriter nobodys;
    QVERIFY(!nobodys.append(1.0));
}

void tst_SeriesStore::whatQmlHandsOverBecomesNumbers()
{
    QVERIFY(numbersIn(QVariant()).values.isEmpty());
    QVERIFY(numbersIn(QVariant()).error.isEmpty());
    const QVector<double> numbers{1.0, 2.0};
    const SNumbers shared = numbersIn(QVariant::fromValue(numbers));
    QCOMPARE(shared.values.constData(), numbers.constData());
    QCOMPARE(numbersIn(QVariant(5)).values, QVector<double>{5.0});
    QCOMPARE(numbersIn(QVariantList{1, 2.5f, 3u, qint64(4)}).values, (QVector<double>{1.0, 2.5, 3.0, 4.0}));
    QCOMPARE(numbersIn(evaluate(QStringLiteral("[1, 2, 3]"))).values, (QVector<double>{1.0, 2.0, 3.0}));
    QCOMPARE(numbersIn(evaluate(QStringLiteral("new Float64Array([4, 5]).buffer"))).values,
             (QVector<double>{4.0, 5.0}));
    QVERIFY(!numbersIn(QByteArray("123")).error.isEmpty());
    QVERIFY(!numbersIn(QStringLiteral("1, 2")).error.isEmpty());
    QVERIFY(seriesOver({})->snapshot().isEmpty());
    QVERIFY(seriesOver({})->isBuilt());
}

QTEST_GUILESS_MAIN(tst_SeriesStore)
#include "tst_SeriesStore.moc"
