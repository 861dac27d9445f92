// SPDX-License-Identifier: MIT
#include "filters/Filter1D.h"
#include "plotters/BarPlotter.h"
#include "tests/support/Bits.h"
#include "tests/support/MetaTable.h"
#include "tests/support/RandomSeries.h"
#include "tests/support/RecordingPlotter.h"
#include "tests/support/VirtualSlot.h"

#include <QUuid>
#include <QtTest>

#include <memory>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Opens what subclasses see, and writes down the order in which it is fed.
class Node : public Filter1D
{
public:
    using Filter1D::__end_index;
    using Filter1D::__start_index;
    using Filter1D::_filter_func;
    using Filter1D::Filter1D;
    using Filter1D::m_parentFilter;
    using Filter1D::originalData;
    using Filter1D::size2D;
    ~Node() override { withdraw(); }

    void setData(const QVector<double> &data) override
    {
        calls.append(QStringLiteral("data"));
        Filter1D::setData(data);
    }
    void setArea(const QRectF &area) override
    {
        calls.append(QStringLiteral("area"));
        Filter1D::setArea(area);
    }
    void setDataID(const QString &dataID) override
    {
        calls.append(QStringLiteral("dataID"));
        Filter1D::setDataID(dataID);
    }

    QStringList calls;
};

/// Publishes something other than its own series.
class Doubler : public Filter1D
{
public:
    ~Doubler() override { withdraw(); }
    const QVector<double> &data() const override { return m_doubled; }

protected:
    bool _filter_func(const QVector<double> &data) override
    {
        m_doubled.clear();
        for (const double value : data)
            m_doubled.append(2.0 * value);
        return true;
    }

private:
    QVector<double> m_doubled;
};

/// Adds to each value.
class Adder : public Filter1D
{
public:
    ~Adder() override { withdraw(); }
    void setAddend(double addend)
    {
        m_addend = addend;
        filterAgain();
    }
    bool isItsSeriesShared() const { return !m_data.isDetached(); }

protected:
    bool _filter_func(const QVector<double> &data) override
    {
        m_data.clear();
        for (const double value : data)
            m_data.append(value + m_addend);
        return true;
    }

private:
    double m_addend = 1.0;
};

} // namespace

class tst_Filter1D : public QObject
{
    Q_OBJECT

private slots:
    void propertiesSignalsAndInvokablesStandInOrder();
    void virtualOperationsStandInOrder();
    void aNewNodeIsEmptyAndHasAnIdentifierOfItsOwn();

    void theInputIsFilteredAgainNotTheResult();
    void aChildFiltersAgainWhatItsParentPublishes();
    void aChildKeepsNoHoldOnItsParentsSeries();
    void aNodeMayBeSetToItsOwnSeries();
    void theSameSeriesIsPublishedOnce();
    void anEqualSeriesIsPublishedOnce();
    void aSeriesWithNaNIsPublishedEveryTime();
    void aPassThroughCopiesNothing();
    void childrenComeBeforePlottersAndTheSignalComesLast();
    void theSubtreeIsFedDepthFirst();
    void whatIsPublishedIsWhatDataReturns();

    void anAreaReachesChildrenAndPlottersBeforeTheSignal();
    void aFuzzilyEqualAreaIsNoChange();
    void anAreaDoesNotTransformAgain();
    void anIdentifierStaysWithItsNode();

    void aNewChildGetsIdentifierAreaAndSeriesInThisOrder();
    void aNewChildGetsTheTransformedSeries();
    void aChildIsAddedOnce();
    void aRemovedChildKeepsWhatItHas();
    void theLatestParentIsTheParent();
    void aNewPlotterGetsAreaThenSeries();
    void aPlotterIsAddedOnce();
    void aRemovedPlotterKeepsWhatItHas();
    void aBarPlotterTakesTheSeries();
    void nullIsIgnored();

