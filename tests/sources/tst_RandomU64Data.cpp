// SPDX-License-Identifier: MIT
#include "sources/RandomU64Data.h"
#include "tests/support/Bits.h"
#include "tests/support/MetaTable.h"
#include "tests/support/RecordingPlotter.h"

#include <QElapsedTimer>
#include <QtTest>

#include <cmath>
#include <memory>
#include <numeric>

namespace {

constexpr int samples = 10000;
constexpr int never = 1'000'000; // milliseconds

double sum(const QVector<double> &series)
{
    return std::accumulate(series.cbegin(), series.cend(), 0.0);
}

bool isHistogram(const QVector<double> &series)
{
    return std::all_of(series.cbegin(), series.cend(),
                       [](double count) { return count >= 0.0 && count <= samples && count == std::floor(count); });
}

/// A source that ticks only when it is told to, which generates at once.
struct SSource
{
    SSource() { source.setInterval(never); }
    void generate() { source.setArea(QRectF(0.0, 0.0, ++areas, 1.0)); }

    RandomU64Data source;
    QSignalSpy changes{&source, &Filter1D::dataChanged};
    int areas = 0;
};

} // namespace

class tst_RandomU64Data : public QObject
{
    Q_OBJECT

private slots:
    void propertiesAndSignalsStandInOrder();
    void aNewSourceIsSilentUntilItsFirstTick();

    void aChangeOfTypeGeneratesAtOnce();
    void aChangeOfTheAreaStartsFromZero();
    void aHistogramCountsItsSamples();
    void aHistogramIsNormal();
    void noTwoHistogramsAreEqual();
    void whiteNoiseIsUniform();
    void fewBinsHaveNoSpread();

    void appendingTicksAddUp();
    void replacingTicksDoNot();
    void anotherNumberOfBinsWaitsForTheNextTick();
    void moreBinsContinueWithZeros();
    void noBinsGiveAnEmptySeries();
    void aHugeNumberOfBinsIsBounded();
    void anUnknownTypePublishesNothing();

    void runningNeverStopsTheTimer();
    void theIntervalRestoresThePeriod();
    void withoutRepeatThereIsOneTick();
    void settersAreSilentWithoutAChange();
    void handlersMayDestroyTheSource();
};

void tst_RandomU64Data::propertiesAndSignalsStandInOrder()
{
    const QMetaObject &meta = RandomU64Data::staticMetaObject;
    QCOMPARE(
        ownProperties(meta),
        (QStringList{
            QStringLiteral("type QString write typeChanged"), QStringLiteral("append bool write appendChanged"),
            QStringLiteral("interval int write intervalChanged"), QStringLiteral("repeat bool write repeatChanged"),
            QStringLiteral("running bool write runningChanged"), QStringLiteral("numBin int write numBinChanged")}));
    QCOMPARE(ownSignals(meta),
             (QStringList{QStringLiteral("typeChanged()"), QStringLiteral("appendChanged()"),
                          QStringLiteral("intervalChanged()"), QStringLiteral("repeatChanged()"),
                          QStringLiteral("numBinChanged()"), QStringLiteral("runningChanged()")}));
    RandomU64Data source;
    QCOMPARE(source.type(), QStringLiteral("normal"));
    QVERIFY(source.append());
    QCOMPARE(source.interval(), 2500);
    QVERIFY(source.repeat());
    QVERIFY(source.running());
    QCOMPARE(source.numBin(), 1024);
}

void tst_RandomU64Data::aNewSourceIsSilentUntilItsFirstTick()
{
    QElapsedTimer clock;
    clock.start();
    RandomU64Data source;
    qint64 first = -1;
    connect(&source, &Filter1D::dataChanged, this, [&] { first = clock.elapsed(); });
    QVERIFY(source.data().isEmpty());
    QTRY_VERIFY(first >= 0);
    QVERIFY2(first >= 2300, qPrintable(QString::number(first))); // a coarse timer may be a twentieth early
    QCOMPARE(source.data().size(), 1024);
    QVERIFY(sum(source.data()) <= samples);
}

// generation

void tst_RandomU64Data::aChangeOfTypeGeneratesAtOnce()
{
    SSource s;
    QStringList order;
    connect(&s.source, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("data")); });
    connect(&s.source, &RandomU64Data::typeChanged, this, [&] { order.append(QStringLiteral("type")); });
    s.source.setType(QStringLiteral("white"));
    QCOMPARE(order, (QStringList{QStringLiteral("data"), QStringLiteral("type")}));
    QCOMPARE(s.source.data().size(), 1024);
}

void tst_RandomU64Data::aChangeOfTheAreaStartsFromZero()
{
    SSource s;
    for (int i = 0; i < 5; ++i) {
        s.generate();
        QVERIFY(sum(s.source.data()) <= samples);
    }
    QCOMPARE(s.changes.size(), 5);
}

