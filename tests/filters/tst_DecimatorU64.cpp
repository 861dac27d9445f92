// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "filters/DecimatorU64.h"
#include "tests/support/Bits.h"
#include "tests/support/MetaTable.h"
#include "tests/support/PlainBuckets.h"
#include "tests/support/RandomSeries.h"
#include "tests/support/RecordingPlotter.h"

#include <QtTest>

#include <memory>
#include <thread>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A chart of a given width that shows what it is told to.
class Chart : public ChartArea
{
public:
    explicit Chart(double width)
    {
        setShouldUpdate(false); // requests would fit the zoom to the plotters, of which there are none
        setWidth(width);
        setHeight(100.0);
    }
    ~Chart() override { withdraw(); }
    void show(double units) { setZoomRect(QRectF(0.0, 0.0, units, 1.0)); }
};

QVector<double> ramp(int count)
{
    QVector<double> values(count);
    for (int i = 0; i < count; ++i)
        values[i] = i;
    return values;
}

/// A node over 100000 samples of width 1 that publishes to a plotter.
struct SNode
{
    SNode()
    {
        node.setArea(QRectF(0.0, 0.0, 100000.0, 1.0));
        node.addPlotter(&plotter);
    }
    int lastSize() const { return plotter.series.last().size(); }

    const QVector<double> series = ramp(100000);
    DecimatorU64 node;
    RecordingPlotter plotter;
};

/// levelFor() by itself.
class Levels : public DecimatorFilter<double>
{
public:
    explicit Levels(int size) { setInput(ramp(size)); }
    int count() const { return m_levels.size(); }
    const QVector<double> &selected(int level)
    {
        m_level = level;
        return selectedLevel();
    }
    const double *storage(int level) const { return m_levels.at(level).constData(); }
};

constexpr int longSize = 1'100'000; // long enough for levels to be built when they are wanted

/// A node that lets us look at what it has built, with a chart a thousand pixels wide.
class LongNode : public DecimatorU64
{
public:
    LongNode()
    {
        setArea(QRectF(0.0, 0.0, longSize, 1.0));
        setChartArea(&m_chart);
    }
    ~LongNode() override { withdraw(); }
    Chart &chart() { return m_chart; }
    /// Whether the finest of the coarser levels has been begun; ends what goes on in the background.
    bool hasFineLevels()
    {
        m_builder.giveUp();
        return !m_levels.at(1).isEmpty();
    }

private:
    Chart m_chart{1000.0};
};

} // namespace

class tst_DecimatorU64 : public QObject
{
    Q_OBJECT

private slots:
    void propertiesAndSignalsStandInOrder();
    void bothBasesAreKnownByName();

    void withoutAChartTheInputIsPublished();
    void anEqualSeriesIsNotPublished();
    void aSeriesWithNaNIsPublishedEveryTime();
    void anEmptySeriesPublishesWhatIsThere();
    void anEmptySeriesInFrontPublishesNothing();
    void theSeriesIsNotCopied();

    void aPixelOfTenBinsSelectsTheFourthLevel();
    void levelsMatchTheFormula();
    void levelsOfOddRectanglesAreWithinThePyramid();
    void everyLevelIsReachedByZooming();
    void theHighestValueIsOnEveryLevel();
    void aZoomThatKeepsTheLevelPublishesNothing();
    void aZoomThatChangesTheLevelPublishesASharedSeries();
    void aChangeOfWidthMovesTheLevel();
    void aSeriesThatMovesTheLevelIsPublishedTwice();
    void aChangeOfTheAreaMovesNothing();
    void theZoomIsWhatCountsNotTheChartRectangle();
    void aPlainChartAreaMovesTheLevelByItsWidth();
    void aChartNarrowerThanAPixelIsIgnored();
    void aShorterSeriesReadsTheLastLevel();

    void aLongSeriesIsExactOnEveryLevel();
    void aStreamBuildsOnlyWhatIsShown();
    void atRestTheOtherLevelsAreBuilt();
    void aChartThatComesAfterTheSeriesHasTheOtherLevelsBuilt();

    void aNewChartMovesTheLevelAtItsNextChange();
    void aFormerChartStillUpdatesTheLevel();
    void theSameChartIsNoChange();
    void noChartAgainKeepsTheLevel();
    void aDestroyedChartIsForgotten();
    void aZoomFromTheRenderThreadArrivesOnTheGuiThread();
    void theNodeMayDieWhileItsLevelMoves();
};