    void anAreaWithoutHeightHasNoSamples();
    void indicesAreRounded();
    void queriesOutsideAndOfAnEmptySeriesFindNothing();
    void queriesWithNaNAndInfinityFindNothing();
    void areaAtIsTheBarOnZero();
    void valueAtIsZeroOutside();
    void theLargestOfNegativeValuesIsZero();
    void maximaAreThoseOfTheTouchedBins();
    void rangesOfAnAreaThatMissesAreThoseOfTheNullRectangle();
    void randomQueriesMatchTheFormulas();
    void pairsAreCountedByHalves();
};

void tst_Filter1D::propertiesSignalsAndInvokablesStandInOrder()
{
    const QMetaObject &meta = Filter1D::staticMetaObject;
    QCOMPARE(ownProperties(meta),
             (QStringList{QStringLiteral("data QVector<double> write dataChanged"),
                          QStringLiteral("area QRectF write areaChanged"),
                          QStringLiteral("dataID QString write dataIDChanged")}));
    QCOMPARE(ownSignals(meta),
             (QStringList{QStringLiteral("dataChanged()"), QStringLiteral("areaChanged()"),
                          QStringLiteral("chartAreaChanged()"), QStringLiteral("dataIDChanged()")}));
    QCOMPARE(ownMethods(meta),
             (QStringList{QStringLiteral("void addFilter(Filter1D*)"), QStringLiteral("void removeFilter(Filter1D*)"),
                          QStringLiteral("void addPlotter(IPlotter1D*)"),
                          QStringLiteral("void removePlotter(IPlotter1D*)"), QStringLiteral("void plotters()")}));
}

void tst_Filter1D::virtualOperationsStandInOrder()
{
    const std::ptrdiff_t numbers[] = {
        virtualSlot(&Filter1D::data),    virtualSlot(&Filter1D::setData),  virtualSlot(&Filter1D::area),
        virtualSlot(&Filter1D::setArea), virtualSlot(&Filter1D::dataID),   virtualSlot(&Filter1D::setDataID),
        virtualSlot(&Filter1D::max_in),  virtualSlot(&Filter1D::value_at), virtualSlot(&Filter1D::index_at),
        virtualSlot(&Filter1D::area_at), virtualSlot(&Node::_filter_func), virtualSlot(&Node::__start_index),
        virtualSlot(&Node::__end_index),
    };
    std::ptrdiff_t expected = 12; // behind those of QObject
    for (const std::ptrdiff_t slot : numbers)
        QCOMPARE(slot, expected++);
}

void tst_Filter1D::aNewNodeIsEmptyAndHasAnIdentifierOfItsOwn()
{
    const Filter1D node, other;
    QVERIFY(node.data().isEmpty());
    QVERIFY(node.area().isNull());
    QVERIFY(node.plotters().isEmpty());
    QVERIFY(!QUuid(node.dataID()).isNull());
    QCOMPARE(QUuid(node.dataID()).toString(), node.dataID());
    QVERIFY(node.dataID() != other.dataID());
}

// the series

void tst_Filter1D::theInputIsFilteredAgainNotTheResult()
{
    Adder node;
    node.setData({5.0});
    COMPARE_BITS(node.data(), QVector<double>{6.0});
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setAddend(3.0);
    COMPARE_BITS(node.data(), QVector<double>{8.0});
    QCOMPARE(changes.size(), 1);
}

void tst_Filter1D::aChildFiltersAgainWhatItsParentPublishes()
{
    Filter1D parent;
    Adder child;
    child.setData({100.0});
    parent.setData({5.0});
    parent.addFilter(&child);
    child.setAddend(3.0);
    COMPARE_BITS(child.data(), QVector<double>{8.0});
    parent.setData({7.0});
    child.setAddend(2.0);
    COMPARE_BITS(child.data(), QVector<double>{9.0});
}

