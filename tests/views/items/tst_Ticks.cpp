// SPDX-License-Identifier: MIT
#include "views/items/Ticks.h"

#include <QtTest>

#include <limits>
#include <random>

namespace {

AxisMapping linear(double from, double to, double pixels)
{
    return {from, to, false, 0.0, pixels};
}

AxisMapping logarithmic(double from, double to, double pixels)
{
    return {from, to, true, 0.0, pixels};
}

bool isAscending(const QVector<double> &ticks)
{
    return std::adjacent_find(ticks.begin(), ticks.end(), std::greater_equal<double>()) == ticks.end();
}

} // namespace

class tst_Ticks : public QObject
{
    Q_OBJECT

private slots:
    void stepsAreOneTwoAndFive();
    void ticksAreRoundNumbers();
    void ticksOnTheEdgesAreThere();
    void theStepDependsOnTheZoomAlone();
    void aRoundRangeKeepsItsStepInAPan();
    void ticksKeepTheirDistance();
    void aWantedIntervalIsTaken();
    void aCrowdedIntervalIsTakenInMultiples();
    void subTicksDivideAStep();
    void farOutTicksStayDistinct();
    void aReversedAxisHasTheSameTicks();
    void logTicksArePowersOfTen();
    void crowdedPowersAreSkipped();
    void withRoomThereAreTwosAndFives();
    void deepInALogScaleThereAreStillTicks();
    void minorLogTicksAreNoMajorOnes();
    void nothingComesFromBadInput_data();
    void nothingComesFromBadInput();
    void loopsAreBounded();
};

void tst_Ticks::stepsAreOneTwoAndFive()
{
    QCOMPARE(roundStep(0.9), 1.0);
    QCOMPARE(roundStep(1.0), 1.0);
    QCOMPARE(roundStep(1.1), 2.0);
    QCOMPARE(roundStep(2.1), 5.0);
    QCOMPARE(roundStep(5.1), 10.0);
    QCOMPARE(roundStep(0.021), 0.05);
    QCOMPARE(roundStep(3e7), 5e7);
    QCOMPARE(roundStep(0.0), 0.0);
    QCOMPARE(roundStep(-1.0), 0.0);
    QCOMPARE(roundStep(std::numeric_limits<double>::quiet_NaN()), 0.0);
    QCOMPARE(roundStep(std::numeric_limits<double>::infinity()), 0.0);
}

void tst_Ticks::ticksAreRoundNumbers()
{
    const STicks ticks = linearTicks(linear(-0.25, 0.65, 900), {100.0});
    QCOMPARE(ticks.step, 0.1);
    const QVector<double> expected{-0.2, -0.1, 0.0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6};
    QCOMPARE(ticks.major.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QVERIFY(ticks.major[i] == expected[i]); // to the last bit: no 0.30000000000000004
    QVERIFY(!std::signbit(ticks.major[2]));
}

void tst_Ticks::ticksOnTheEdgesAreThere()
{
    QCOMPARE(linearTicks(linear(0.3, 0.9, 300), {100.0}).major, (QVector<double>{0.4, 0.6, 0.8}));
    QCOMPARE(linearTicks(linear(0.1, 0.7, 600), {100.0}).major, (QVector<double>{0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7}));
}

void tst_Ticks::theStepDependsOnTheZoomAlone()
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> exponent(-6.0, 9.0);
    std::uniform_real_distribution<double> place(-1.0, 1.0);
    for (int zoom = 0; zoom < 200; ++zoom) {
        const double span = std::pow(10.0, exponent(random));
        const double step = linearTicks(linear(0.0, span, 800), {80.0}).step;
        for (int pan = 0; pan < 20; ++pan) {
            const double from = place(random) * span * 100.0;
            QCOMPARE(linearTicks(linear(from, from + span, 800), {80.0}).step, step);
        }
    }
}

