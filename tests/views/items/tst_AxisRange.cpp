// SPDX-License-Identifier: MIT
#include "views/items/AxisRange.h"

#include <QtTest>

#include <limits>
#include <random>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

} // namespace

class tst_AxisRange : public QObject
{
    Q_OBJECT

private slots:
    void aZoomKeepsItsAnchor();
    void aLogZoomKeepsItsAnchor();
    void aPanKeepsTheLength();
    void zoomingInEndsWhereDoublesEnd();
    void zoomingOutEndsFarAway();
    void whatCannotBeShownIsMended();
    void limitsMoveARangeInside();
    void limitsCutAWiderRange();
    void badLimitsAreNone();
    void aRangeHasRoomAroundValues();
    void randomHandsNeverLeaveWhatCanBeShown();
};

void tst_AxisRange::aZoomKeepsItsAnchor()
{
    QCOMPARE(zoomed({0.0, 10.0}, 0.5, 2.0, false), (SAxisRange{1.0, 6.0}));
    QCOMPARE(zoomed({1.0, 6.0}, 2.0, 2.0, false), (SAxisRange{0.0, 10.0}));
    for (const double bad : {0.0, -1.0, notANumber, infinite})
        QCOMPARE(zoomed({0.0, 10.0}, bad, 2.0, false), (SAxisRange{0.0, 10.0}));
    QCOMPARE(zoomed({0.0, 10.0}, 0.5, notANumber, false), (SAxisRange{0.0, 10.0}));
}

void tst_AxisRange::aLogZoomKeepsItsAnchor()
{
    const SAxisRange range = zoomed({1.0, 10000.0}, 0.5, 100.0, true);
    QVERIFY(qFuzzyCompare(range.min, 10.0));
    QVERIFY(qFuzzyCompare(range.max, 1000.0));
    QCOMPARE(zoomed({1.0, 100.0}, 0.5, -3.0, true), (SAxisRange{1.0, 100.0}));
}

void tst_AxisRange::aPanKeepsTheLength()
{
    QCOMPARE(panned({0.0, 10.0}, 0.25, false), (SAxisRange{2.5, 12.5}));
    const SAxisRange range = panned({1.0, 100.0}, -0.5, true);
    QVERIFY(qFuzzyCompare(range.min, 0.1));
    QVERIFY(qFuzzyCompare(range.max, 10.0));
    QCOMPARE(panned({0.0, 10.0}, notANumber, false), (SAxisRange{0.0, 10.0}));
    QCOMPARE(panned({0.0, 1e300}, 5.0, false), (SAxisRange{0.0, 1e300}));
}

void tst_AxisRange::zoomingInEndsWhereDoublesEnd()
{
    for (const double place : {0.0, 1.0, 1e9, -3e15}) {
        SAxisRange range{place, place + 100.0};
        for (int i = 0; i < 3000; ++i)
            range = zoomed(range, 0.8, place + range.length(false) * 0.3, false);
        QVERIFY(range.min < range.max);
        const double middle = range.min + (range.max - range.min) * 0.5;
        QVERIFY(range.min < middle && middle < range.max);
        QVERIFY(std::abs(range.min - place) <= std::max(1e-3, std::abs(place) * 1e-9));
    }
}

void tst_AxisRange::zoomingOutEndsFarAway()
{
    for (const bool log : {false, true}) {
        SAxisRange range{1.0, 2.0};
        for (int i = 0; i < 5000; ++i)
            range = zoomed(range, 2.0, 1.5, log);
        QVERIFY(std::isfinite(range.length(log)) && range.length(log) > 0.0);
    }
}