void tst_Filter1D::aChildKeepsNoHoldOnItsParentsSeries()
{
    Filter1D root;
    Adder middle;
    Adder child;
    root.addFilter(&middle);
    middle.addFilter(&child);
    root.setData({5.0});
    COMPARE_BITS(child.data(), QVector<double>{7.0});
    QVERIFY(!middle.isItsSeriesShared()); // so that a stream is written into the same storage again and again
}

void tst_Filter1D::aNodeMayBeSetToItsOwnSeries()
{
    Adder node;
    node.setData({5.0, 6.0});
    node.setData(node.data());
    COMPARE_BITS(node.data(), (QVector<double>{7.0, 8.0}));
}

void tst_Filter1D::theSameSeriesIsPublishedOnce()
{
    Filter1D node;
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    const QVector<double> series{1.0, notANumber};
    node.setData(series);
    node.setData(series);
    QCOMPARE(changes.size(), 1);
    node.setData(node.data());
    QCOMPARE(changes.size(), 1);
}

void tst_Filter1D::anEqualSeriesIsPublishedOnce()
{
    Filter1D node;
    RecordingPlotter plotter;
    node.addPlotter(&plotter);
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData({0.0, 1.0});
    node.setData({-0.0, 1.0}); // equal zeros: the old one stays
    QCOMPARE(changes.size(), 1);
    COMPARE_BITS(node.data(), (QVector<double>{0.0, 1.0}));
    QCOMPARE(plotter.series.size(), 2); // the empty one when it was added
    node.setData({0.0, 1.0, 2.0});
    node.setData({0.0, 1.0});
    QCOMPARE(changes.size(), 3);
}

void tst_Filter1D::aSeriesWithNaNIsPublishedEveryTime()
{
    Filter1D node;
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData({1.0, notANumber});
    node.setData({1.0, notANumber});
    QCOMPARE(changes.size(), 2);
}

void tst_Filter1D::aPassThroughCopiesNothing()
{
    Filter1D root, child;
    RecordingPlotter plotter;
    root.addFilter(&child);
    child.addPlotter(&plotter);
    const QVector<double> series(1000, 1.0);
    root.setData(series);
    QCOMPARE(root.data().constData(), series.constData());
    QCOMPARE(child.data().constData(), series.constData());
    QCOMPARE(plotter.series.last().constData(), series.constData());
}

void tst_Filter1D::childrenComeBeforePlottersAndTheSignalComesLast()
{
    Filter1D root;
    RecordingPlotter firstPlotter, secondPlotter;
    Filter1D firstChild, secondChild;
    root.addPlotter(&firstPlotter);
    root.addPlotter(&secondPlotter);
    root.addFilter(&firstChild);
    root.addFilter(&secondChild);

    QStringList order;
    firstPlotter.onData = [&] { order.append(QStringLiteral("first plotter")); };
    secondPlotter.onData = [&] { order.append(QStringLiteral("second plotter")); };
    connect(&firstChild, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("first child")); });
    connect(&secondChild, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("second child")); });
    connect(&root, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("root")); });
    root.setData({1.0});
    QCOMPARE(order,
             (QStringList{QStringLiteral("first child"), QStringLiteral("second child"),
                          QStringLiteral("first plotter"), QStringLiteral("second plotter"), QStringLiteral("root")}));
}

void tst_Filter1D::theSubtreeIsFedDepthFirst()
{
    Filter1D root, child, grandchild, sibling;
    root.addFilter(&child);
    root.addFilter(&sibling);
    child.addFilter(&grandchild);
    QStringList order;
    connect(&root, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("root")); });
    connect(&child, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("child")); });
    connect(&grandchild, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("grandchild")); });
    connect(&sibling, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("sibling")); });
    root.setData({1.0});
    QCOMPARE(order,
             (QStringList{QStringLiteral("grandchild"), QStringLiteral("child"), QStringLiteral("sibling"),
                          QStringLiteral("root")}));
}

