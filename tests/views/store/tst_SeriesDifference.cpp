// SPDX-License-Identifier: MIT
#include "views/store/SeriesDifference.h"

#include <QtTest>

#include <cmath>
#include <memory>

namespace {

QVector<double> stored(SeriesStore &store)
{
    const SeriesSnapshot snapshot = store.snapshot();
    QVector<double> values(int(snapshot.count()));
    snapshot.copyValues(0, snapshot.end(), values.data());
    return values;
}

void fill(SeriesStore &store, const QVector<double> &values)
{
    store.append(values.constData(), values.size());
    store.setComplete(true);
}

} // namespace

class tst_SeriesDifference : public QObject
{
    Q_OBJECT

private slots:
    void isTheDifferenceOfEachPair();
    void endsWithTheShorterOne();
    void gapsAreGaps();
    void followsBothSeries();
    void startsAnewWithAnotherFactor();
    void needsBoth();
    void outlivesWhatItTakes();
    void refusesValuesOfOthers();
    void aCircleHasNoValues();
};

void tst_SeriesDifference::isTheDifferenceOfEachPair()
{
    constexpr int count = 200'001; // several portions
    QVector<double> a(count);
    QVector<double> b(count);
    for (int i = 0; i < count; ++i) {
        a[i] = i * 0.37;
        b[i] = std::sin(i);
    }
    SeriesStore first;
    SeriesStore second;
    fill(first, a);
    fill(second, b);
    SeriesDifference difference;
    difference.setMinuend(&first);
    difference.setSubtrahend(&second);
    QTRY_VERIFY(!difference.isBusy());
    QVERIFY(difference.store()->isComplete());
    const QVector<double> found = stored(*difference.store());
    QCOMPARE(found.size(), count);
    for (int i = 0; i < count; ++i)
        QVERIFY(found[i] == a[i] - b[i]);
}

void tst_SeriesDifference::endsWithTheShorterOne()
{
    SeriesStore first;
    SeriesStore second;
    fill(first, {5, 6, 7, 8});
    fill(second, {1, 2});
    SeriesDifference difference;
    difference.setMinuend(&first);
    difference.setSubtrahend(&second);
    QTRY_COMPARE(stored(*difference.store()), (QVector<double>{4, 4}));
    QTRY_VERIFY(difference.store()->isComplete());
}

void tst_SeriesDifference::gapsAreGaps()
{
    SeriesStore first;
    SeriesStore second;
    fill(first, {std::nan(""), 6, 7});
    fill(second, {1, HUGE_VAL, 2});
    SeriesDifference difference;
    difference.setMinuend(&first);
    difference.setSubtrahend(&second);
    QTRY_COMPARE(difference.store()->count(), 3.0);
    QCOMPARE(difference.store()->gapCount(), 2.0);
    QCOMPARE(stored(*difference.store())[2], 5.0);
}

void tst_SeriesDifference::followsBothSeries()
{
    SeriesStore first;
    SeriesStore second;
    SeriesDifference difference;
    first.setComplete(false);
    second.setComplete(false);
    difference.setMinuend(&first);
    difference.setSubtrahend(&second);
    const QVector<double> values{10, 20};
    first.append(values.constData(), 2);
    QTRY_VERIFY(!difference.isBusy());
    QCOMPARE(difference.store()->count(), 0.0);
    second.append(values.constData(), 1);
    QTRY_COMPARE(stored(*difference.store()), (QVector<double>{0}));
    second.append(values.constData(), 1);
    QTRY_COMPARE(stored(*difference.store()), (QVector<double>{0, 10}));
    QVERIFY(!difference.store()->isComplete());
    first.clear(); // other values
    fill(first, {1, 2});
    second.setComplete(true);
    QTRY_COMPARE(stored(*difference.store()), (QVector<double>{-9, -8}));
    QTRY_VERIFY(difference.store()->isComplete());
}

void tst_SeriesDifference::startsAnewWithAnotherFactor()
{
    SeriesStore first;
    SeriesStore second;
    fill(first, {10, 20});
    fill(second, {1, 2});
    SeriesDifference difference;
    difference.setMinuend(&first);
    difference.setSubtrahend(&second);
    QTRY_COMPARE(stored(*difference.store()), (QVector<double>{9, 18}));
    difference.setFactor(2.5);
    QTRY_COMPARE(stored(*difference.store()), (QVector<double>{7.5, 15}));
    difference.setFactor(std::nan(""));
    QCOMPARE(difference.factor(), 2.5);
}

void tst_SeriesDifference::needsBoth()
{
    SeriesStore first;
    fill(first, {10, 20});
    SeriesDifference difference;
    difference.setMinuend(&first);
    QVERIFY(!difference.isBusy());
    difference.setSubtrahend(&first);
    QTRY_COMPARE(stored(*difference.store()), (QVector<double>{0, 0}));
    difference.setMinuend(nullptr);
    QVERIFY(!difference.isBusy());
    QCOMPARE(difference.store()->count(), 0.0);
    QVERIFY(difference.store()->isComplete());
}

void tst_SeriesDifference::outlivesWhatItTakes()
{
    SeriesDifference difference;
    auto first = std::make_unique<SeriesStore>();
    SeriesStore second;
    fill(*first, QVector<double>(500'000, 3.0));
    fill(second, QVector<double>(500'000, 1.0));
    difference.setMinuend(first.get());
    difference.setSubtrahend(&second);
    QCoreApplication::processEvents();
    first.reset();
    QVERIFY(!difference.isBusy());
    QCOMPARE(difference.minuend(), nullptr);
    QCOMPARE(difference.store()->count(), 0.0);
}

void tst_SeriesDifference::refusesValuesOfOthers()
{
    SeriesDifference difference;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("a SeriesDifference fills this store")));
    difference.store()->append(QVariant(1.0));
    QCOMPARE(difference.store()->count(), 0.0);
}

// And it neither keeps the thread busy nor harms when it's taken apart.
void tst_SeriesDifference::aCircleHasNoValues()
{
    SeriesStore values;
    fill(values, {1.0, 2.0});
    auto first = std::make_unique<SeriesDifference>();
    auto second = std::make_unique<SeriesDifference>();
    first->setMinuend(first->store());
    first->setSubtrahend(second->store());
    second->setMinuend(first->store());
    second->setSubtrahend(&values);
    QTRY_VERIFY(!first->isBusy() && !second->isBusy());
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents();
        QVERIFY(!first->isBusy() && !second->isBusy());
    }
    QCOMPARE(first->store()->count() + second->store()->count(), 0.0);
    first.reset();
    QCOMPARE(second->minuend(), nullptr);
    second->setMinuend(&values);
    QTRY_COMPARE(second->store()->count(), 2.0);
}

QTEST_GUILESS_MAIN(tst_SeriesDifference)
#include "tst_SeriesDifference.moc"
