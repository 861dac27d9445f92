// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/IPlotter.h"
#include "tests/support/CountingArea.h"
#include "tests/support/MetaTable.h"
#include "tests/support/QuietTest.h"
#include "tests/support/Scene.h"
#include "tests/support/VirtualSlot.h"

#include <QtTest>

#include <atomic>
#include <limits>
#include <memory>
#include <thread>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Takes every request.
class EagerArea : public CountingArea
{
public:
    EagerArea() { setUpdateIntervalMs(0); }
    ~EagerArea() override { withdraw(); }
};

/// Opens what the base keeps to its subclasses.
class OpenPlotter : public IPlotter
{
public:
    ~OpenPlotter() override { withdraw(); }
    using IPlotter::initialize;
    using IPlotter::m_dirtyFlags;
    using IPlotter::m_offsetSubtracts;
    using IPlotter::m_programName;

    bool __update_vertex() override
    {
        calls << "vertex";
        return vertexChanges;
    }
    bool __update_index() override
    {
        calls << "index";
        return indexChanges;
    }

    QStringList calls;
    bool vertexChanges = false;
    bool indexChanges = false;
};

using Plotters = QList<IPlotter *>;
using Signal = void (IPlotter::*)();

} // namespace

Q_DECLARE_METATYPE(Signal)

class tst_IPlotter : public QuietTest
{
    Q_OBJECT

private slots:
    void initTestCase() { registerModule(); } // makes IChartArea* a value that the property can hand over

    void itsMetaObjectIsExactlyAsDescribed();
    void itsVirtualOperationsStandInTheirOrder();
    void aFreshPlotterHasTheDefaults();
    void everyPropertyCanBeReadByItsName();

    void settersEmitOnceAndRequestWhereThePictureChanges_data();
    void settersEmitOnceAndRequestWhereThePictureChanges();
    void showLegendEmitsTheDrawLayersSignal();
    void xOffsetMovesModAreaWithoutItsSignal();
    void fuzzilyEqualNumbersAreNoChange();
    void settersWorkWithoutAChartArea();
    void aHandlerMayDestroyThePlotter_data();
    void aHandlerMayDestroyThePlotter();

    void anEqualSeriesIsNoChange();
    void aSeriesWithANaNAlwaysChanges();
    void aSeriesSharingItsStorageIsNoChangeEvenWithANaN();
    void withoutAChartAreaDataIsDropped();
    void beforeTheFirstSynchronisationTheHooksRest();
    void afterInitialisationDataRebuildsAndMarksWhatChanged();
    void dataIsReplacedUnderTheRenderLockAndAnnouncedOutsideIt();
    void settingThePlottersOwnDataThroughAReferenceIsHarmless();

    void settingTheSameAreaDoesNothing();
    void movingLeavesTheFirstAreaAndJoinsTheSecond();
    void nullLeavesTheAreaAndIsAChange();
    void aHandlerThatMovesThePlotterElsewhereWins();
    void aHandlerMayDestroyTheTargetArea();

    void theBaseAnswersQueriesWithNothing();
    void theBaseSaysThatNothingIsDeclared();
};

void tst_IPlotter::itsMetaObjectIsExactlyAsDescribed()
{
    const QMetaObject &meta = IPlotter::staticMetaObject;
    QCOMPARE(ownProperties(meta),
             (QStringList{
                 "name QString write nameChanged",
                 "color QColor write colorChanged",
                 "visible bool write visibleChanged",
                 "zOrder double write zOrderChanged",
                 "data QVector<double> write dataChanged",
                 "vectorDim uchar write vectorDimChanged",
                 "plotterArea QRectF write plotterAreaChanged",
                 "modArea QRectF - modAreaChanged",
                 "drawLayer uint write drawLayerChanged",
                 "showLegend bool write showLegendChanged",
                 "chartArea IChartArea* write chartAreaChanged",
                 "xOffset double write xOffsetChanged",
             }));
    QCOMPARE(ownSignals(meta),
             (QStringList{
                 "colorChanged()",
                 "visibleChanged()",
                 "zOrderChanged()",
                 "plotterAreaChanged()",
                 "initChanged()",
                 "chartAreaChanged()",
                 "drawLayerChanged()",
                 "showLegendChanged()",
                 "nameChanged()",
                 "dataChanged()",
                 "vectorDimChanged()",
                 "xOffsetChanged()",
                 "modAreaChanged()",
             }));
    QCOMPARE(ownMethods(meta), QStringList());
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
}

