// SPDX-License-Identifier: MIT
#include "tests/plugin/Library.h"

#include <QtTest>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExpression>

#include <memory>

namespace {

QStringList messages;

void collect(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtDebugMsg)
        messages.append(text);
}

const char scene[] = R"(
    import QtQml 2.15
    import QtQml.Models 2.15
    import VorlixPlugin 1.0
    ChartArea {
        id: chart
        property QtObject first: BarPlotter { id: first; objectName: "first" }
        property QtObject second: AreaPlotter { id: second; objectName: "second" }
        property QtObject node: Filter1D { id: node }
        property QtObject models: Instantiator {
            id: models
            model: chart.plotter
            delegate: QtObject { property var plotter: modelData }
        }
        property int changes: 0
        onPlotterChanged: ++changes
    })";

} // namespace

/// What QML sees of lists and pointers.
class tst_PluginLists : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void plottersAreReadAsAnArray();
    void plottersAreReadAsAModel();
    void theChartAreaIsReadable();
    void argumentsOfAWrongTypeAreIgnored();
    void seriesAreWrittenAndReadAsArrays();
    void rectanglesAndPointsAreValues();
    void aDestroyedPlotterIsGoneFromTheArray();

private:
    QVariant value(const char *expression)
    {
        QQmlExpression evaluated(qmlContext(m_scene.get()), m_scene.get(), expression);
        const QVariant result = evaluated.evaluate();
        if (evaluated.hasError())
            qWarning() << evaluated.error();
        return result;
    }

    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QObject> m_scene;
    QtMessageHandler m_previous = nullptr;
};

void tst_PluginLists::init()
{
    messages.clear();
    m_engine = std::make_unique<QQmlEngine>();
    m_engine->addImportPath(importPath());
    QQmlComponent component(m_engine.get());
    component.setData(scene, QUrl());
    m_scene.reset(component.create());
    QVERIFY2(m_scene, qPrintable(component.errorString()));
    m_previous = qInstallMessageHandler(collect);
}

void tst_PluginLists::cleanup()
{
    m_scene.reset();
    m_engine.reset();
    qInstallMessageHandler(m_previous);
    QCOMPARE(messages, QStringList());
}

void tst_PluginLists::plottersAreReadAsAnArray()
{
    QCOMPARE(value("plotter.length").toInt(), 0);
    value("addPlotter(first); addPlotter(second); addPlotter(first)");
    QCOMPARE(value("plotter.length").toInt(), 2);
    QCOMPARE(value("plotter[0] === first && plotter[1] === second").toBool(), true);
    QCOMPARE(value("plotter[1].objectName").toString(), "second");
    QCOMPARE(value("var names = ''; for (var i = 0; i < plotter.length; ++i) names += plotter[i].objectName; names")
                 .toString(),
             "firstsecond");
    QCOMPARE(value("changes").toInt(), 2);
}

void tst_PluginLists::plottersAreReadAsAModel()
{
    value("addPlotter(first); addPlotter(second)");
    QCOMPARE(value("models.count").toInt(), 2);
    QCOMPARE(value("models.objectAt(0).plotter === first").toBool(), true);
    QCOMPARE(value("models.objectAt(1).plotter.objectName").toString(), "second");
    value("removePlotter(first)");
    QCOMPARE(value("models.count").toInt(), 1);
    QCOMPARE(value("models.objectAt(0).plotter === second").toBool(), true);
}

void tst_PluginLists::theChartAreaIsReadable()
{
    QCOMPARE(value("first.chartArea === null").toBool(), true);
    value("first.chartArea = chart");
    QCOMPARE(value("first.chartArea === chart").toBool(), true);
    QCOMPARE(value("plotter.length").toInt(), 1);
    value("first.chartArea = null");
    QCOMPARE(value("first.chartArea === null").toBool(), true);
    QCOMPARE(value("plotter.length").toInt(), 0);
}

void tst_PluginLists::argumentsOfAWrongTypeAreIgnored()
{
    value("addPlotter(first)");
    for (const char *call :
         {"addPlotter(null)", "addPlotter(undefined)", "addPlotter(node)", "addPlotter(chart)", "removePlotter(null)",
          "removePlotter(node)", "node.addFilter(null)", "node.addFilter(first)", "node.removeFilter(null)",
          "node.addPlotter(null)", "node.addPlotter(node)", "node.removePlotter(undefined)", "first.chartArea = null"})
        value(call);
    QCOMPARE(value("plotter.length").toInt(), 0);
    QCOMPARE(value("changes").toInt(), 2); // the first plotter came and went
    messages.clear();                      // what the engine thinks of it
}

void tst_PluginLists::seriesAreWrittenAndReadAsArrays()
{
    value("first.data = [1, 2.5, -3]");
    QCOMPARE(value("first.data.length").toInt(), 3);
    QCOMPARE(value("first.data[1]").toDouble(), 2.5);
    value("node.data = [4, NaN, Infinity]; node.addPlotter(first)");
    QCOMPARE(value("first.data[0] === 4 && isNaN(first.data[1]) && first.data[2] === Infinity").toBool(), true);
}

void tst_PluginLists::rectanglesAndPointsAreValues()
{
    value("width = 100; height = 50; shouldUpdate = false; zoomRect = Qt.rect(0, 0, 10, 5)");
    QCOMPARE(value("mapPointToChart(Qt.point(5, 1))").toPointF(), QPointF(50.0, 40.0));
    QCOMPARE(value("zoomRect.width").toDouble(), 10.0);
}

void tst_PluginLists::aDestroyedPlotterIsGoneFromTheArray()
{
    value("addPlotter(first); addPlotter(second)");
    delete value("first").value<QObject *>();
    QCOMPARE(value("plotter.length").toInt(), 1);
    QCOMPARE(value("plotter[0] === second").toBool(), true);
}

QTEST_MAIN(tst_PluginLists)
#include "tst_PluginLists.moc"