void tst_DecimatorU64::propertiesAndSignalsStandInOrder()
{
    const QMetaObject &meta = DecimatorU64::staticMetaObject;
    QCOMPARE(ownProperties(meta), QStringList{QStringLiteral("chartArea IChartArea* write chartAreaChanged")});
    QCOMPARE(ownSignals(meta), QStringList{QStringLiteral("chartAreaChanged()")});
    QVERIFY(meta.method(meta.methodOffset()).methodType() == QMetaMethod::Signal);
    QCOMPARE(meta.property(meta.propertyOffset()).notifySignalIndex(), meta.methodOffset()); // its own signal
    QVERIFY(ownMethods(meta).isEmpty());
}

void tst_DecimatorU64::bothBasesAreKnownByName()
{
    DecimatorU64 node;
    QCOMPARE(node.qt_metacast("DecimatorU64"), static_cast<void *>(&node));
    QCOMPARE(node.qt_metacast("DecimatorFilter<double>"),
             static_cast<void *>(static_cast<DecimatorFilter<double> *>(&node)));
    QCOMPARE(node.qt_metacast("Filter1D"), static_cast<void *>(static_cast<Filter1D *>(&node)));
}

// the series

void tst_DecimatorU64::withoutAChartTheInputIsPublished()
{
    SNode s;
    s.node.setData(s.series);
    COMPARE_BITS(s.node.data(), s.series);
    COMPARE_BITS(s.plotter.series.last(), s.series);
}

void tst_DecimatorU64::anEqualSeriesIsNotPublished()
{
    SNode s;
    QSignalSpy changes(&s.node, &Filter1D::dataChanged);
    s.node.setData(s.series);
    s.node.setData(s.series);
    s.node.setData(ramp(100000));
    QCOMPARE(changes.size(), 1);
}

void tst_DecimatorU64::aSeriesWithNaNIsPublishedEveryTime()
{
    DecimatorU64 node;
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData({1.0, notANumber});
    node.setData({1.0, notANumber});
    QCOMPARE(changes.size(), 2);
}

void tst_DecimatorU64::anEmptySeriesPublishesWhatIsThere()
{
    SNode s;
    s.node.setData(s.series);
    QSignalSpy changes(&s.node, &Filter1D::dataChanged);
    s.node.setData({});
    QCOMPARE(changes.size(), 1);
    COMPARE_BITS(s.node.data(), s.series);
    COMPARE_BITS(s.plotter.series.last(), s.series);
}

void tst_DecimatorU64::anEmptySeriesInFrontPublishesNothing()
{
    DecimatorU64 node;
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData({});
    QCOMPARE(changes.size(), 0);
    QVERIFY(node.data().isEmpty());
}

void tst_DecimatorU64::theSeriesIsNotCopied()
{
    SNode s;
    s.node.setData(s.series);
    QCOMPARE(s.plotter.series.last().constData(), s.series.constData());
}

// the level

void tst_DecimatorU64::aPixelOfTenBinsSelectsTheFourthLevel()
{
    SNode s;
    s.node.setData(s.series);
    Chart chart(1000.0);
    s.node.setChartArea(&chart);
    chart.show(10000.0);
    COMPARE_BITS(s.plotter.series.last(), plainPyramid(s.series).at(4));
    COMPARE_BITS(s.node.data(), plainPyramid(s.series).at(4));
}

void tst_DecimatorU64::levelsMatchTheFormula()
{
    RandomSeries random(1);
    Levels levels(1000);
    const double bin = 0.5;
    const QRectF area(-20.0, 0.0, 1000 * bin, 1.0);
    for (int round = 0; round < 20000; ++round) {
        const double unitsPerPixel =
            random.oneIn(3) ? std::ldexp(bin, random.whole(-3, 14)) : std::exp(random.real(-3.0, 10.0));
        int level = 0;
        if (!(bin > unitsPerPixel))
            level = std::min(int(std::ceil(std::log(unitsPerPixel / bin) / std::log(2.0))), levels.count() - 1);
        QCOMPARE(levels.levelFor(unitsPerPixel, area), level);
    }
}