void tst_IPlotter::itsVirtualOperationsStandInTheirOrder()
{
    std::ptrdiff_t slot = virtualSlot(&IPlotter::sync_buffers);
    QVERIFY(slot > 0);
    QCOMPARE(virtualSlot(&IPlotter::draw), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::max_in), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::query_in), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::area_at), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::setPlotterArea), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::mouse_hovering), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::data), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::setData), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::declareArributeArray), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::report_no_attributes), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::__update_vertex), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::__update_index), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::render_hook), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::_update_uniforms), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::_fetch_attribute_data), ++slot);
    QCOMPARE(virtualSlot(&IPlotter::_fetch_render_layers), ++slot);

    // QObject's table comes first: twelve entries, two of them the destructor's.
    QCOMPARE(virtualSlot(&IPlotter::sync_buffers), std::ptrdiff_t(12));

    slot = virtualSlot(&IChartArea::requestUpdate);
    QCOMPARE(virtualSlot(&IChartArea::viewRect), ++slot);
    QCOMPARE(virtualSlot(&IChartArea::mapPointToChart), ++slot);
    QCOMPARE(virtualSlot(&IChartArea::syncPlotters), ++slot);
    QCOMPARE(virtualSlot(&IChartArea::renderPlotters), ++slot);
    QCOMPARE(virtualSlot(&IChartArea::updateChartRect), ++slot);
    QCOMPARE(virtualSlot(&IChartArea::updateRenderLayers), ++slot);
    QVERIFY(virtualSlot(&IChartArea::createRenderer) < virtualSlot(&IChartArea::requestUpdate));
}

void tst_IPlotter::aFreshPlotterHasTheDefaults()
{
    const IPlotter plotter;
    QCOMPARE(plotter.color(), QColor("#07CBF2"));
    QCOMPARE(plotter.color().alpha(), 255);
    QVERIFY(plotter.name().isEmpty());
    QVERIFY(plotter.visible());
    QVERIFY(plotter.showLegend());
    QCOMPARE(plotter.drawLayer(), 1u);
    QCOMPARE(plotter.vectorDim(), uchar(1));
    QCOMPARE(plotter.zOrder(), 0.0);
    QCOMPARE(plotter.xOffset(), 0.0);
    QVERIFY(plotter.plotterArea().isNull());
    QVERIFY(plotter.modArea().isNull());
    QVERIFY(plotter.data().isEmpty());
    QCOMPARE(plotter.chartArea(), nullptr);
}

void tst_IPlotter::everyPropertyCanBeReadByItsName()
{
    IPlotter plotter;
    EagerArea area;
    plotter.setChartArea(&area);
    for (int i = IPlotter::staticMetaObject.propertyOffset(); i < IPlotter::staticMetaObject.propertyCount(); ++i)
        QVERIFY2(IPlotter::staticMetaObject.property(i).read(&plotter).isValid(),
                 IPlotter::staticMetaObject.property(i).name());
    QCOMPARE(plotter.property("chartArea").value<IChartArea *>(), &area);
}

// setters

void tst_IPlotter::settersEmitOnceAndRequestWhereThePictureChanges_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<int>("requests");
    const auto row = [](const char *property, const QVariant &value, const char *signal, int requests) {
        QTest::newRow(property) << QByteArray(property) << value << QByteArray(signal) << requests;
    };
    row("name", QStringLiteral("counts"), "nameChanged()", 0);
    row("color", QVariant::fromValue(QColor(1, 2, 3, 4)), "colorChanged()", 1);
    row("visible", false, "visibleChanged()", 1);
    row("zOrder", -2.5, "zOrderChanged()", 1);
    row("data", QVariant::fromValue(QVector<double>{1.0, 2.0}), "dataChanged()", 1);
    row("vectorDim", QVariant::fromValue(uchar(2)), "vectorDimChanged()", 0);
    row("plotterArea", QRectF(1.0, 2.0, 3.0, 4.0), "plotterAreaChanged()", 1);
    row("drawLayer", 5u, "drawLayerChanged()", 1);
    row("showLegend", false, "drawLayerChanged()", 0);
    row("xOffset", 2.0, "xOffsetChanged()", 1);
}