void tst_Filter1D::whatIsPublishedIsWhatDataReturns()
{
    Doubler doubler;
    Filter1D child;
    RecordingPlotter plotter;
    doubler.addFilter(&child);
    doubler.addPlotter(&plotter);
    doubler.setData({1.0, 2.0});
    COMPARE_BITS(child.data(), (QVector<double>{2.0, 4.0}));
    COMPARE_BITS(plotter.series.last(), (QVector<double>{2.0, 4.0}));
}

// area and identifier

void tst_Filter1D::anAreaReachesChildrenAndPlottersBeforeTheSignal()
{
    Filter1D root, child, grandchild;
    RecordingPlotter plotter;
    root.addFilter(&child);
    child.addFilter(&grandchild);
    root.addPlotter(&plotter);
    const QRectF area(1.0, 2.0, 3.0, 4.0);
    int signalled = 0;
    connect(&root, &Filter1D::areaChanged, this, [&] {
        QCOMPARE(child.area(), area);
        QCOMPARE(grandchild.area(), area);
        QCOMPARE(plotter.areas.last(), area);
        ++signalled;
    });
    root.setArea(area);
    QCOMPARE(root.area(), area);
    QCOMPARE(signalled, 1);
}

void tst_Filter1D::aFuzzilyEqualAreaIsNoChange()
{
    Filter1D node;
    RecordingPlotter plotter;
    node.addPlotter(&plotter);
    node.setArea(QRectF(1.0, 2.0, 3.0, 4.0));
    QSignalSpy changes(&node, &Filter1D::areaChanged);
    const int fed = plotter.areas.size();
    node.setArea(QRectF(1.0 + 1e-13, 2.0, 3.0, 4.0 - 1e-13));
    QCOMPARE(changes.size(), 0);
    QCOMPARE(plotter.areas.size(), fed);
    QVERIFY(node.area().x() == 1.0);
    node.setArea(QRectF(1.0 + 1e-11, 2.0, 3.0, 4.0));
    QCOMPARE(changes.size(), 1);
}

void tst_Filter1D::anAreaDoesNotTransformAgain()
{
    Node node;
    node.setData({1.0});
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.calls.clear();
    node.setArea(QRectF(0.0, 0.0, 1.0, 1.0));
    QCOMPARE(node.calls, QStringList{QStringLiteral("area")});
    QCOMPARE(changes.size(), 0);
}

void tst_Filter1D::anIdentifierStaysWithItsNode()
{
    Filter1D root, child;
    root.addFilter(&child);
    QSignalSpy changes(&root, &Filter1D::dataIDChanged);
    const QString before = child.dataID();
    root.setDataID(QStringLiteral("spectrum"));
    root.setDataID(QStringLiteral("spectrum"));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(root.dataID(), QStringLiteral("spectrum"));
    QCOMPARE(child.dataID(), before);
}

// linking

void tst_Filter1D::aNewChildGetsIdentifierAreaAndSeriesInThisOrder()
{
    Filter1D root;
    root.setData({1.0, 2.0});
    root.setArea(QRectF(0.0, 0.0, 2.0, 1.0));
    QSignalSpy dataChanges(&root, &Filter1D::dataChanged);
    Node child;
    root.addFilter(&child);
    QCOMPARE(child.calls, (QStringList{QStringLiteral("dataID"), QStringLiteral("area"), QStringLiteral("data")}));
    QCOMPARE(child.dataID(), root.dataID());
    QCOMPARE(child.area(), root.area());
    COMPARE_BITS(child.data(), root.data());
    QCOMPARE(child.m_parentFilter.data(), &root); // where setters of derived classes look
    QCOMPARE(dataChanges.size(), 0);
}

void tst_Filter1D::aNewChildGetsTheTransformedSeries()
{
    Filter1D root;
    root.setData({1.0, 2.0});
    Doubler child;
    root.addFilter(&child);
    COMPARE_BITS(child.data(), (QVector<double>{2.0, 4.0}));
}