void tst_DecimatorU64::levelsOfOddRectanglesAreWithinThePyramid()
{
    Levels levels(1000);
    const double odd[] = {0.0, -0.0, 1.0, -1.0, 1e-320, -1e300, 1e300, infinity, -infinity, notANumber};
    for (const double width : odd) {
        for (const double unitsPerPixel : odd) {
            const int level = levels.levelFor(unitsPerPixel, QRectF(0.0, 0.0, width, 1.0));
            QVERIFY(level >= 0 && level < levels.count());
        }
    }
    QCOMPARE(levels.levelFor(1e9, QRectF()), 0);
    Levels empty(0);
    QCOMPARE(empty.levelFor(1e9, QRectF(0.0, 0.0, 1.0, 1.0)), 0);
}

void tst_DecimatorU64::everyLevelIsReachedByZooming()
{
    SNode s;
    s.node.setData(s.series);
    const QVector<QVector<double>> levels = plainPyramid(s.series);
    Chart chart(1000.0);
    s.node.setChartArea(&chart);
    for (int level = levels.size() - 1; level >= 0; --level) {
        chart.show(1000.0 * std::pow(2.0, level) * 0.99);
        COMPARE_BITS(s.plotter.series.last(), levels.at(level));
    }
    chart.show(1e12);
    QCOMPARE(s.lastSize(), 1);
}

void tst_DecimatorU64::theHighestValueIsOnEveryLevel()
{
    RandomSeries random(2);
    for (int round = 0; round < 200; ++round) {
        QVector<double> series(random.whole(1, 3000), 0.0);
        series[random.whole(0, series.size() - 1)] = 5.0;
        Levels levels(0);
        levels.setInput(series);
        for (int level = 0; level < levels.count(); ++level)
            QVERIFY(levels.selected(level).contains(5.0));
    }
}

void tst_DecimatorU64::aZoomThatKeepsTheLevelPublishesNothing()
{
    SNode s;
    s.node.setData(s.series);
    Chart chart(1000.0);
    s.node.setChartArea(&chart);
    chart.show(10000.0);
    QSignalSpy changes(&s.node, &Filter1D::dataChanged);
    chart.show(9000.0);
    chart.show(15999.0);
    QCOMPARE(changes.size(), 0);
    chart.show(16001.0);
    QCOMPARE(changes.size(), 1);
}

void tst_DecimatorU64::aZoomThatChangesTheLevelPublishesASharedSeries()
{
    SNode s;
    s.node.setData(s.series);
    Chart chart(1000.0);
    s.node.setChartArea(&chart);
    chart.show(10000.0);
    QCOMPARE(s.plotter.series.last().constData(), s.node.data().constData());
    const double *storage = s.node.data().constData();
    chart.show(100.0);
    chart.show(10000.0);
    QCOMPARE(s.plotter.series.last().constData(), storage); // nothing is computed again
}

void tst_DecimatorU64::aChangeOfWidthMovesTheLevel()
{
    SNode s;
    s.node.setData(s.series);
    Chart chart(1000.0);
    chart.show(10000.0);
    s.node.setChartArea(&chart);
    chart.setWidth(500.0); // 20 units a pixel
    QCOMPARE(s.lastSize(), plainPyramid(s.series).at(5).size());
}

void tst_DecimatorU64::aSeriesThatMovesTheLevelIsPublishedTwice()
{
    SNode s;
    Chart chart(1000.0);
    chart.show(10000.0);
    s.node.setChartArea(&chart);
    QSignalSpy changes(&s.node, &Filter1D::dataChanged);
    s.node.setData(s.series);
    QCOMPARE(changes.size(), 2);
    const int fed = s.plotter.series.size();
    COMPARE_BITS(s.plotter.series.at(fed - 1), s.plotter.series.at(fed - 2));
    QVector<double> other = s.series;
    other[0] = 1.0;
    s.node.setData(other);
    QCOMPARE(changes.size(), 3); // the level stays
}

void tst_DecimatorU64::aChangeOfTheAreaMovesNothing()
{
    SNode s;
    Chart chart(1000.0);
    chart.show(10000.0);
    s.node.setChartArea(&chart);
    s.node.setData(s.series);
    QSignalSpy changes(&s.node, &Filter1D::dataChanged);
    s.node.setArea(QRectF(0.0, 0.0, 1e9, 1.0));
    QCOMPARE(changes.size(), 0);
    chart.show(10001.0);
    COMPARE_BITS(s.plotter.series.last(), s.series); // a bin is wider than a pixel now
}