void tst_IPlotter::settersEmitOnceAndRequestWhereThePictureChanges()
{
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    QFETCH(QByteArray, signal);
    QFETCH(int, requests);
    EagerArea area;
    IPlotter plotter;
    plotter.setChartArea(&area);
    area.requests = 0;
    QStringList emitted;
    for (int i = 0; i < IPlotter::staticMetaObject.methodCount(); ++i) {
        const QMetaMethod method = IPlotter::staticMetaObject.method(i);
        if (method.methodType() != QMetaMethod::Signal || method.parameterCount() != 0)
            continue;
        auto *spy = new QSignalSpy(&plotter, ("2" + method.methodSignature()).constData());
        spy->setParent(this);
        spy->setObjectName(QString::fromLatin1(method.methodSignature()));
    }
    for (int time = 0; time < 2; ++time)
        QVERIFY(plotter.setProperty(property, value));
    for (QObject *child : children()) {
        const auto *spy = static_cast<QSignalSpy *>(child);
        for (int i = 0; i < spy->count(); ++i)
            emitted << spy->objectName();
    }
    qDeleteAll(children());
    QCOMPARE(emitted, QStringList{QString::fromLatin1(signal)});
    QCOMPARE(area.requests, requests);
    QCOMPARE(plotter.property(property), value);
}

void tst_IPlotter::showLegendEmitsTheDrawLayersSignal()
{
    IPlotter plotter;
    QSignalSpy legend(&plotter, &IPlotter::showLegendChanged);
    QSignalSpy layer(&plotter, &IPlotter::drawLayerChanged);
    plotter.setShowLegend(false);
    QCOMPARE(layer.count(), 1);
    QCOMPARE(legend.count(), 0);
}

void tst_IPlotter::xOffsetMovesModAreaWithoutItsSignal()
{
    OpenPlotter plotter;
    plotter.setPlotterArea({10.0, 1.0, 5.0, 7.0});
    QSignalSpy offset(&plotter, &IPlotter::xOffsetChanged);
    QSignalSpy mod(&plotter, &IPlotter::modAreaChanged);
    QSignalSpy area(&plotter, &IPlotter::plotterAreaChanged);
    plotter.setXOffset(3.0);
    QCOMPARE(offset.count(), 1);
    QCOMPARE(mod.count() + area.count(), 0);
    QCOMPARE(plotter.modArea(), QRectF(7.0, 1.0, 5.0, 7.0));
    QCOMPARE(plotter.plotterArea(), QRectF(10.0, 1.0, 5.0, 7.0));
    plotter.m_offsetSubtracts = false;
    QCOMPARE(plotter.modArea(), QRectF(13.0, 1.0, 5.0, 7.0));
}

void tst_IPlotter::fuzzilyEqualNumbersAreNoChange()
{
    IPlotter plotter;
    plotter.setZOrder(1.0);
    plotter.setXOffset(1.0);
    plotter.setPlotterArea({1.0, 1.0, 1.0, 1.0});
    QSignalSpy zOrder(&plotter, &IPlotter::zOrderChanged);
    QSignalSpy xOffset(&plotter, &IPlotter::xOffsetChanged);
    QSignalSpy area(&plotter, &IPlotter::plotterAreaChanged);
    plotter.setZOrder(1.0 + 1e-13);
    plotter.setXOffset(1.0 - 1e-13);
    plotter.setPlotterArea({1.0 + 1e-13, 1.0, 1.0, 1.0 - 1e-13});
    QCOMPARE(zOrder.count() + xOffset.count() + area.count(), 0);
    QVERIFY(plotter.zOrder() == 1.0);
    plotter.setZOrder(1.0 + 1e-11);
    QCOMPARE(zOrder.count(), 1);
    plotter.setZOrder(0.0);
    plotter.setZOrder(1e-300);
    QCOMPARE(zOrder.count(), 3);
}