void tst_Filter1D::aChildIsAddedOnce()
{
    Filter1D root;
    Node child;
    root.addFilter(&child);
    child.calls.clear();
    root.addFilter(&child);
    QVERIFY(child.calls.isEmpty());
    root.setData({1.0});
    QCOMPARE(child.calls, QStringList{QStringLiteral("data")});
}

void tst_Filter1D::aRemovedChildKeepsWhatItHas()
{
    Filter1D root;
    Node child;
    root.addFilter(&child);
    root.setData({1.0});
    root.setArea(QRectF(0.0, 0.0, 1.0, 1.0));
    root.removeFilter(&child);
    root.removeFilter(&child);
    root.setData({2.0});
    root.setArea(QRectF(0.0, 0.0, 2.0, 2.0));
    COMPARE_BITS(child.data(), QVector<double>{1.0});
    QCOMPARE(child.area(), QRectF(0.0, 0.0, 1.0, 1.0));
    COMPARE_BITS(child.originalData(), QVector<double>{2.0}); // the parent is still known
}

void tst_Filter1D::theLatestParentIsTheParent()
{
    Filter1D first, second;
    Node child;
    COMPARE_BITS(child.originalData(), child.data());
    first.addFilter(&child);
    second.addFilter(&child);
    first.setData({1.0});
    COMPARE_BITS(child.data(), QVector<double>{1.0}); // both feed it
    second.setData({2.0});
    COMPARE_BITS(child.data(), QVector<double>{2.0});
    first.setData({3.0});
    COMPARE_BITS(child.originalData(), QVector<double>{2.0});
}

void tst_Filter1D::aNewPlotterGetsAreaThenSeries()
{
    Filter1D root;
    root.setData({1.0});
    root.setArea(QRectF(0.0, 0.0, 1.0, 1.0));
    RecordingPlotter plotter;
    QStringList order;
    plotter.onArea = [&] { order.append(QStringLiteral("area")); };
    plotter.onData = [&] { order.append(QStringLiteral("data")); };
    root.addPlotter(&plotter);
    QCOMPARE(order, (QStringList{QStringLiteral("area"), QStringLiteral("data")}));
    QCOMPARE(plotter.areas, QVector<QRectF>{root.area()});
    COMPARE_BITS(plotter.series.last(), root.data());
    QCOMPARE(root.plotters(), QVector<IPlotter1D *>{&plotter});
}

void tst_Filter1D::aPlotterIsAddedOnce()
{
    Filter1D root;
    RecordingPlotter plotter;
    root.addPlotter(&plotter);
    root.addPlotter(&plotter);
    QCOMPARE(root.plotters().size(), 1);
    QCOMPARE(plotter.series.size(), 1);
    root.setData({1.0});
    QCOMPARE(plotter.series.size(), 2);
}

void tst_Filter1D::aRemovedPlotterKeepsWhatItHas()
{
    Filter1D root;
    RecordingPlotter plotter;
    root.addPlotter(&plotter);
    root.removePlotter(&plotter);
    root.removePlotter(&plotter);
    root.setData({1.0});
    QCOMPARE(plotter.series.size(), 1);
    QVERIFY(root.plotters().isEmpty());
}

void tst_Filter1D::aBarPlotterTakesTheSeries()
{
    Filter1D root;
    BarPlotter plotter;
    root.addPlotter(&plotter);
    root.setData({1.0, 2.0});
    COMPARE_BITS(plotter.data(), (QVector<double>{1.0, 2.0}));
}

void tst_Filter1D::nullIsIgnored()
{
    Filter1D root;
    root.addFilter(nullptr);
    root.addPlotter(nullptr);
    root.removeFilter(nullptr);
    root.removePlotter(nullptr);
    root.setData({1.0});
    QVERIFY(root.plotters().isEmpty());
}

// queries

