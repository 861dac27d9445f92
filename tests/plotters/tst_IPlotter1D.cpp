// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/IPlotter1D.h"
#include "tests/support/MetaTable.h"
#include "tests/support/VirtualSlot.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A plotter with a series over an area.
struct Slots
{
    Slots(const QRectF &extent, const QVector<double> &series)
    {
        plotter.setChartArea(&area);
        plotter.setPlotterArea(extent);
        plotter.setData(series);
    }
    IChartArea area;
    IPlotter1D plotter;
};

const QVector<double> tenValues{1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0, 10.0};

} // namespace

class tst_IPlotter1D : public QObject
{
    Q_OBJECT

private slots:
    void itAddsThreeOperationsAndNothingElse();

    void theSlotUnderAPosition_data();
    void theSlotUnderAPosition();
    void anOffsetMovesTheSlots();
    void anAreaAboveTheAxisHasNoSlots();
    void anEmptySeriesHasNoSlots();

    void theVisibleRange_data();
    void theVisibleRange();
    void anAreaToTheLeftStartsAtZeroWhereverThePlotterStands();
    void anExtentOfNegativeWidthIsOverlappedWhereItLies();
    void strangeAreasGiveNoRangeOutsideTheSeries_data();
    void strangeAreasGiveNoRangeOutsideTheSeries();

    void theMaximumOfNegativesIsZero();
    void theMaximumLooksAtTouchedSlotsOnly();
    void theMaximumHasSinglePrecision();
    void theMaximumUsesTheRangeOfASubclass();
    void aNaNIsNeverTheMaximum();

    void hoveringAtTheValueHitsAndAboveMisses();
    void hoveringBelowZeroHits();
    void hoveringOutsideMissesWithoutASlot();
    void hoveringOnTheRightEdgeMisses();
    void hoveringOverNoNumberHits();
    void hoveringAtNoPlaceMisses();
    void hoveringGivesTheSlotsRectangle();
};

void tst_IPlotter1D::itAddsThreeOperationsAndNothingElse()
{
    QCOMPARE(ownProperties(IPlotter1D::staticMetaObject), QStringList());
    QCOMPARE(ownSignals(IPlotter1D::staticMetaObject), QStringList());
    QCOMPARE(ownMethods(IPlotter1D::staticMetaObject), QStringList());
    QCOMPARE(IPlotter1D::staticMetaObject.superClass(), &IPlotter::staticMetaObject);
    std::ptrdiff_t slot = virtualSlot(&IPlotter::_fetch_render_layers);
    QCOMPARE(virtualSlot(&IPlotter1D::_index_at), ++slot);
    QCOMPARE(virtualSlot(&IPlotter1D::__start_index), ++slot);
    QCOMPARE(virtualSlot(&IPlotter1D::__end_index), ++slot);
}

// positions

void tst_IPlotter1D::theSlotUnderAPosition_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("slot");
    QTest::newRow("inside") << 3.7 << 3;
    QTest::newRow("left edge") << 0.0 << 0;
    QTest::newRow("between two") << 4.0 << 4;
    QTest::newRow("left of it") << -0.1 << -1;
    QTest::newRow("right edge, one past the last") << 10.0 << 10;
    QTest::newRow("right of it") << 10.1 << -1;
    QTest::newRow("not a number") << notANumber << -1;
    QTest::newRow("infinity") << infinity << -1;
    QTest::newRow("minus infinity") << -infinity << -1;
}

void tst_IPlotter1D::theSlotUnderAPosition()
{
    QFETCH(double, x);
    QFETCH(int, slot);
    const Slots slots10({0.0, 0.0, 10.0, 100.0}, tenValues);
    QCOMPARE(slots10.plotter._index_at(x), slot);
}

void tst_IPlotter1D::anOffsetMovesTheSlots()
{
    Slots slots10({0.0, 0.0, 10.0, 100.0}, tenValues);
    slots10.plotter.setXOffset(2.0);
    QCOMPARE(slots10.plotter.modArea().left(), -2.0);
    QCOMPARE(slots10.plotter._index_at(1.0), 3);
    QCOMPARE(slots10.plotter._index_at(9.0), -1);
}