void tst_IPlotter::settersWorkWithoutAChartArea()
{
    IPlotter plotter;
    QSignalSpy color(&plotter, &IPlotter::colorChanged);
    plotter.setColor(Qt::red);
    plotter.setVisible(false);
    plotter.setPlotterArea({0.0, 0.0, 1.0, 1.0});
    plotter.setChartArea(nullptr);
    QCOMPARE(color.count(), 1);
}

void tst_IPlotter::aHandlerMayDestroyThePlotter_data()
{
    QTest::addColumn<Signal>("signal");
    QTest::newRow("color") << Signal(&IPlotter::colorChanged);
    QTest::newRow("visible") << Signal(&IPlotter::visibleChanged);
    QTest::newRow("zOrder") << Signal(&IPlotter::zOrderChanged);
    QTest::newRow("data") << Signal(&IPlotter::dataChanged);
    QTest::newRow("plotterArea") << Signal(&IPlotter::plotterAreaChanged);
    QTest::newRow("drawLayer") << Signal(&IPlotter::drawLayerChanged);
    QTest::newRow("xOffset") << Signal(&IPlotter::xOffsetChanged);
    QTest::newRow("chartArea") << Signal(&IPlotter::chartAreaChanged);
    QTest::newRow("name") << Signal(&IPlotter::nameChanged);
    QTest::newRow("vectorDim") << Signal(&IPlotter::vectorDimChanged);
}

void tst_IPlotter::aHandlerMayDestroyThePlotter()
{
    QFETCH(Signal, signal);
    EagerArea area, other;
    auto *plotter = new OpenPlotter;
    const QPointer<IPlotter> alive(plotter);
    plotter->setChartArea(&area);
    connect(plotter, signal, [plotter] { delete plotter; });
    const auto still = [&](auto set) {
        if (alive)
            set();
    };
    still([&] { plotter->setColor(Qt::red); });
    still([&] { plotter->setVisible(false); });
    still([&] { plotter->setZOrder(4.0); });
    still([&] { plotter->setData({4.0}); });
    still([&] { plotter->setPlotterArea({0.0, 0.0, 4.0, 4.0}); });
    still([&] { plotter->setDrawLayer(4); });
    still([&] { plotter->setXOffset(4.0); });
    still([&] { plotter->setName("4"); });
    still([&] { plotter->setVectorDim(4); });
    still([&] { plotter->setChartArea(&other); });
    QVERIFY(!alive);
    QVERIFY(area.plotter().isEmpty());
    QVERIFY(other.plotter().isEmpty());
}

// the series

void tst_IPlotter::anEqualSeriesIsNoChange()
{
    EagerArea area;
    IPlotter plotter;
    plotter.setChartArea(&area);
    plotter.setData({1.0, -0.0, infinity});
    area.requests = 0;
    QSignalSpy changed(&plotter, &IPlotter::dataChanged);
    plotter.setData({1.0, 0.0, infinity}); // zeros of both signs are equal
    QCOMPARE(changed.count(), 0);
    QCOMPARE(area.requests, 0);
    plotter.setData({1.0, 0.0});
    QCOMPARE(changed.count(), 1);
    plotter.setData({1.0, 5e-324});
    QCOMPARE(changed.count(), 2);
    plotter.setData({});
    plotter.setData(QVector<double>());
    QCOMPARE(changed.count(), 3);
}

void tst_IPlotter::aSeriesWithANaNAlwaysChanges()
{
    EagerArea area;
    IPlotter plotter;
    plotter.setChartArea(&area);
    QSignalSpy changed(&plotter, &IPlotter::dataChanged);
    plotter.setData({1.0, notANumber});
    plotter.setData({1.0, notANumber});
    QCOMPARE(changed.count(), 2);
}

