// SPDX-License-Identifier: MIT
#include "views/store/MovingAverage.h"

#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <ctime>
#include <random>

namespace {

/// The mean of the values from i - (depth - 1) / 2 on that are there and finite.
double plainMean(const QVector<double> &values, int i, int depth)
{
    long double sum = 0.0L;
    int count = 0;
    const int from = i - (depth - 1) / 2;
    for (int k = std::max(from, 0); k < std::min(from + depth, int(values.size())); ++k) {
        if (std::isfinite(values[k])) {
            sum += values[k];
            ++count;
        }
    }
    return count > 0 ? double(sum / count) : std::nan("");
}

QVector<double> stored(SeriesStore &store)
{
    const SeriesSnapshot snapshot = store.snapshot();
    QVector<double> values(int(snapshot.count()));
    snapshot.copyValues(0, snapshot.end(), values.data());
    return values;
}

} // namespace

class tst_MovingAverage : public QObject
{
    Q_OBJECT

private slots:
    void isTheMeanOfWhatIsAround_data();
    void isTheMeanOfWhatIsAround();
    void waitsForWhatComes();
    void waitsForWhatComesToAStoreThatGrew();
    void startsAnewWithOtherValues();
    void outlivesItsSource();
    void longSeriesDontHoldUpTheThread();
    void refusesValuesOfOthers();
    void aCircleHasNoValues();
    void letsGoWhatLeavesItsSource();
    void beginsWhereItsSourceBegins();
};

void tst_MovingAverage::isTheMeanOfWhatIsAround_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("depth");
    for (const int count : {0, 1, 2, 100, 70000}) {
        for (const int depth : {2, 3, 4, 100, 1000})
            QTest::addRow("%d over %d", count, depth) << count << depth;
    }
}

void tst_MovingAverage::isTheMeanOfWhatIsAround()
{
    QFETCH(int, count);
    QFETCH(int, depth);
    std::mt19937 random(1);
    QVector<double> values(count);
    for (double &value : values) {
        value = 1e6 + std::uniform_real_distribution<>(-1.0, 1.0)(random);
        if (random() % 16 == 0)
            value = random() % 2 == 0 ? std::nan("") : HUGE_VAL;
        else if (random() % 1000 == 0)
            value *= 1e9;
    }
    SeriesStore source;
    source.append(values.constData(), values.size());
    MovingAverage average;
    average.setDepth(depth);
    average.setSource(&source);
    QTRY_VERIFY(!average.isBusy());
    QVERIFY(average.store()->isComplete());
    const QVector<double> averages = stored(*average.store());
    QCOMPARE(averages.size(), count);
    for (int i = 0; i < count; ++i) {
        const double expected = plainMean(values, i, depth);
        QVERIFY2(std::isnan(expected) ? std::isnan(averages[i])
                                      : std::abs(averages[i] - expected) <= 1e-15 * std::abs(expected) + 1e-10,
                 qPrintable(QStringLiteral("%1: %2 for %3").arg(i).arg(averages[i], 0, 'g', 17).arg(expected)));
    }
}

void tst_MovingAverage::waitsForWhatComes()
{
    SeriesStore source;
    source.setComplete(false);
    MovingAverage average;
    average.setDepth(4);
    average.setSource(&source);
    source.append(QVariantList{4, 8, 0, 4});
    QTRY_COMPARE(average.store()->count(), 2.0); // the third one needs a value that isn't there yet
    QVERIFY(!average.store()->isComplete());
    QCOMPARE(stored(*average.store()), (QVector<double>{4.0, 4.0}));
    source.append(8);
    QTRY_COMPARE(average.store()->count(), 3.0);
    source.setComplete(true);
    QTRY_VERIFY(average.store()->isComplete());
    QCOMPARE(stored(*average.store()), (QVector<double>{4.0, 4.0, 5.0, 4.0, 6.0}));
}

/// Values that come now and then, as those of a recorder do: no average may be made of a part of what is around it.
void tst_MovingAverage::waitsForWhatComesToAStoreThatGrew()
{
    constexpr int depth = 5;
    SeriesStore source;
    MovingAverage average;
    average.setDepth(depth);
    average.setSource(&source);
    QTRY_VERIFY(!average.isBusy());
    QVector<double> values;
    for (int portion = 0; portion < 20; ++portion) {
        for (int i = 0; i < 3; ++i)
            values.append(std::pow(values.size() + 1, 2));
        source.append(values.constData() + values.size() - 3, 3);
        QTRY_COMPARE(average.store()->count(), double(values.size() - (portion > 0 ? depth / 2 : 0)));
        QTRY_VERIFY(!average.isBusy());
        const QVector<double> averages = stored(*average.store());
        for (int i = 0; i < averages.size(); ++i)
            QCOMPARE(averages[i], plainMean(values, i, depth));
    }
    QVERIFY(!average.store()->isComplete());
    source.setComplete(false);
    source.setComplete(true);
    QTRY_COMPARE(average.store()->count(), double(values.size()));
    QVERIFY(average.store()->isComplete());
}

void tst_MovingAverage::startsAnewWithOtherValues()
{
    SeriesStore source;
    source.append(QVariantList{1, 3, 5});
    MovingAverage average;
    average.setDepth(3);
    average.setSource(&source);
    QTRY_COMPARE(average.store()->count(), 3.0);
    source.clear();
    source.append(QVariantList{10, 20});
    QTRY_COMPARE(average.store()->count(), 2.0);
    QCOMPARE(stored(*average.store()), (QVector<double>{15.0, 15.0}));
    average.setDepth(0);
    QCOMPARE(average.depth(), 1);
    QCOMPARE(average.store()->count(), 0.0); // nothing to average
}