void tst_DecimatorU64::theZoomIsWhatCountsNotTheChartRectangle()
{
    SNode s;
    s.node.setData(s.series);
    Chart chart(1000.0);
    chart.setChartRect(QRectF(0.0, 0.0, 100000.0, 1.0));
    s.node.setChartArea(&chart);
    chart.show(1000.0);
    chart.show(999.0);
    COMPARE_BITS(s.plotter.series.last(), s.series);
}

void tst_DecimatorU64::aPlainChartAreaMovesTheLevelByItsWidth()
{
    SNode s;
    s.node.setData(s.series);
    IChartArea chart;
    chart.setChartRect(QRectF(0.0, 0.0, 10000.0, 1.0));
    s.node.setChartArea(&chart);
    chart.setWidth(1000.0);
    QCOMPARE(s.lastSize(), plainPyramid(s.series).at(4).size());
    chart.setChartRect(QRectF(0.0, 0.0, 1000.0, 1.0)); // not listened to
    QCOMPARE(s.lastSize(), plainPyramid(s.series).at(4).size());
    chart.setWidth(1001.0);
    COMPARE_BITS(s.plotter.series.last(), s.series);
}

void tst_DecimatorU64::aChartNarrowerThanAPixelIsIgnored()
{
    SNode s;
    s.node.setData(s.series);
    Chart chart(0.5);
    s.node.setChartArea(&chart);
    chart.show(10000.0);
    COMPARE_BITS(s.plotter.series.last(), s.series);
    chart.setWidth(1.0);
    QVERIFY(s.lastSize() < s.series.size());
}

void tst_DecimatorU64::aShorterSeriesReadsTheLastLevel()
{
    SNode s;
    s.node.setData(s.series);
    {
        Chart chart(1000.0);
        s.node.setChartArea(&chart);
        chart.show(1e12);
    }
    QCOMPARE(s.lastSize(), 1);
    s.node.setData({1.0, 4.0, 2.0}); // three levels, the seventeenth is selected
    COMPARE_BITS(s.node.data(), QVector<double>{4.0});
    COMPARE_BITS(s.plotter.series.last(), QVector<double>{4.0});
    s.node.setData(s.series);
    QCOMPARE(s.lastSize(), 1);
}

// long series

void tst_DecimatorU64::aLongSeriesIsExactOnEveryLevel()
{
    RandomSeries random(5);
    LongNode node;
    for (int round = 0; round < 12; ++round) {
        const QVector<double> series = random.series(longSize);
        const QVector<QVector<double>> levels = plainPyramid(series);
        node.setData(series);
        QTest::qWait(round % 3 * 52); // with none of the other levels, some, or all
        for (int time = 0; time < 5; ++time) {
            const int level = random.whole(0, levels.size() - 1);
            node.chart().show(1000.0 * std::ldexp(0.9, level));
            COMPARE_BITS(node.data(), levels.at(level));
        }
    }
}

void tst_DecimatorU64::aStreamBuildsOnlyWhatIsShown()
{
    RandomSeries random(6);
    LongNode node;
    node.chart().show(longSize);
    for (int i = 0; i < 5; ++i) {
        const QVector<double> series = random.series(longSize);
        node.setData(series);
        COMPARE_BITS(node.data(), plainPyramid(series).at(11));
    }
    QVERIFY(!node.hasFineLevels());
}

void tst_DecimatorU64::atRestTheOtherLevelsAreBuilt()
{
    LongNode node;
    node.chart().show(longSize);
    bool built = false;
    for (const int rest : {100, 1000, 10000}) {
        node.setData(QVector<double>(longSize, rest));
        QTest::qWait(built ? 0 : rest);
        built = built || node.hasFineLevels();
    }
    QVERIFY(built);
}

void tst_DecimatorU64::aChartThatComesAfterTheSeriesHasTheOtherLevelsBuilt()
{
    bool built = false;
    for (const int rest : {100, 1000, 10000}) {
        LongNode node;
        node.setChartArea(nullptr);
        node.setData(QVector<double>(longSize, rest));
        QVERIFY(!node.hasFineLevels()); // without a chart nothing but the series is published
        node.setChartArea(&node.chart());
        QTest::qWait(built ? 0 : rest);
        built = built || node.hasFineLevels();
    }
    QVERIFY(built);
}