void tst_RandomU64Data::aHistogramCountsItsSamples()
{
    SSource s;
    for (const int bins : {1, 2, 7, 8, 100, 1024, 5000}) {
        s.source.setNumBin(bins);
        s.generate();
        QCOMPARE(s.source.data().size(), bins);
        QVERIFY(isHistogram(s.source.data()));
        QVERIFY(sum(s.source.data()) <= samples);
    }
    QVERIFY(sum(s.source.data()) > 0.999 * samples); // within four standard deviations
}

void tst_RandomU64Data::aHistogramIsNormal()
{
    SSource s;
    s.generate();
    const QVector<double> &counts = s.source.data();
    double mean = 0.0;
    for (int i = 0; i < counts.size(); ++i)
        mean += (i + 0.5) * counts.at(i) / sum(counts);
    double variance = 0.0;
    for (int i = 0; i < counts.size(); ++i)
        variance += (i + 0.5 - mean) * (i + 0.5 - mean) * counts.at(i) / sum(counts);
    QVERIFY2(std::abs(mean - 512.0) < 12.0, qPrintable(QString::number(mean))); // nine times its own deviation
    QVERIFY2(std::abs(std::sqrt(variance) - 128.0) < 9.0, qPrintable(QString::number(std::sqrt(variance))));
}

void tst_RandomU64Data::noTwoHistogramsAreEqual()
{
    SSource s;
    s.generate();
    const QVector<double> first = s.source.data();
    s.generate();
    QVERIFY(first != s.source.data());
}