void tst_IPlotter::aSeriesSharingItsStorageIsNoChangeEvenWithANaN()
{
    EagerArea area;
    IPlotter plotter;
    plotter.setChartArea(&area);
    const QVector<double> series{1.0, notANumber};
    plotter.setData(series);
    QSignalSpy changed(&plotter, &IPlotter::dataChanged);
    plotter.setData(series);
    QCOMPARE(changed.count(), 0);
    QVERIFY(plotter.data().isSharedWith(series)); // nothing was copied
}

void tst_IPlotter::withoutAChartAreaDataIsDropped()
{
    IPlotter plotter;
    QSignalSpy changed(&plotter, &IPlotter::dataChanged);
    plotter.setData({1.0});
    QVERIFY(plotter.data().isEmpty());
    QCOMPARE(changed.count(), 0);
}

void tst_IPlotter::beforeTheFirstSynchronisationTheHooksRest()
{
    EagerArea area;
    OpenPlotter plotter;
    plotter.setChartArea(&area);
    plotter.setData({1.0});
    QCOMPARE(plotter.calls, QStringList());
    QCOMPARE(plotter.m_dirtyFlags, 0u);
}

void tst_IPlotter::afterInitialisationDataRebuildsAndMarksWhatChanged()
{
    EagerArea area;
    OpenPlotter plotter;
    plotter.setChartArea(&area);
    plotter.initialize();
    QCOMPARE(m_log->ofType(QtWarningMsg), QStringList{R"(None Attribute define for  ""  shader program)"});
    m_log->clear();
    QCOMPARE(plotter.calls, (QStringList{"vertex", "index"}));
    QCOMPARE(plotter.m_dirtyFlags, 0u);
    plotter.setData({1.0});
    QCOMPARE(plotter.m_dirtyFlags, 0u);
    plotter.vertexChanges = true;
    plotter.setData({2.0});
    QCOMPARE(plotter.m_dirtyFlags, 0x1000u);
    plotter.m_dirtyFlags = 0;
    plotter.vertexChanges = false;
    plotter.indexChanges = true;
    plotter.setData({3.0});
    QCOMPARE(plotter.m_dirtyFlags, 0x4000u);
    QCOMPARE(plotter.calls.size(), 8);
    plotter.setData({3.0});
    QCOMPARE(plotter.calls.size(), 8);
}

void tst_IPlotter::dataIsReplacedUnderTheRenderLockAndAnnouncedOutsideIt()
{
    EagerArea area;
    OpenPlotter plotter;
    plotter.setChartArea(&area);
    bool announced = false;
    connect(&plotter, &IPlotter::dataChanged, [&] {
        area.lockRender(); // would never return inside
        area.unlockRender();
        announced = true;
    });
    plotter.setData({1.0});
    QVERIFY(announced);

    area.lockRender();
    QElapsedTimer waited;
    waited.start();
    std::thread holder([&] {
        QTest::qSleep(40);
        area.unlockRender();
    });
    plotter.setData({2.0});
    const qint64 elapsed = waited.elapsed();
    holder.join();
    QVERIFY(elapsed >= 30);
}

void tst_IPlotter::settingThePlottersOwnDataThroughAReferenceIsHarmless()
{
    EagerArea area;
    auto source = std::make_unique<OpenPlotter>();
    OpenPlotter plotter;
    source->setChartArea(&area);
    plotter.setChartArea(&area);
    source->setData({1.0, 2.0});
    connect(&plotter, &IPlotter::dataChanged, [&] { source.reset(); });
    plotter.setData(source->data());
    QCOMPARE(plotter.data(), (QVector<double>{1.0, 2.0}));
    plotter.setData(plotter.data());
}

// the chart area

void tst_IPlotter::settingTheSameAreaDoesNothing()
{
    EagerArea area;
    IPlotter plotter;
    plotter.setChartArea(&area);
    area.requests = 0;
    QSignalSpy changed(&plotter, &IPlotter::chartAreaChanged);
    QSignalSpy list(&area, &IChartArea::plotterChanged);
    plotter.setChartArea(&area);
    QCOMPARE(changed.count() + list.count() + area.requests, 0);
}