void tst_IPlotter1D::anAreaAboveTheAxisHasNoSlots()
{
    const Slots slots10({0.0, 5.0, 10.0, 100.0}, tenValues);
    for (double x = -1.0; x <= 11.0; x += 0.5)
        QCOMPARE(slots10.plotter._index_at(x), -1);
}

void tst_IPlotter1D::anEmptySeriesHasNoSlots()
{
    const Slots empty({0.0, 0.0, 10.0, 100.0}, {});
    QCOMPARE(empty.plotter._index_at(3.0), -1);
    QCOMPARE(empty.plotter.__start_index({0.0, 0.0, 5.0, 5.0}), 0);
    QCOMPARE(empty.plotter.__end_index({0.0, 0.0, 5.0, 5.0}), 0);
    QCOMPARE(empty.plotter.max_in({0.0, 0.0, 5.0, 5.0}), 0.0);
    QVERIFY(!empty.plotter.mouse_hovering({3.0, 0.0}).valid);
    QCOMPARE(empty.plotter.mouse_hovering({3.0, 0.0}).index, -1);
}

// ranges

void tst_IPlotter1D::theVisibleRange_data()
{
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::newRow("all") << QRectF(0.0, 0.0, 10.0, 1.0) << 0 << 10;
    QTest::newRow("more than all") << QRectF(-5.0, 0.0, 50.0, 1.0) << 0 << 10;
    QTest::newRow("parts of slots") << QRectF(3.2, 0.0, 4.3, 1.0) << 3 << 8;
    QTest::newRow("whole slots") << QRectF(3.0, 0.0, 4.0, 1.0) << 3 << 7;
    QTest::newRow("within one") << QRectF(3.2, 0.0, 0.1, 1.0) << 3 << 4;
    QTest::newRow("over the left edge") << QRectF(-3.0, 0.0, 4.5, 1.0) << 0 << 2;
    QTest::newRow("over the right edge") << QRectF(8.5, 0.0, 10.0, 1.0) << 8 << 10;
}

void tst_IPlotter1D::theVisibleRange()
{
    QFETCH(QRectF, area);
    QFETCH(int, start);
    QFETCH(int, end);
    const Slots slots10({0.0, 0.0, 10.0, 100.0}, tenValues);
    QCOMPARE(slots10.plotter.__start_index(area), start);
    QCOMPARE(slots10.plotter.__end_index(area), end);
}

void tst_IPlotter1D::anAreaToTheLeftStartsAtZeroWhereverThePlotterStands()
{
    for (const double left : {-100.0, -5.0, 0.0, 5.0, 100.0}) {
        const Slots slots10({left, 0.0, 10.0, 100.0}, tenValues);
        QCOMPARE(slots10.plotter.__start_index({left - 8.0, 0.0, 3.0, 10.0}), 0);
        QCOMPARE(slots10.plotter.__start_index({left - 3.0, 0.0, 3.0, 10.0}), 0);
        QCOMPARE(slots10.plotter.__end_index({left + 13.0, 0.0, 3.0, 10.0}), 10);
        QCOMPARE(slots10.plotter.__end_index({left + 10.0, 0.0, 3.0, 10.0}), 10);
    }
}

void tst_IPlotter1D::anExtentOfNegativeWidthIsOverlappedWhereItLies()
{
    const Slots backwards({0.0, 0.0, -4.0, 100.0}, {1.0, 2.0, 3.0, 4.0}); // from 0 down to -4
    // Slots are 1 wide and counted to the left: what both share reaches from slot 3.5 to slot 1.5, so no slot is left.
    for (const QRectF &area : {QRectF(-3.5, 0.0, 2.0, 100.0), QRectF(-1.5, 0.0, -2.0, 100.0)}) {
        QCOMPARE(backwards.plotter.__start_index(area), 3);
        QCOMPARE(backwards.plotter.__end_index(area), 2);
        QCOMPARE(backwards.plotter.max_in(area), 0.0);
    }
    QCOMPARE(backwards.plotter.__start_index({-7.0, 0.0, 2.0, 100.0}), 0); // to the left of both edges
    QCOMPARE(backwards.plotter.__end_index({0.0, 0.0, 2.0, 100.0}), 4);
    QCOMPARE(backwards.plotter.max_in({0.0, 0.0, 2.0, 100.0}), 0.0);
}