void tst_Filter1D::anAreaWithoutHeightHasNoSamples()
{
    Filter1D node;
    node.setData(QVector<double>(10, 1.0));
    node.setArea(QRectF(0.0, 0.0, 100.0, 0.0));
    for (const double x : {0.0, 0.5, 50.0, 100.0})
        QCOMPARE(node.index_at(x), -1);
    node.setArea(QRectF(0.0, 0.5, 100.0, 1.0)); // above zero
    QCOMPARE(node.index_at(50.0), -1);
    node.setArea(QRectF(0.0, -1.0, 0.0, 2.0)); // no width
    QCOMPARE(node.index_at(0.0), -1);
}

void tst_Filter1D::indicesAreRounded()
{
    Filter1D node;
    node.setData(QVector<double>(10, 1.0));
    node.setArea(QRectF(0.0, -1.0, 10.0, 2.0));
    QCOMPARE(node.index_at(3.4), 3);
    QCOMPARE(node.index_at(3.5), 4);
    QCOMPARE(node.index_at(3.6), 4);
    QCOMPARE(node.index_at(9.9), 9);
    QCOMPARE(node.index_at(10.0), 9);
    QCOMPARE(node.index_at(0.0), 0);
}

void tst_Filter1D::queriesOutsideAndOfAnEmptySeriesFindNothing()
{
    Node node;
    node.setArea(QRectF(0.0, -1.0, 10.0, 2.0));
    QCOMPARE(node.index_at(5.0), -1);
    QCOMPARE(node.__start_index(node.area()), 0);
    QCOMPARE(node.__end_index(node.area()), 0);
    QCOMPARE(node.max_in(node.area()), 0.0);
    QVERIFY(node.area_at(QPointF(5.0, 0.0)).isNull());
    node.setData({1.0, 2.0});
    QCOMPARE(node.index_at(-0.1), -1);
    QCOMPARE(node.index_at(10.1), -1);
    QVERIFY(node.area_at(QPointF(-0.1, 0.0)).isNull());
}

void tst_Filter1D::queriesWithNaNAndInfinityFindNothing()
{
    Filter1D node;
    node.setData({1.0, 2.0});
    node.setArea(QRectF(0.0, -1.0, 10.0, 2.0));
    for (const double x : {notANumber, infinity, -infinity}) {
        QCOMPARE(node.index_at(x), -1);
        QCOMPARE(node.value_at(x), 0.0);
        QVERIFY(node.area_at(QPointF(x, 0.0)).isNull());
    }
    for (const double bad : {notANumber, infinity, -infinity}) { // none of these may read outside the series
        for (const QRectF &rect :
             {QRectF(bad, 0.0, 1.0, 1.0), QRectF(0.0, bad, 1.0, 1.0), QRectF(0.0, 0.0, bad, 1.0)}) {
            node.max_in(rect);
            Filter1D spread;
            spread.setData({1.0, 2.0});
            spread.setArea(rect);
            spread.index_at(0.5);
            spread.value_at(0.5);
            spread.max_in(QRectF(0.0, 0.0, 1.0, 1.0));
            spread.area_at(QPointF(0.5, 0.0));
        }
    }
}

void tst_Filter1D::areaAtIsTheBarOnZero()
{
    Filter1D node;
    node.setData({5.0, -7.0, 9.0, 11.0});
    node.setArea(QRectF(10.0, -1.0, 8.0, 2.0));
    QCOMPARE(node.area_at(QPointF(10.0, 1e9)), QRectF(10.0, 0.0, 2.0, 5.0)); // y is not looked at
    QCOMPARE(node.area_at(QPointF(11.5, 0.0)), QRectF(12.0, 0.0, 2.0, -7.0));
    QCOMPARE(node.area_at(QPointF(18.0, 0.0)), QRectF(16.0, 0.0, 2.0, 11.0));
}

void tst_Filter1D::valueAtIsZeroOutside()
{
    Filter1D node;
    node.setData({5.0, 6.0});
    node.setArea(QRectF(0.0, -1.0, 2.0, 2.0));
    QCOMPARE(node.value_at(0.2), 5.0);
    QCOMPARE(node.value_at(0.7), 6.0);
    QCOMPARE(node.value_at(2.1), 0.0);
    QCOMPARE(Filter1D().value_at(0.0), 0.0);
}