void tst_IPlotter::movingLeavesTheFirstAreaAndJoinsTheSecond()
{
    EagerArea first, second;
    IPlotter plotter;
    plotter.setChartArea(&first);
    QSignalSpy changed(&plotter, &IPlotter::chartAreaChanged);
    QSignalSpy left(&first, &IChartArea::plotterChanged);
    QSignalSpy joined(&second, &IChartArea::plotterChanged);
    plotter.setChartArea(&second);
    QVERIFY(first.plotter().isEmpty());
    QCOMPARE(second.plotter(), Plotters{&plotter});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(left.count(), 1);
    QCOMPARE(joined.count(), 1);
    QCOMPARE(second.requests, 1);
}

void tst_IPlotter::nullLeavesTheAreaAndIsAChange()
{
    EagerArea area;
    IPlotter plotter;
    plotter.setChartArea(&area);
    QSignalSpy changed(&plotter, &IPlotter::chartAreaChanged);
    plotter.setChartArea(nullptr);
    QVERIFY(area.plotter().isEmpty());
    QCOMPARE(plotter.chartArea(), nullptr);
    QCOMPARE(changed.count(), 1);
}

void tst_IPlotter::aHandlerThatMovesThePlotterElsewhereWins()
{
    EagerArea first, second, third;
    IPlotter plotter;
    plotter.setChartArea(&first);
    bool moved = false;
    connect(&first, &IChartArea::plotterChanged, [&] {
        if (!moved) {
            moved = true;
            plotter.setChartArea(&third);
        }
    });
    plotter.setChartArea(&second);
    QCOMPARE(plotter.chartArea(), &third);
    QCOMPARE(third.plotter(), Plotters{&plotter});
    QVERIFY(second.plotter().isEmpty());
    QVERIFY(first.plotter().isEmpty());
}

void tst_IPlotter::aHandlerMayDestroyTheTargetArea()
{
    EagerArea first;
    auto *second = new CountingArea;
    IPlotter plotter;
    plotter.setChartArea(&first);
    connect(&first, &IChartArea::plotterChanged, [&] {
        delete second;
        second = nullptr;
    });
    plotter.setChartArea(second);
    QVERIFY(!second);
    QCOMPARE(plotter.chartArea(), nullptr);
    QVERIFY(first.plotter().isEmpty());
}

// the base

void tst_IPlotter::theBaseAnswersQueriesWithNothing()
{
    EagerArea area;
    IPlotter plotter;
    plotter.setChartArea(&area);
    plotter.setPlotterArea({0.0, 0.0, 2.0, 2.0});
    plotter.setData({5.0, 5.0});
    QCOMPARE(plotter.max_in({0.0, 0.0, 2.0, 2.0}), 0.0);
    QCOMPARE(plotter.query_in({0.0, 0.0, 2.0, 2.0}), 0.0);
    QVERIFY(plotter.area_at({1.0, 1.0}).isNull());
    const SInfoPoint info = plotter.mouse_hovering({1.0, 1.0});
    QVERIFY(!info.valid);
    QCOMPARE(info.index, -1);
    QCOMPARE(info.plotter, nullptr);
    QCOMPARE(info.xValue, 0.0);
    QCOMPARE(info.yValue, 0.0);
    QVERIFY(info.area.isNull());
    QVERIFY(info.label.isEmpty() && info.text.isEmpty());
}

void tst_IPlotter::theBaseSaysThatNothingIsDeclared()
{
    OpenPlotter plotter;
    plotter.m_programName = "area";
    QVERIFY(plotter.declareArributeArray().isEmpty());
    QCOMPARE(m_log->ofType(QtWarningMsg), QStringList{R"(None Attribute define for  "area"  shader program)"});
    m_log->clear();
    plotter.report_no_attributes();
    QCOMPARE(m_log->ofType(QtInfoMsg), QStringList{R"(None Attribute define for  "area"  shader program)"});
    m_log->clear();
    const SAttributePointer bytes = plotter._fetch_attribute_data(3);
    QCOMPARE(bytes.data, nullptr);
    QCOMPARE(bytes.size, 0);
    QCOMPARE(m_log->ofType(QtCriticalMsg), QStringList{"Fetch attribute data for  3  not implemented!"});
    m_log->clear();
}

QTEST_MAIN(tst_IPlotter)
#include "tst_IPlotter.moc"