void tst_IPlotter1D::strangeAreasGiveNoRangeOutsideTheSeries_data()
{
    QTest::addColumn<QRectF>("extent");
    QTest::addColumn<QRectF>("area");
    const QRectF usual(0.0, 0.0, 10.0, 100.0);
    QTest::newRow("not a number") << usual << QRectF(notANumber, notANumber, notANumber, notANumber);
    QTest::newRow("width not a number") << usual << QRectF(0.0, 0.0, notANumber, 1.0);
    QTest::newRow("endless") << usual << QRectF(-infinity, 0.0, infinity, 1.0);
    QTest::newRow("huge") << usual << QRectF(-1e300, 0.0, 2e300, 1.0);
    QTest::newRow("extent not a number") << QRectF(notANumber, 0.0, notANumber, 1.0) << usual;
    QTest::newRow("extent endless") << QRectF(0.0, 0.0, infinity, 1.0) << usual;
    QTest::newRow("extent without width") << QRectF(0.0, 0.0, 0.0, 1.0) << usual;
    QTest::newRow("extent tiny") << QRectF(0.0, 0.0, 5e-324, 1.0) << usual;
    QTest::newRow("extent negative") << QRectF(10.0, 0.0, -10.0, 100.0) << usual;
}

void tst_IPlotter1D::strangeAreasGiveNoRangeOutsideTheSeries()
{
    QFETCH(QRectF, extent);
    QFETCH(QRectF, area);
    const Slots strange(extent, tenValues);
    QVERIFY(strange.plotter.__start_index(area) >= 0);
    QVERIFY(strange.plotter.__end_index(area) <= 10);
    const double maximum = strange.plotter.max_in(area);
    QVERIFY(maximum >= 0.0 && maximum <= 10.0);
    for (const double x : {0.0, 5.0, notANumber, infinity}) {
        const int index = strange.plotter._index_at(x);
        QVERIFY(index >= -1 && index <= 10);
        strange.plotter.mouse_hovering({x, 0.0});
    }
}

// the maximum

void tst_IPlotter1D::theMaximumOfNegativesIsZero()
{
    const Slots negative({0.0, 0.0, 2.0, 100.0}, {-3.0, -1.0});
    QCOMPARE(negative.plotter.max_in({0.0, 0.0, 2.0, 1.0}), 0.0);
}

void tst_IPlotter1D::theMaximumLooksAtTouchedSlotsOnly()
{
    const Slots slots5({0.0, 0.0, 5.0, 100.0}, {50.0, 1.0, 7.0, 2.0, 90.0});
    QCOMPARE(slots5.plotter.max_in({1.5, 0.0, 1.0, 1.0}), 7.0);
    QCOMPARE(slots5.plotter.max_in({1.0, 0.0, 1.0, 1.0}), 1.0);
    QCOMPARE(slots5.plotter.max_in({0.0, 0.0, 5.0, 1.0}), 90.0);
    QCOMPARE(slots5.plotter.max_in({6.0, 0.0, 5.0, 1.0}), 0.0);
    QCOMPARE(slots5.plotter.max_in({0.0, 200.0, 5.0, 1.0}), 0.0); // above the plotter
    QCOMPARE(slots5.plotter.max_in({0.0, 0.0, 5.0, 0.0}), 0.0);   // of no height
}

void tst_IPlotter1D::theMaximumHasSinglePrecision()
{
    const double fine = 16777217.0; // one more than a float can tell apart
    const Slots one({0.0, 0.0, 1.0, 100.0}, {fine});
    QCOMPARE(one.plotter.max_in({0.0, 0.0, 1.0, 1.0}), 16777216.0);
    const Slots two({0.0, 0.0, 2.0, 100.0}, {0.1, 0.05});
    QCOMPARE(two.plotter.max_in({0.0, 0.0, 2.0, 1.0}), double(0.1f));
    const Slots huge({0.0, 0.0, 1.0, 100.0}, {1e300});
    QCOMPARE(huge.plotter.max_in({0.0, 0.0, 1.0, 1.0}), infinity);
}

void tst_IPlotter1D::theMaximumUsesTheRangeOfASubclass()
{
    class Shifted : public IPlotter1D
    {
    public:
        ~Shifted() override { withdraw(); }
        int __start_index(const QRectF &) const override { return 2; }
        int __end_index(const QRectF &) const override { return 3; }
    };
    IChartArea area;
    Shifted plotter;
    plotter.setChartArea(&area);
    plotter.setPlotterArea({0.0, 0.0, 5.0, 100.0});
    plotter.setData({50.0, 1.0, 7.0, 2.0, 90.0});
    QCOMPARE(plotter.max_in({0.0, 0.0, 5.0, 1.0}), 7.0);
}