void tst_AxisRange::whatCannotBeShownIsMended()
{
    const SAxisRange before{3.0, 4.0};
    QCOMPARE(showable({notANumber, 10.0}, false, before), (SAxisRange{3.0, 10.0}));
    QCOMPARE(showable({10.0, 0.0}, false, before), (SAxisRange{0.0, 10.0}));
    QCOMPARE(showable({-infinite, infinite}, false, before), (SAxisRange{-farthestEnd, farthestEnd}));
    QCOMPARE(showable({-5.0, 100.0}, true, before), (SAxisRange{3.0, 100.0}));
    const SAxisRange equal = showable({7.0, 7.0}, false, before);
    QVERIFY(equal.min < 7.0 && equal.max > 7.0);
    const SAxisRange zero = showable({0.0, 0.0}, false, before);
    QVERIFY(zero.min < zero.max);
}

void tst_AxisRange::limitsMoveARangeInside()
{
    QCOMPARE(withinLimits({-5.0, 5.0}, 0.0, 100.0, false), (SAxisRange{0.0, 10.0}));
    QCOMPARE(withinLimits({95.0, 105.0}, 0.0, 100.0, false), (SAxisRange{90.0, 100.0}));
    QCOMPARE(withinLimits({5.0, 15.0}, 0.0, 100.0, false), (SAxisRange{5.0, 15.0}));
    const SAxisRange log = withinLimits({0.1, 10.0}, 1.0, 1e6, true);
    QCOMPARE(log.min, 1.0);
    QVERIFY(qFuzzyCompare(log.max, 100.0));
}

void tst_AxisRange::limitsCutAWiderRange()
{
    QCOMPARE(withinLimits({-50.0, 500.0}, 0.0, 100.0, false), (SAxisRange{0.0, 100.0}));
    QCOMPARE(withinLimits({-50.0, 500.0}, 0.0, notANumber, false), (SAxisRange{0.0, 550.0}));
}

void tst_AxisRange::badLimitsAreNone()
{
    const SAxisRange range{-1.0, 1.0};
    QCOMPARE(withinLimits(range, 5.0, 2.0, false), range);
    QCOMPARE(withinLimits(range, notANumber, notANumber, false), range);
    QCOMPARE(withinLimits(range, -infinite, infinite, false), range);
    QCOMPARE(withinLimits({1.0, 2.0}, -4.0, 10.0, true), (SAxisRange{1.0, 2.0}));
}

void tst_AxisRange::aRangeHasRoomAroundValues()
{
    QCOMPARE(rangeAround(-10.0, 10.0, false), (SAxisRange{-11.0, 11.0}));
    QCOMPARE(rangeAround(0.0, 20.0, false), (SAxisRange{0.0, 21.0}));
    QCOMPARE(rangeAround(-20.0, 0.0, false), (SAxisRange{-21.0, 0.0}));
    QCOMPARE(rangeAround(5.0, 5.0, false), (SAxisRange{4.5, 5.5}));
    QCOMPARE(rangeAround(0.0, 0.0, false), (SAxisRange{-1.0, 1.0}));
    QCOMPARE(rangeAround(notANumber, 1.0, false), (SAxisRange{0.0, 1.0}));
    const double huge = std::numeric_limits<double>::max();
    QCOMPARE(rangeAround(-huge, huge, false), (SAxisRange{-farthestEnd, farthestEnd}));
    const SAxisRange log = rangeAround(1.0, 1e4, true);
    QVERIFY(log.min < 1.0 && log.min > 0.5 && log.max > 1e4);
    QCOMPARE(rangeAround(-4.0, 0.0, true), (SAxisRange{1.0, 10.0}));
}

void tst_AxisRange::randomHandsNeverLeaveWhatCanBeShown()
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    for (const bool log : {false, true}) {
        SAxisRange range{1.0, 10.0};
        for (int i = 0; i < 20000; ++i) {
            if (i % 3 == 0)
                range = panned(range, unit(random) * 30.0, log);
            else
                range = zoomed(range, std::pow(10.0, unit(random) * 9.0), range.min, log);
            QVERIFY(std::isfinite(range.min) && std::isfinite(range.max) && range.min < range.max);
            QVERIFY((AxisMapping{range.min, range.max, log, 0.0, 800.0}.isValid()));
        }
    }
}

QTEST_APPLESS_MAIN(tst_AxisRange)
#include "tst_AxisRange.moc"