void tst_RandomU64Data::whiteNoiseIsUniform()
{
    SSource s;
    s.source.setNumBin(100'000);
    s.source.setType(QStringLiteral("white"));
    const QVector<double> &noise = s.source.data();
    QCOMPARE(noise.size(), 100'000);
    int inTenth[10] = {};
    for (const double value : noise) {
        QVERIFY(value >= 0.0 && value < 100.0);
        ++inTenth[int(value / 10.0)];
    }
    for (const int count : inTenth)
        QVERIFY2(std::abs(count - 10'000) < 1000, qPrintable(QString::number(count)));
}

void tst_RandomU64Data::fewBinsHaveNoSpread()
{
    SSource s;
    for (int bins = 1; bins < 8; ++bins) { // an eighth of them is 0
        s.source.setNumBin(bins);
        s.generate();
        QVector<double> expected(bins, 0.0);
        expected[bins / 2] = samples;
        COMPARE_BITS(s.source.data(), expected);
    }
}

// ticks

void tst_RandomU64Data::appendingTicksAddUp()
{
    RandomU64Data source;
    QVector<double> sums;
    connect(&source, &Filter1D::dataChanged, this, [&] { sums.append(sum(source.data())); });
    source.setInterval(1);
    QTRY_VERIFY(sums.size() >= 5);
    for (int i = 1; i < sums.size(); ++i) {
        QVERIFY(sums.at(i) > sums.at(i - 1));
        QVERIFY(sums.at(i) - sums.at(i - 1) <= samples);
    }
    QVERIFY(sums.last() > 4 * 0.99 * samples);
}

void tst_RandomU64Data::replacingTicksDoNot()
{
    for (const char *type : {"normal", "white"}) {
        RandomU64Data source;
        source.setType(QString::fromLatin1(type));
        source.setAppend(false);
        source.setNumBin(100);
        int ticks = 0;
        connect(&source, &Filter1D::dataChanged, this, [&] {
            ++ticks;
            QCOMPARE(source.data().size(), 100);
            if (source.type() == QLatin1String("normal")) {
                QVERIFY(isHistogram(source.data()));
                QVERIFY(sum(source.data()) <= samples);
            } else {
                for (const double value : source.data())
                    QVERIFY(value >= 0.0 && value < 100.0);
            }
        });
        source.setInterval(1);
        QTRY_VERIFY(ticks >= 5);
    }
}

void tst_RandomU64Data::anotherNumberOfBinsWaitsForTheNextTick()
{
    SSource s;
    s.generate();
    const QVector<double> before = s.source.data();
    QSignalSpy binChanges(&s.source, &RandomU64Data::numBinChanged);
    s.source.setNumBin(10);
    QCOMPARE(binChanges.size(), 1);
    COMPARE_BITS(s.source.data(), before);
    QCOMPARE(s.changes.size(), 1);
    s.generate();
    QCOMPARE(s.source.data().size(), 10);
}

void tst_RandomU64Data::moreBinsContinueWithZeros()
{
    SSource s;
    s.source.setNumBin(7);
    s.generate(); // [0, 0, 0, 10000, 0, 0, 0]
    s.source.setNumBin(3);
    s.source.setInterval(1);
    QTRY_COMPARE(s.source.data().size(), 3);
    s.source.setInterval(never);
    const double inTheMiddle = s.source.data().at(1);
    s.source.setNumBin(5);
    s.source.setInterval(1);
    QTRY_COMPARE(s.source.data().size(), 5);
    s.source.setInterval(never);
    QCOMPARE(s.source.data().at(1), inTheMiddle);
    QCOMPARE(s.source.data().at(3), 0.0);
    QVERIFY(s.source.data().at(2) >= samples);
}

void tst_RandomU64Data::noBinsGiveAnEmptySeries()
{
    for (const char *type : {"normal", "white"}) {
        for (const int bins : {0, -1, std::numeric_limits<int>::min()}) {
            SSource s;
            s.source.setType(QString::fromLatin1(type));
            s.generate();
            s.source.setNumBin(bins);
            QCOMPARE(s.source.numBin(), bins);
            s.generate();
            QVERIFY(s.source.data().isEmpty());
        }
    }
}

void tst_RandomU64Data::aHugeNumberOfBinsIsBounded()
{
    SSource s;
    s.source.setNumBin(std::numeric_limits<int>::max());
    QCOMPARE(s.source.numBin(), std::numeric_limits<int>::max());
    s.generate();
    QCOMPARE(s.source.data().size(), RandomU64Data::maximumBins);
    QVERIFY(sum(s.source.data()) <= samples);
}

void tst_RandomU64Data::anUnknownTypePublishesNothing()
{
    SSource s;
    s.generate();
    const int changes = s.changes.size();
    for (const char *type : {"Normal", "WHITE", "", "normal "}) {
        s.source.setType(QString::fromLatin1(type));
        QCOMPARE(s.source.type(), QString::fromLatin1(type));
        COMPARE_BITS(s.source.data(), QVector<double>(1024, 0.0)); // what the reset leaves
    }
    s.generate();
    s.source.setNumBin(2000);
    s.source.setInterval(1);
    QTest::qWait(50);
    QCOMPARE(s.changes.size(), changes);
}

// the timer

void tst_RandomU64Data::runningNeverStopsTheTimer()
{
    SSource s;
    s.source.setNumBin(16);
    QSignalSpy running(&s.source, &RandomU64Data::runningChanged);
    s.source.setRunning(false);
    QCOMPARE(s.source.interval(), never); // keeps its value
    QTRY_VERIFY(s.changes.size() >= 5);
    s.source.setRunning(true);
    const int before = s.changes.size();
    QTRY_VERIFY(s.changes.size() >= before + 5);
    QCOMPARE(running.size(), 2);
}

void tst_RandomU64Data::theIntervalRestoresThePeriod()
{
    SSource s;
    s.source.setNumBin(16);
    s.source.setRunning(false);
    QTRY_VERIFY(s.changes.size() >= 2);
    s.source.setInterval(never + 1);
    const int before = s.changes.size();
    QTest::qWait(100);
    QCOMPARE(s.changes.size(), before);
}

void tst_RandomU64Data::withoutRepeatThereIsOneTick()
{
    SSource s;
    s.source.setNumBin(16);
    s.source.setRepeat(false);
    s.source.setInterval(1);
    QTRY_COMPARE(s.changes.size(), 1);
    QTest::qWait(100);
    QCOMPARE(s.changes.size(), 1);
    s.source.setRunning(false); // starts it again, once
    QTRY_COMPARE(s.changes.size(), 2);
    QTest::qWait(100);
    QCOMPARE(s.changes.size(), 2);
}

void tst_RandomU64Data::settersAreSilentWithoutAChange()
{
    SSource s;
    QSignalSpy type(&s.source, &RandomU64Data::typeChanged);
    QSignalSpy append(&s.source, &RandomU64Data::appendChanged);
    QSignalSpy interval(&s.source, &RandomU64Data::intervalChanged);
    QSignalSpy repeat(&s.source, &RandomU64Data::repeatChanged);
    QSignalSpy running(&s.source, &RandomU64Data::runningChanged);
    QSignalSpy numBin(&s.source, &RandomU64Data::numBinChanged);
    for (int i = 0; i < 2; ++i) {
        s.source.setType(QStringLiteral("white"));
        s.source.setAppend(false);
        s.source.setInterval(never + 1);
        s.source.setRepeat(false);
        s.source.setRunning(false);
        s.source.setNumBin(16);
    }
    for (const QSignalSpy *spy : {&type, &append, &interval, &repeat, &running, &numBin})
        QCOMPARE(spy->size(), 1);
    QCOMPARE(s.changes.size(), 1);
}

void tst_RandomU64Data::handlersMayDestroyTheSource()
{
    auto source = std::make_unique<RandomU64Data>();
    connect(source.get(), &Filter1D::dataChanged, this, [&] { source.reset(); });
    source->setType(QStringLiteral("white"));
    QVERIFY(!source);

    source = std::make_unique<RandomU64Data>();
    connect(source.get(), &Filter1D::dataChanged, this, [&] { source.reset(); });
    source->setArea(QRectF(0.0, 0.0, 1.0, 1.0));
    QVERIFY(!source);

    source = std::make_unique<RandomU64Data>();
    connect(source.get(), &Filter1D::dataChanged, this, [&] { source.reset(); });
    source->setRunning(false);
    QTRY_VERIFY(!source);
}

QTEST_GUILESS_MAIN(tst_RandomU64Data)
#include "tst_RandomU64Data.moc"