void tst_MovingAverage::outlivesItsSource()
{
    MovingAverage average;
    average.setDepth(3);
    {
        SeriesStore source;
        source.append(QVariantList{1, 3, 5});
        average.setSource(&source);
        QTRY_COMPARE(average.store()->count(), 3.0);
    }
    QCOMPARE(average.source(), nullptr);
    QCOMPARE(average.store()->count(), 0.0);
    QVERIFY(!average.isBusy());
}

/// Some turns of the event loop are needed, and other events come in between.
void tst_MovingAverage::longSeriesDontHoldUpTheThread()
{
    constexpr std::clock_t work = CLOCKS_PER_SEC / 50; // four turns of 5 ms
    const QVector<double> values(4'000'000, 2.0);
    SeriesStore source;
    MovingAverage average;
    average.setDepth(1000);
    int turns = 0;
    for (std::clock_t taken = 0; taken < work;) { // a fast machine needs more values
        source.append(values.constData(), values.size());
        average.setSource(nullptr);
        average.setSource(&source);
        const std::clock_t begin = std::clock();
        for (turns = 0; average.isBusy(); ++turns)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        taken = std::clock() - begin;
    }
    QVERIFY2(turns >= 2, qPrintable(QString::number(turns)));
    QCOMPARE(average.store()->count(), source.count());
    QCOMPARE(average.store()->minimum(), 2.0);
    QCOMPARE(average.store()->maximum(), 2.0);
}

/// The averages are computed: what a script appends would stand among them, without a word.
void tst_MovingAverage::refusesValuesOfOthers()
{
    static QStringList words;
    SeriesStore::setRefusal([](const QObject *, const QString &refused) { words.append(refused); });
    SeriesStore source;
    source.setComplete(false);
    source.append(QVariantList{1, 3, 5, 7});
    MovingAverage average;
    average.setDepth(3);
    SeriesStore &store = *average.store();
    store.setValueType(SeriesStore::Int8); // the averages would be rounded
    average.setSource(&source);
    QTRY_COMPARE(store.count(), 3.0);
    store.append(QVariantList{1, 2});
    store.appendBuffer(QByteArray(16, '\0'));
    store.clear();
    QVERIFY(!store.append(4.0));
    QVERIFY(!store.writer().append(4.0));
    SeriesStore::setRefusal(nullptr);
    QCOMPARE(words.size(), 4);
    for (const char *what : {"valueType", "append", "appendBuffer", "clear"})
        QCOMPARE(words.takeFirst(),
                 QLatin1String(what) + QStringLiteral(": a MovingAverage fills this store. Use a store of your own"));
    source.setComplete(true);
    QTRY_COMPARE(store.count(), 4.0);
    QCOMPARE(stored(store), (QVector<double>{2.0, 3.0, 5.0, 6.0}));
    average.setDepth(1); // still its own to clear
    QCOMPARE(store.count(), 0.0);
}

/// Else a series that is kept short would have averages without end.
// And it neither keeps the thread busy nor harms when it's taken apart.
void tst_MovingAverage::aCircleHasNoValues()
{
    auto alone = std::make_unique<MovingAverage>();
    auto first = std::make_unique<MovingAverage>();
    auto second = std::make_unique<MovingAverage>();
    for (MovingAverage *average : {alone.get(), first.get(), second.get()})
        average->setDepth(3);
    alone->setSource(alone->store());
    first->setSource(second->store());
    second->setSource(first->store());
    QTRY_VERIFY(!alone->isBusy() && !first->isBusy() && !second->isBusy());
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents();
        QVERIFY(!alone->isBusy() && !first->isBusy() && !second->isBusy());
    }
    QCOMPARE(alone->store()->count() + first->store()->count() + second->store()->count(), 0.0);
    alone.reset();
    first.reset();
    QCOMPARE(second->source(), nullptr);
}

void tst_MovingAverage::letsGoWhatLeavesItsSource()
{
    SeriesStore source;
    source.setMaximumCount(300'000.0);
    MovingAverage average;
    average.setDepth(3);
    average.setSource(&source);
    const QVector<double> portion(100'000, 2.0);
    for (int i = 0; i < 12; ++i) {
        source.append(portion.constData(), portion.size());
        QTRY_COMPARE(average.store()->snapshot().end(), source.snapshot().end() - int(i > 0)); // the last one waits
    }
    QVERIFY(source.snapshot().begin() > 0);
    QCOMPARE(average.store()->snapshot().begin(), source.snapshot().begin());
    QCOMPARE(average.store()->minimum(), 2.0);
    QCOMPARE(average.store()->maximum(), 2.0);
    QCOMPARE(average.store()->gapCount(), 0.0);
}

/// A recorder that ran for weeks and keeps its last hour: 1e12 averages of nothing would take hours.
void tst_MovingAverage::beginsWhereItsSourceBegins()
{
    constexpr qint64 begin = qint64(1) << 40;
    SeriesStore source;
    source.setData(SeriesData::create(SampleType::Float64, begin));
    source.append(QVariantList{1, 3, 5, 7});
    MovingAverage average;
    average.setDepth(3);
    average.setSource(&source);
    QTRY_COMPARE(average.store()->count(), 4.0);
    const SeriesSnapshot averages = average.store()->snapshot();
    QCOMPARE(averages.begin(), begin);
    QVector<double> values(4);
    averages.copyValues(begin, begin + 4, values.data());
    QCOMPARE(values, (QVector<double>{2.0, 3.0, 5.0, 6.0}));
}

QTEST_GUILESS_MAIN(tst_MovingAverage)
#include "tst_MovingAverage.moc"
