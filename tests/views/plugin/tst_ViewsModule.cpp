// SPDX-License-Identifier: MIT
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlListReference>
#include <QQuickItem>
#include <QTemporaryDir>
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
    void movesAFileToItsParent();
    void subtractsFiles();
    void fieldsSetProperties();
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
    for (const char *name : {"PlotView", "BarSeries", "LineSeries", "AreaSeries", "ValueAxis", "LogValueAxis",
                             "PlotTheme", "SeriesStore", "SeriesReader", "MovingAverage", "SeriesDifference",
                             "FileSeries", "ReaderPanel", "FieldPanel", "FileDifference", "PlotStack"})
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

void tst_ViewsModule::movesAFileToItsParent()
{
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> both = make(engine,
                                               "PlotStack { property alias upper: above\nproperty alias lower: below\n"
                                               "property alias file: shown\n"
                                               "PlotView { id: above; FileSeries { id: shown } }\n"
                                               "PlotView { id: below; LineSeries {} } }",
                                               &error);
    QVERIFY2(both, qPrintable(error));
    const QQmlListReference upper(both->property("upper").value<QObject *>(), "seriesList", &engine);
    const QQmlListReference lower(both->property("lower").value<QObject *>(), "seriesList", &engine);
    auto *const file = both->property("file").value<QQuickItem *>();
    QCOMPARE(upper.count(), 1);
    file->setParentItem(both->property("lower").value<QQuickItem *>());
    QCOMPARE(upper.count(), 0);
    QCOMPARE(lower.count(), 2);
    QCOMPARE(lower.at(1), file->property("series").value<QObject *>()); // on top
    file->setProperty("look", QStringLiteral("area"));
    QCOMPARE(lower.count(), 2);
    QCOMPARE(lower.at(1), file->property("series").value<QObject *>());
    file->setParentItem(nullptr);
    QCOMPARE(lower.count(), 1);
}

void tst_ViewsModule::subtractsFiles()
{
    QTemporaryDir folder;
    const auto fileOf = [&folder](const char *name, const char *content) {
        QFile file(folder.filePath(QLatin1String(name)));
        const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(content) > 0;
        return isWritten ? file.fileName().toUtf8() : QByteArray();
    };
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> view =
        make(engine,
             "PlotView { property alias difference: less\nproperty alias other: b\nproperty bool isOn: false\n"
             "FileSeries { id: a; source: '" + fileOf("a.txt", "9\n5\n7\n") + "' }\n"
             "FileSeries { id: b; source: '" + fileOf("b.txt", "1\n2\n8\n") + "' }\n"
             "FileDifference { id: less; first: a; second: isOn ? b : null } }",
             &error);
    QVERIFY2(view, qPrintable(error));
    auto *const difference = view->property("difference").value<QObject *>();
    auto *const series = difference->property("series").value<QObject *>();
    auto *const other = view->property("other").value<QObject *>();
    const QQmlListReference list(view.get(), "seriesList", &engine);
    QCOMPARE(difference->property("problem").toString(), QStringLiteral("a difference needs two files"));
    QCOMPARE(list.count(), 2);
    view->setProperty("isOn", true);
    QTRY_VERIFY(!difference->property("busy").toBool());
    QTRY_COMPARE(series->property("count").toDouble(), 3.0);
    QCOMPARE(difference->property("problem").toString(), QString());
    QCOMPARE(list.count(), 3);
    QCOMPARE(series->property("name").toString(), QStringLiteral("a.txt − b.txt"));
    QCOMPARE(series->property("minimum").toDouble(), -1.0);
    difference->setProperty("factor", 0.5);
    QTRY_COMPARE(series->property("minimum").toDouble(), 3.0);
    other->setProperty("step", 2.0);
    QCOMPARE(difference->property("problem").toString(),
             QStringLiteral("no difference: the values of the two files stand at different places"));
    QCOMPARE(list.count(), 2);
    other->setProperty("step", 1.0);
    QCOMPARE(list.count(), 3);
    view->setProperty("isOn", false);
    QCOMPARE(list.count(), 2);
}

void tst_ViewsModule::fieldsSetProperties()
{
    QQmlEngine engine;
    QString error;
    const std::unique_ptr<QObject> panel =
        make(engine,
             "FieldPanel { property real wide: 3\nproperty string word: 'a'\nproperty int kind: 1\nproperty var vague\n"
             "property int told: 0\nonFieldChanged: (field, value) => ++told\n"
             "fields: [{ words: 'Width', owner: this, property: 'wide', least: 1, otherwise: 2 },\n"
             "{ words: 'Word', owner: this, property: 'word' },\n"
             "{ words: 'Kind', owner: this, property: 'kind', choices: ['x', 'y', 'z'] },\n"
             "{ words: 'Vague', owner: this, property: 'vague', isVague: true }]\n"
             "function type(field, text) { change(fields[field], text) }\n"
             "function shown(field) { return textOf(fields[field]) } }",
             &error);
    QVERIFY2(panel, qPrintable(error));
    const auto type = [&](int field, const char *text) {
        QMetaObject::invokeMethod(panel.get(), "type", Q_ARG(QVariant, field),
                                  Q_ARG(QVariant, QString::fromLatin1(text)));
    };
    const auto shown = [&](int field) {
        QVariant text;
        QMetaObject::invokeMethod(panel.get(), "shown", Q_RETURN_ARG(QVariant, text), Q_ARG(QVariant, field));
        return text.toString();
    };
    QCOMPARE(shown(0), QStringLiteral("3"));
    type(0, "4.5");
    QCOMPARE(panel->property("wide").toDouble(), 4.5);
    for (const char *text : {"0.5", "wide", "1e999"}) // too low, and no numbers
        type(0, text);
    QCOMPARE(panel->property("wide").toDouble(), 4.5);
    type(0, "");
    QCOMPARE(panel->property("wide").toDouble(), 2.0);
    QCOMPARE(shown(0), QString());
    type(1, "b c");
    QCOMPARE(panel->property("word").toString(), QStringLiteral("b c"));
    type(2, "z");
    type(2, "w");
    QCOMPARE(panel->property("kind").toInt(), 2);
    QCOMPARE(shown(2), QStringLiteral("z"));
    type(3, "U");
    QCOMPARE(shown(3), QStringLiteral("U"));
    type(3, "");
    QVERIFY(!panel->property("vague").isValid());
    QCOMPARE(panel->property("told").toInt(), 6);
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
