// SPDX-License-Identifier: MIT
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlListReference>
#include <QTemporaryFile>
#include <QtTest>

#include <memory>

class tst_ViewsModule : public QObject
{
    Q_OBJECT

private slots:
    void makesItsTypes_data();
    void makesItsTypes();
    void takesSeriesAsTheyAreDeclared();
    void readsAFile();
    void drawsAFile();
    void takesAFontInPixels();
    void throwsWhatAStoreDoesntTake();
    void standsBesideTheFirstModule();

private:
    static std::unique_ptr<QObject> make(QQmlEngine &engine, const QByteArray &text, QString *error);
};

std::unique_ptr<QObject> tst_ViewsModule::make(QQmlEngine &engine, const QByteArray &text, QString *error)
{
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.14\nimport VorlixPlugin.Views 1.0\n" + text, QUrl());
    std::unique_ptr<QObject> object(component.create());
    *error = component.errorString();
    return object;
}

void tst_ViewsModule::makesItsTypes_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name :
         {"PlotView", "BarSeries", "LineSeries", "AreaSeries", "ValueAxis", "LogValueAxis", "PlotTheme", "SeriesStore",
          "SeriesReader", "MovingAverage", "SeriesDifference", "FileSeries", "ReaderPanel"})
        QTest::newRow(name) << QByteArray(name);
}

void tst_ViewsModule::makesItsTypes()
{
    QFETCH(QByteArray, name);
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> object = make(engine, name + " {}", &error);
    QVERIFY2(object, qPrintable(error));
}

void tst_ViewsModule::takesSeriesAsTheyAreDeclared()
{
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> view = make(engine,
                                               "PlotView { axisX { min: 3; max: 5 } axisY: LogValueAxis {}\n"
                                               "BarSeries { name: 'a' } Item {} LineSeries { name: 'b' } }",
                                               &error);
    QVERIFY2(view, qPrintable(error));
    QQmlListReference list(view.get(), "seriesList", &engine);
    QCOMPARE(list.count(), 2);
    QCOMPARE(list.at(0)->property("name").toString(), QStringLiteral("a"));
    QCOMPARE(list.at(1)->property("name").toString(), QStringLiteral("b"));
    QCOMPARE(view->property("axisX").value<QObject *>()->property("max").toDouble(), 5.0);
    QCOMPARE(view->property("axisY").value<QObject *>()->metaObject()->className(), "LogValueAxis");
}

void tst_ViewsModule::readsAFile()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("a;b\n1;2,5\n3;4,5\n");
    file.close();
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> reader =
        make(engine,
             "SeriesReader { source: '" + file.fileName().toUtf8()
                 + "'; column: 'b'; readonly property bool isReady: status === SeriesReader.Ready\n"
                   "readonly property real highest: isReady && store.complete ? store.maximum : 0 }",
             &error);
    QVERIFY2(reader, qPrintable(error));
    QTRY_COMPARE(reader->property("highest").toDouble(), 4.5);
    QVERIFY(reader->property("isReady").toBool());
}

/// The series changes with the look, and keeps its place among the others.
void tst_ViewsModule::drawsAFile()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("t [s];U [V]\n1;2,5\n2;-4,5\n");
    file.close();
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> view =
        make(engine,
             "PlotView { property alias file: shown\n FileSeries { id: shown; source: '" + file.fileName().toUtf8()
                 + "'; look: 'area'; step: 0.5 } LineSeries { name: 'b' } }",
             &error);
    QVERIFY2(view, qPrintable(error));
    auto *shown = view->property("file").value<QObject *>();
    QTRY_VERIFY(!shown->property("busy").toBool());
    QVERIFY(shown->property("hasNumbers").toBool());
    QCOMPARE(shown->property("problem").toString(), QString());
    shown->property("reader").value<QObject *>()->setProperty("column", QStringLiteral("U"));
    QTRY_COMPARE(shown->property("column").toString(), QStringLiteral("U"));
    QCOMPARE(shown->property("unit").toString(), QStringLiteral("V"));
    QQmlListReference list(view.get(), "seriesList", &engine);
    const auto classNames = [&list] {
        QStringList names;
        for (int i = 0; i < list.count(); ++i)
            names.append(list.at(i)->metaObject()->className());
        names.sort();
        return names;
    };
    QCOMPARE(classNames(), (QStringList{"AreaSeries", "LineSeries"}));
    const int place = list.at(0)->property("name") == QLatin1String("b") ? 1 : 0;
    QCOMPARE(list.at(place)->property("step").toDouble(), 0.5);
    QTRY_COMPARE(list.at(place)->property("minimum").toDouble(), -4.5);
    shown->setProperty("look", QStringLiteral("bars"));
    QCOMPARE(list.count(), 2);
    QCOMPARE(list.at(place)->metaObject()->className(), "BarSeries");
    shown->setProperty("look", QString());
    QCOMPARE(list.at(place)->metaObject()->className(), "LineSeries"); // as a value is negative
    shown->setProperty("look", QStringLiteral("pie"));
    QCOMPARE(list.at(place)->metaObject()->className(), "BarSeries");
}

void tst_ViewsModule::takesAFontInPixels()
{
    QFont font = QGuiApplication::font();
    font.setPointSize(9); // as platforms do
    QGuiApplication::setFont(font);
    static int warnings = 0;
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++warnings; });
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> theme = make(engine, "PlotTheme { font.pixelSize: 17 }", &error);
    qInstallMessageHandler(before);
    QVERIFY2(theme, qPrintable(error));
    QCOMPARE(theme->property("font").value<QFont>().pixelSize(), 17);
    QCOMPARE(warnings, 0);
}

void tst_ViewsModule::throwsWhatAStoreDoesntTake()
{
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> store =
        make(engine,
             "SeriesStore { property string words\n"
             "Component.onCompleted: { try { append(new Float64Array(3)) } catch (error) { words = String(error) } } }",
             &error);
    QVERIFY2(store, qPrintable(error));
    const QString words = store->property("words").toString();
    QVERIFY2(words.contains(QStringLiteral("buffer")), qPrintable(words));
    QCOMPARE(store->property("count").toDouble(), 0.0);
}

void tst_ViewsModule::standsBesideTheFirstModule()
{
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> both =
        make(engine, "import VorlixPlugin 1.0\nItem { ChartArea {} PlotView {} }", &error);
    QVERIFY2(both, qPrintable(error));
}

QTEST_MAIN(tst_ViewsModule)
#include "tst_ViewsModule.moc"
