// SPDX-License-Identifier: MIT
#include "MetaTable.h"

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRegularExpression>
#include <QtTest>

#include <memory>

namespace {

QString textOf(const QString &path)
{
    QFile file(QStringLiteral(SOURCE "/") + path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// From a heading of a level to the next of the same or a higher one.
QString section(const QString &text, const QString &heading)
{
    const int level = heading.indexOf(' ');
    const QRegularExpression next(QStringLiteral("^#{1,%1} ").arg(level), QRegularExpression::MultilineOption);
    const int start = ('\n' + text).indexOf('\n' + heading + '\n');
    if (start < 0)
        return {};
    const int end = text.indexOf(next, start + heading.size());
    return text.mid(start, end < 0 ? -1 : end - start);
}

/// The rows of the tables in a text, without their heads.
QStringList rows(const QString &text)
{
    QStringList found;
    for (const QString &line : text.split('\n')) {
        if (line.startsWith(QLatin1String("|---")))
            found.removeLast(); // the line above is the table's head
        else if (line.startsWith('|'))
            found << line;
    }
    return found;
}

/// Says which row is missing, wrong or too many; empty when the page has the expected rows in their order. Cells that
/// are not words of code, such as "a fresh UUID" for a default, stand for themselves where the value is not fixed.
QString difference(QStringList page, const QStringList &expected)
{
    for (int i = 0; i < expected.size(); ++i) {
        if (i >= page.size())
            return "missing: " + expected[i];
        if (!page[i].startsWith(expected[i] + " |"))
            return "expected: " + expected[i] + "\n   found: " + page[i];
        const QStringList cells = page[i].split(QStringLiteral(" | "));
        for (const QString &cell : cells) {
            if (cell.trimmed().isEmpty() || cell.trimmed() == QLatin1String("|"))
                return "an empty cell: " + page[i];
        }
    }
    return page.size() > expected.size() ? "too many: " + page[expected.size()] : QString();
}

/// A UUID is a new one each time.
QStringList withoutChance(QStringList expected)
{
    return expected.replaceInStrings(QRegularExpression(QStringLiteral("`\"\\{.*\\}\"`")),
                                     QStringLiteral("a fresh UUID"));
}

} // namespace

/// docs/reference/ against the meta-objects of what it describes.
class TestReference : public QObject
{
    Q_OBJECT

private slots:
    void every_type_has_a_page_data();
    void every_type_has_a_page();
    void every_type_of_the_companion_has_a_page_data();
    void every_type_of_the_companion_has_a_page();
    void the_bases_of_the_companion_have_pages();
    void the_bases_of_the_plotters_have_pages();
    void the_components_data();
    void the_components();
    void the_script_library();

private:
    std::unique_ptr<QObject> create(const QString &type, const QByteArray &module = "VorlixPlugin");
    void comparePage(const QMetaObject &meta, QObject &object);

    QQmlEngine m_engine;
};

std::unique_ptr<QObject> TestReference::create(const QString &type, const QByteArray &module)
{
    QQmlComponent component(&m_engine);
    component.setData("import " + module + " 1.0\n" + type.toUtf8() + " {}", QUrl());
    std::unique_ptr<QObject> object(component.create());
    if (!object)
        qWarning() << component.errorString();
    return object;
}

void TestReference::every_type_has_a_page_data()
{
    QTest::addColumn<QString>("type");
    // What the module registers; another test compares this file with the module.
    QRegularExpressionMatchIterator exports = QRegularExpression(QStringLiteral("\"VorlixPlugin/(\\w+) 1.0\""))
                                                  .globalMatch(textOf("plugin/plugins.qmltypes"));
    QVERIFY(exports.hasNext());
    while (exports.hasNext()) {
        const QString type = exports.next().captured(1);
        QTest::newRow(qPrintable(type)) << type;
    }
}

void TestReference::every_type_has_a_page()
{
    QFETCH(QString, type);
    const std::unique_ptr<QObject> object = create(type);
    QVERIFY(object);
    const QMetaObject *meta = object->metaObject();
    const QString page = textOf("docs/reference/" + type + ".md");
    QVERIFY2(page.startsWith("# " + type + '\n'), "no page of that title");

    if (meta->className() != type) { // a second name of a type
        QVERIFY(page.contains(QStringLiteral("](%1.md)").arg(meta->className())));
        QCOMPARE(rows(page), QStringList());
        return;
    }
    comparePage(*meta, *object);
}

void TestReference::every_type_of_the_companion_has_a_page_data()
{
    QTest::addColumn<QString>("type");
    const QStringList bases{"PlotAxis", "PlotSeries"}; // can't be made: see below
    QRegularExpressionMatchIterator exports =
        QRegularExpression(QStringLiteral("exports: \\[\"VorlixPlugin\\.Views/(\\w+) 1.0\""))
            .globalMatch(textOf("views/plugin/plugins.qmltypes"));
    QVERIFY(exports.hasNext());
    while (exports.hasNext()) {
        const QString type = exports.next().captured(1);
        if (!bases.contains(type))
            QTest::newRow(qPrintable(type)) << type;
    }
}

void TestReference::every_type_of_the_companion_has_a_page()
{
    QFETCH(QString, type);
    const std::unique_ptr<QObject> object = create(type, "VorlixPlugin.Views");
    QVERIFY(object);
    comparePage(*object->metaObject(), *object);
}

void TestReference::the_bases_of_the_companion_have_pages()
{
    for (const char *type : {"LineSeries", "ValueAxis"}) { // change no default
        const std::unique_ptr<QObject> object = create(type, "VorlixPlugin.Views");
        QVERIFY(object);
        comparePage(*object->metaObject()->superClass(), *object);
        if (QTest::currentTestFailed())
            return;
    }
}

void TestReference::the_bases_of_the_plotters_have_pages()
{
    const std::unique_ptr<QObject> plotter = create("BarPlotter"); // changes no default
    const QMetaObject *series = plotter->metaObject()->superClass();
    comparePage(*series, *plotter);
    if (!QTest::currentTestFailed())
        comparePage(*series->superClass(), *plotter);
}

/// What the class itself adds to its base; and the page must lead to the base's.
void TestReference::comparePage(const QMetaObject &meta, QObject &object)
{
    const auto nameOf = [](const QMetaObject &type) { // a type in QML has a number
        return QString(type.className()).section(QStringLiteral("_QMLTYPE"), 0, 0);
    };
    const QString name = nameOf(meta);
    const QString page = textOf(QStringLiteral("docs/reference/%1.md").arg(name));
    QString found =
        difference(rows(section(page, "## Properties")), withoutChance(MetaTable::properties(meta, object)));
    QVERIFY2(found.isEmpty(), qPrintable(found));
    found = difference(rows(section(page, "## Signals")), MetaTable::signalRows(meta));
    QVERIFY2(found.isEmpty(), qPrintable(found));
    found = difference(rows(section(page, "## Functions")), MetaTable::functions(meta));
    QVERIFY2(found.isEmpty(), qPrintable(found));

    QVERIFY(page.startsWith(QStringLiteral("# %1\n").arg(name)));
    const QString base = nameOf(*meta.superClass());
    const bool isOurs = !base.startsWith('Q');
    const QString inherits = isOurs ? QStringLiteral("Inherits [%1](%1.md).").arg(base) : QStringLiteral("Inherits");
    QVERIFY2(page.contains(inherits), qPrintable(inherits));
}

void TestReference::the_components_data()
{
    QTest::addColumn<QString>("file");
    QVERIFY(create("ChartArea")); // loads the module, and with it its resources
    QDir folder(QStringLiteral(":/qml"));
    const QDir legends(QStringLiteral(":/qml/Legend"));
    for (const QString &name : folder.entryList({"*.qml"}))
        QTest::newRow(qPrintable(name.chopped(4))) << name;
    for (const QString &name : legends.entryList({"*.qml"}))
        QTest::newRow(qPrintable(name.chopped(4))) << "Legend/" + name;
}

void TestReference::the_components()
{
    QFETCH(QString, file);
    const std::unique_ptr<QObject> plotter = create("BarPlotter");
    QQmlComponent component(&m_engine, QUrl("qrc:/qml/" + file));
    QVariantMap given;
    if (file == "Legend/LegendElement.qml")
        given["plotter"] = QVariant::fromValue(plotter.get());
    const std::unique_ptr<QObject> object(component.createWithInitialProperties(given));
    QVERIFY2(object, qPrintable(component.errorString()));

    const QString text = section(textOf("docs/reference/components.md"), "## " + QFileInfo(file).baseName());
    QVERIFY2(!text.isEmpty(), "no section of that title");
    QVERIFY(text.contains("`qrc:/qml/" + file + '`'));
    const QMetaObject &meta = *object->metaObject();
    const QStringList expected =
        MetaTable::componentProperties(meta, *object) + MetaTable::signalRows(meta) + MetaTable::functions(meta);
    const QString found = difference(rows(text), expected);
    QVERIFY2(found.isEmpty(), qPrintable(found));
}

void TestReference::the_script_library()
{
    QStringList expected;
    QRegularExpressionMatchIterator functions =
        QRegularExpression(QStringLiteral("^function (\\w+\\([^)]*\\))"), QRegularExpression::MultilineOption)
            .globalMatch(textOf("qml/utils.js"));
    while (functions.hasNext())
        expected << "| `" + functions.next().captured(1) + '`';
    QVERIFY(!expected.isEmpty());
    const QString found = difference(rows(section(textOf("docs/reference/components.md"), "## utils.js")), expected);
    QVERIFY2(found.isEmpty(), qPrintable(found));
}

QTEST_MAIN(TestReference)
#include "tst_Reference.moc"