void tst_Ticks::aRoundRangeKeepsItsStepInAPan()
{
    // 10 values a tick at 80 pixels: exactly on the border of two steps, where each pan rounds another way.
    for (int k = 0; k < 5000; ++k) {
        const double from = k * 0.1;
        QCOMPARE(linearTicks(linear(from, from + 0.1, 800), {80.0}).step, 0.01);
    }
}

void tst_Ticks::ticksKeepTheirDistance()
{
    for (double span = 0.013; span < 1e9; span *= 1.7) {
        const AxisMapping mapping = linear(17.0, 17.0 + span, 640);
        const STicks ticks = linearTicks(mapping, {70.0});
        QVERIFY(isAscending(ticks.major));
        QVERIFY(ticks.major.size() >= 3);
        for (int i = 1; i < ticks.major.size(); ++i)
            QVERIFY(mapping.toPixels(ticks.major[i]) - mapping.toPixels(ticks.major[i - 1]) >= 69.99);
    }
}

void tst_Ticks::aWantedIntervalIsTaken()
{
    const STicks ticks = linearTicks(linear(0.0, 1.0, 800), {80.0, 0.25});
    QCOMPARE(ticks.major, (QVector<double>{0.0, 0.25, 0.5, 0.75, 1.0}));
    for (const double no :
         {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        QCOMPARE(linearTicks(linear(0.0, 1.0, 800), {80.0, no}).step, 0.1);
}

void tst_Ticks::aCrowdedIntervalIsTakenInMultiples()
{
    const STicks ticks = linearTicks(linear(0.0, 1000.0, 800), {80.0, 7.0});
    QCOMPARE(ticks.step, 140.0); // 100 would be too close; 7 * 20
    QCOMPARE(ticks.major.first(), 0.0);
    QVERIFY(linearTicks(linear(0.0, 1e9, 800), {80.0, 1e-9}).major.size() <= 11);
}

void tst_Ticks::subTicksDivideAStep()
{
    const STicks ticks = linearTicks(linear(0.0, 2.0, 200), {100.0, 0.0, 4});
    QCOMPARE(ticks.major, (QVector<double>{0.0, 1.0, 2.0}));
    QCOMPARE(ticks.minor.size(), 8);
    QCOMPARE(ticks.minor.first(), 0.2);
    QVERIFY(!ticks.minor.contains(1.0));
    QVERIFY(linearTicks(linear(0.0, 2.0, 200), {100.0, 0.0, -3}).minor.isEmpty());
    QVERIFY(linearTicks(linear(0.0, 2.0, 200), {100.0, 0.0, 2000000000}).minor.size() <= maximalTickCount);
}

void tst_Ticks::farOutTicksStayDistinct()
{
    const STicks ticks = linearTicks(linear(1e15, 1e15 + 2.0, 800), {80.0});
    QVERIFY(isAscending(ticks.major));
    QVERIFY(isAscending(linearTicks(linear(1e300, 1e300 * (1 + 1e-15), 800), {80.0}).major));
}

void tst_Ticks::aReversedAxisHasTheSameTicks()
{
    const AxisMapping upwards{0.0, 10.0, false, 500.0, 0.0};
    QCOMPARE(linearTicks(upwards, {50.0}).major, linearTicks(linear(0.0, 10.0, 500.0), {50.0}).major);
}

void tst_Ticks::logTicksArePowersOfTen()
{
    const STicks ticks = logTicks(logarithmic(0.05, 20000.0, 560), {60.0});
    QCOMPARE(ticks.major, (QVector<double>{0.1, 1.0, 10.0, 100.0, 1000.0, 10000.0}));
    QVERIFY(ticks.minor.contains(0.05));
    QVERIFY(ticks.minor.contains(20000.0));
    QVERIFY(!ticks.minor.contains(30000.0));
}

void tst_Ticks::crowdedPowersAreSkipped()
{
    const STicks ticks = logTicks(logarithmic(1e-10, 1e10, 400), {60.0}); // 20 pixels a decade
    QCOMPARE(ticks.major, (QVector<double>{1e-9, 1e-6, 1e-3, 1.0, 1e3, 1e6, 1e9}));
    QVERIFY(ticks.minor.isEmpty());
    const STicks wide = logTicks(logarithmic(1e-300, 1e300, 400), {60.0});
    QVERIFY(wide.major.size() >= 5 && wide.major.size() <= 8);
    QVERIFY(wide.major.contains(1.0));
}

void tst_Ticks::withRoomThereAreTwosAndFives()
{
    const STicks ticks = logTicks(logarithmic(1.0, 100.0, 480), {60.0});
    QCOMPARE(ticks.major, (QVector<double>{1.0, 2.0, 5.0, 10.0, 20.0, 50.0, 100.0}));
}

void tst_Ticks::deepInALogScaleThereAreStillTicks()
{
    for (const double from : {1.0, 1.3, 2.2, 5.5, 9.9, 12345.0, 3.1e-7}) {
        for (double ratio = 1.9; ratio > 1.0000001; ratio = 1.0 + (ratio - 1.0) * 0.7) {
            const AxisMapping mapping = logarithmic(from, from * ratio, 700);
            const STicks ticks = logTicks(mapping, {60.0});
            QVERIFY2(ticks.major.size() >= 1, qPrintable(QStringLiteral("%1 x %2").arg(from).arg(ratio)));
            QVERIFY(isAscending(ticks.major));
            for (int i = 1; i < ticks.major.size(); ++i)
                QVERIFY(mapping.toPixels(ticks.major[i]) - mapping.toPixels(ticks.major[i - 1]) > 50.0);
        }
    }
}

void tst_Ticks::minorLogTicksAreNoMajorOnes()
{
    const STicks ticks = logTicks(logarithmic(0.5, 600.0, 800), {60.0});
    QVERIFY(!ticks.minor.isEmpty());
    for (const double minor : ticks.minor)
        QVERIFY(!ticks.major.contains(minor));
    QVERIFY(isAscending(ticks.minor));
}

void tst_Ticks::nothingComesFromBadInput_data()
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("pixels");
    QTest::addColumn<double>("wish");
    QTest::newRow("NaN") << nan << 1.0 << 100.0 << 50.0;
    QTest::newRow("infinity") << 0.0 << infinite << 100.0 << 50.0;
    QTest::newRow("no range") << 3.0 << 3.0 << 100.0 << 50.0;
    QTest::newRow("no pixels") << 1.0 << 3.0 << 0.0 << 50.0;
    QTest::newRow("NaN pixels") << 1.0 << 3.0 << nan << 50.0;
    QTest::newRow("no distance") << 1.0 << 3.0 << 100.0 << 0.0;
    QTest::newRow("NaN distance") << 1.0 << 3.0 << 100.0 << nan;
}

void tst_Ticks::nothingComesFromBadInput()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, pixels);
    QFETCH(double, wish);
    QVERIFY(linearTicks(linear(from, to, pixels), {wish}).major.isEmpty());
    QVERIFY(logTicks(logarithmic(from, to, pixels), {wish}).major.isEmpty());
}

void tst_Ticks::loopsAreBounded()
{
    const STicks ticks = linearTicks(linear(0.0, 1e9, 1e9), {1.0, 0.0, 100});
    QVERIFY(ticks.major.size() <= maximalTickCount);
    QVERIFY(ticks.minor.size() <= maximalTickCount);
    const STicks logs = logTicks(logarithmic(1e-300, 1e300, 1e7), {0.001});
    QVERIFY(logs.major.size() <= maximalTickCount);
    QVERIFY(linearTicks(linear(0.0, 5e-324, 100), {50.0}).major.size() <= maximalTickCount);
}

QTEST_APPLESS_MAIN(tst_Ticks)
#include "tst_Ticks.moc"