void tst_IPlotter1D::aNaNIsNeverTheMaximum()
{
    const Slots mixed({0.0, 0.0, 3.0, 100.0}, {notANumber, 4.0, notANumber});
    QCOMPARE(mixed.plotter.max_in({0.0, 0.0, 3.0, 1.0}), 4.0);
}

// hovering

void tst_IPlotter1D::hoveringAtTheValueHitsAndAboveMisses()
{
    const Slots slots3({0.0, 0.0, 3.0, 100.0}, {1.0, 5.0, 2.0});
    const SInfoPoint hit = slots3.plotter.mouse_hovering({1.5, 5.0});
    QVERIFY(hit.valid);
    QCOMPARE(hit.index, 1);
    QCOMPARE(hit.plotter, &slots3.plotter);
    const SInfoPoint miss = slots3.plotter.mouse_hovering({1.5, 5.001});
    QVERIFY(!miss.valid);
    QCOMPARE(miss.index, 1);
    QVERIFY(miss.area.isNull());
    QCOMPARE(miss.plotter, &slots3.plotter);
}

void tst_IPlotter1D::hoveringBelowZeroHits()
{
    const Slots slots2({0.0, 0.0, 2.0, 100.0}, {1.0, -5.0});
    QVERIFY(slots2.plotter.mouse_hovering({0.5, -100.0}).valid);
    QVERIFY(!slots2.plotter.mouse_hovering({1.5, -4.0}).valid);
    QVERIFY(slots2.plotter.mouse_hovering({1.5, -5.0}).valid);
}

void tst_IPlotter1D::hoveringOutsideMissesWithoutASlot()
{
    const Slots slots2({0.0, 0.0, 2.0, 100.0}, {1.0, 5.0});
    const SInfoPoint miss = slots2.plotter.mouse_hovering({-0.5, 0.0});
    QVERIFY(!miss.valid);
    QCOMPARE(miss.index, -1);
    QCOMPARE(miss.plotter, &slots2.plotter);
}

void tst_IPlotter1D::hoveringOnTheRightEdgeMisses()
{
    const Slots slots2({0.0, 0.0, 2.0, 100.0}, {1.0, 5.0});
    QCOMPARE(slots2.plotter._index_at(2.0), 2);
    QVERIFY(!slots2.plotter.mouse_hovering({2.0, 0.0}).valid);
}

void tst_IPlotter1D::hoveringOverNoNumberHits()
{
    const Slots slots2({0.0, 0.0, 2.0, 100.0}, {1.0, notANumber});
    const SInfoPoint hit = slots2.plotter.mouse_hovering({1.5, 50.0}); // which is not greater than the value
    QVERIFY(hit.valid);
    QCOMPARE(hit.index, 1);
    QCOMPARE(hit.area.left(), 1.0);
    QVERIFY(std::isnan(hit.area.height()));
    QVERIFY(slots2.plotter.mouse_hovering({0.5, notANumber}).valid);
}

void tst_IPlotter1D::hoveringAtNoPlaceMisses()
{
    const Slots slots2({0.0, 0.0, 2.0, 100.0}, {1.0, notANumber});
    QVERIFY(!slots2.plotter.mouse_hovering({notANumber, 0.0}).valid);
    QVERIFY(!slots2.plotter.mouse_hovering({notANumber, notANumber}).valid);
}

void tst_IPlotter1D::hoveringGivesTheSlotsRectangle()
{
    Slots slots4({10.0, 0.0, 2.0, 100.0}, {1.0, 5.0, 2.0, 7.0});
    QCOMPARE(slots4.plotter.mouse_hovering({11.75, 3.0}).area, QRectF(11.5, 0.0, 0.5, 7.0));
    slots4.plotter.setXOffset(4.0);
    QCOMPARE(slots4.plotter.mouse_hovering({7.75, 3.0}).area, QRectF(7.5, 0.0, 0.5, 7.0));
}

QTEST_MAIN(tst_IPlotter1D)
#include "tst_IPlotter1D.moc"