void tst_Filter1D::theLargestOfNegativeValuesIsZero()
{
    Filter1D node;
    node.setData({-5.0, -6.0});
    node.setArea(QRectF(0.0, -1.0, 2.0, 2.0));
    QCOMPARE(bitsOf(node.max_in(node.area())), bitsOf(0.0));
}

void tst_Filter1D::maximaAreThoseOfTheTouchedBins()
{
    Filter1D node;
    node.setData({4.0, 3.0, 2.0, 1.0});
    node.setArea(QRectF(0.0, 0.0, 4.0, 1.0));
    QCOMPARE(node.max_in(QRectF(0.0, 0.0, 4.0, 1.0)), 4.0);
    QCOMPARE(node.max_in(QRectF(1.0, 0.0, 1.0, 1.0)), 3.0);
    QCOMPARE(node.max_in(QRectF(1.9, 0.0, 0.2, 1.0)), 3.0);
    QCOMPARE(node.max_in(QRectF(2.1, 0.0, 100.0, 1.0)), 2.0);
    QCOMPARE(node.max_in(QRectF(-100.0, 0.0, 100.5, 1.0)), 4.0);
    QCOMPARE(node.max_in(QRectF(5.0, 0.0, 1.0, 1.0)), 0.0);
    QCOMPARE(node.max_in(QRectF(0.0, 2.0, 4.0, 1.0)), 0.0);
    QCOMPARE(node.max_in(QRectF()), 0.0);
}

void tst_Filter1D::rangesOfAnAreaThatMissesAreThoseOfTheNullRectangle()
{
    Node node;
    node.setData(QVector<double>(10, 1.0));
    node.setArea(QRectF(100.0, 0.0, 10.0, 1.0));
    const QRectF missing(0.0, 0.0, 1.0, 1.0);
    QCOMPARE(node.__start_index(missing), -100);
    QCOMPARE(node.__end_index(missing), -100);
}

void tst_Filter1D::randomQueriesMatchTheFormulas()
{
    RandomSeries random(1);
    for (int round = 0; round < 5000; ++round) {
        Node node;
        const QVector<double> series = random.series();
        node.setData(series);
        const QRectF area(random.real(-100.0, 100.0), random.real(-2.0, 0.5), random.real(0.1, 100.0),
                          random.real(0.0, 3.0));
        node.setArea(area);
        const int count = series.size();
        const double width = area.width() / count;
        const double x = random.real(-120.0, 220.0);
        int index = -1;
        if (count > 0 && area.contains(QPointF(x, 0.0)))
            index = int(std::min(std::round((x - area.left()) / width), count - 1.0));
        QCOMPARE(node.index_at(x), index);
        QCOMPARE(bitsOf(node.value_at(x)), bitsOf(index < 0 ? 0.0 : series.at(index)));

        const QRectF rect(random.real(-120.0, 120.0), random.real(-2.0, 2.0), random.real(0.0, 100.0),
                          random.real(0.0, 3.0));
        double largest = 0.0;
        if (!rect.intersected(area).isEmpty() && count > 0) {
            const int start = int(std::floor((area.intersected(rect).left() - area.left()) / width));
            const int end = int(std::ceil((area.intersected(rect).right() - area.left()) / width));
            for (int i = std::max(start, 0); i < std::min(end, count); ++i) {
                if (series.at(i) > largest)
                    largest = series.at(i);
            }
        }
        QCOMPARE(bitsOf(node.max_in(rect)), bitsOf(largest));
    }
}

void tst_Filter1D::pairsAreCountedByHalves()
{
    Node node;
    for (const int size : {0, 1, 2, 7, 8}) {
        node.setData(QVector<double>(size, size));
        QCOMPARE(node.size2D(), size / 2);
    }
}

QTEST_GUILESS_MAIN(tst_Filter1D)
#include "tst_Filter1D.moc"
