// SPDX-License-Identifier: MIT
#include "views/items/AxisMapping.h"

#include <QtTest>

#include <limits>

class tst_AxisMapping : public QObject
{
    Q_OBJECT

private slots:
    void theEndsLieAtTheirPixels();
    void aYAxisRunsUpwards();
    void pixelsAndValuesAreInverse();
    void aLogScaleMakesRatiosEqual();
    void aSingleValueFarOutKeepsItsPlace();
    void whatCannotBeMappedIsInvalid_data();
    void whatCannotBeMappedIsInvalid();
};

void tst_AxisMapping::theEndsLieAtTheirPixels()
{
    const AxisMapping mapping{-3.0, 7.0, false, 40.0, 240.0};
    QVERIFY(mapping.isValid());
    QCOMPARE(mapping.toPixels(-3.0), 40.0);
    QCOMPARE(mapping.toPixels(7.0), 240.0);
    QCOMPARE(mapping.toPixels(2.0), 140.0);
    QCOMPARE(mapping.pixelsPerUnit(), 20.0);
}

void tst_AxisMapping::aYAxisRunsUpwards()
{
    const AxisMapping mapping{0.0, 10.0, false, 300.0, 100.0};
    QCOMPARE(mapping.toPixels(2.5), 250.0);
    QCOMPARE(mapping.toValue(250.0), 2.5);
}

void tst_AxisMapping::pixelsAndValuesAreInverse()
{
    for (const bool log : {false, true}) {
        const AxisMapping mapping{0.25, 4096.0, log, 7.0, 907.0};
        for (double pixels = 7.0; pixels <= 907.0; pixels += 12.5)
            QVERIFY(std::abs(mapping.toPixels(mapping.toValue(pixels)) - pixels) < 1e-9);
    }
}

void tst_AxisMapping::aLogScaleMakesRatiosEqual()
{
    const AxisMapping mapping{1.0, 10000.0, true, 0.0, 400.0};
    QCOMPARE(mapping.toPixels(10.0), 100.0);
    QCOMPARE(mapping.toPixels(1000.0), 300.0);
    QVERIFY(!std::isfinite(mapping.toPixels(0.0)));
    QVERIFY(std::isnan(mapping.toPixels(-1.0)));
}

void tst_AxisMapping::aSingleValueFarOutKeepsItsPlace()
{
    const AxisMapping mapping{1e9, 1e9 + 1.0, false, 0.0, 1000.0};
    QCOMPARE(mapping.toPixels(1e9 + 0.5), 500.0);
    QCOMPARE(mapping.toValue(500.0), 1e9 + 0.5);
}

void tst_AxisMapping::whatCannotBeMappedIsInvalid_data()
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double huge = std::numeric_limits<double>::max();
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<bool>("log");
    QTest::addColumn<double>("pixelsTo");
    QTest::newRow("no range") << 1.0 << 1.0 << false << 100.0;
    QTest::newRow("not a number") << nan << 1.0 << false << 100.0;
    QTest::newRow("a span beyond double") << -huge << huge << false << 100.0;
    QTest::newRow("no pixels") << 0.0 << 1.0 << false << 0.0;
    QTest::newRow("log from 0") << 0.0 << 1.0 << true << 100.0;
    QTest::newRow("log from below") << -2.0 << -1.0 << true << 100.0;
}

void tst_AxisMapping::whatCannotBeMappedIsInvalid()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(bool, log);
    QFETCH(double, pixelsTo);
    QVERIFY(!(AxisMapping{from, to, log, 0.0, pixelsTo}.isValid()));
}

QTEST_APPLESS_MAIN(tst_AxisMapping)
#include "tst_AxisMapping.moc"