// the chart

void tst_DecimatorU64::aNewChartMovesTheLevelAtItsNextChange()
{
    SNode s;
    s.node.setData(s.series);
    Chart chart(1000.0);
    chart.show(10000.0);
    QSignalSpy changes(&s.node, &Filter1D::dataChanged);
    QSignalSpy chartChanges(&s.node, &DecimatorU64::chartAreaChanged);
    s.node.setChartArea(&chart);
    QCOMPARE(chartChanges.size(), 1);
    QCOMPARE(s.node.chartArea(), &chart);
    QCOMPARE(changes.size(), 0);
    chart.show(10001.0);
    QCOMPARE(changes.size(), 1);
}

void tst_DecimatorU64::aFormerChartStillUpdatesTheLevel()
{
    SNode s;
    s.node.setData(s.series);
    Chart former(1000.0);
    Chart present(1000.0);
    present.show(10000.0);
    s.node.setChartArea(&former);
    s.node.setChartArea(&present);
    COMPARE_BITS(s.plotter.series.last(), s.series);
    former.setWidth(700.0);
    QCOMPARE(s.lastSize(), plainPyramid(s.series).at(4).size()); // by the zoom of the present chart
}

void tst_DecimatorU64::theSameChartIsNoChange()
{
    DecimatorU64 node;
    Chart chart(1000.0);
    QSignalSpy changes(&node, &DecimatorU64::chartAreaChanged);
    node.setChartArea(nullptr);
    QCOMPARE(changes.size(), 0);
    node.setChartArea(&chart);
    node.setChartArea(&chart);
    QCOMPARE(changes.size(), 1);
}

void tst_DecimatorU64::noChartAgainKeepsTheLevel()
{
    SNode s;
    s.node.setData(s.series);
    Chart chart(1000.0);
    s.node.setChartArea(&chart);
    chart.show(10000.0);
    const int size = s.lastSize();
    s.node.setChartArea(nullptr);
    QCOMPARE(s.node.chartArea(), nullptr);
    chart.show(1.0); // still connected, and nothing to look at
    QCOMPARE(s.lastSize(), size);
    s.node.setData(ramp(99999));
    QVERIFY(s.lastSize() < 10000);
}

void tst_DecimatorU64::aDestroyedChartIsForgotten()
{
    SNode s;
    auto chart = std::make_unique<Chart>(1000.0);
    s.node.setChartArea(chart.get());
    QSignalSpy changes(&s.node, &DecimatorU64::chartAreaChanged);
    chart.reset();
    QCOMPARE(s.node.chartArea(), nullptr);
    QCOMPARE(changes.size(), 0);
    s.node.setData(s.series);
    COMPARE_BITS(s.plotter.series.last(), s.series);

    Chart other(1000.0);
    auto mortal = std::make_unique<DecimatorU64>();
    mortal->setChartArea(&other);
    mortal.reset();
    other.show(3.0);
}

void tst_DecimatorU64::aZoomFromTheRenderThreadArrivesOnTheGuiThread()
{
    SNode s;
    s.node.setData(s.series);
    Chart chart(1000.0);
    s.node.setChartArea(&chart);
    QVector<QThread *> threads;
    connect(&s.node, &Filter1D::dataChanged, &s.node, [&] { threads.append(QThread::currentThread()); });
    std::thread renderThread([&] { chart.show(10000.0); }); // as while the GUI thread waits for it
    renderThread.join();
    QVERIFY(threads.isEmpty());
    QTRY_COMPARE(threads, QVector<QThread *>{QThread::currentThread()});
    QCOMPARE(s.lastSize(), plainPyramid(s.series).at(4).size());
}

void tst_DecimatorU64::theNodeMayDieWhileItsLevelMoves()
{
    Chart chart(1000.0);
    chart.show(10000.0);
    auto node = std::make_unique<DecimatorU64>();
    node->setArea(QRectF(0.0, 0.0, 100000.0, 1.0));
    node->setChartArea(&chart);
    connect(node.get(), &Filter1D::dataChanged, this, [&] { node.reset(); });
    node->setData(ramp(100000)); // published twice, were it not for the end at the first
    QVERIFY(!node);
}

QTEST_GUILESS_MAIN(tst_DecimatorU64)
#include "tst_DecimatorU64.moc"
