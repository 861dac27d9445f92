// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"

#include <QDirIterator>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QtTest>

#include <memory>

/// The ready components as a program in C++ sees them: by their meta-objects.
class tst_properties : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyPropertyHasATypeAndAValue_data();
    void everyPropertyHasATypeAndAValue();
    void chartsAreChartAreas_data();
    void chartsAreChartAreas();

private:
    std::unique_ptr<QObject> create(const QString &path);

    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_plotter;
};

namespace {

/// Why a property can't be read; empty if it can.
QString fault(const QMetaProperty &property, const QObject &object)
{
    if (property.userType() == QMetaType::UnknownType)
        return QStringLiteral("%1: no type is known by the name \"%2\"").arg(property.name(), property.typeName());
    if (!property.isReadable() || !property.read(&object).isValid())
        return QStringLiteral("%1 of type %2 can't be read").arg(property.name(), property.typeName());
    return {};
}

} // namespace

void tst_properties::initTestCase()
{
    // Makes the module's resources known, too.
    QQmlComponent component(&m_engine);
    component.setData("import VorlixPlugin 1.0\nBarPlotter {}", QUrl());
    m_plotter.reset(component.create());
    QVERIFY2(m_plotter, qPrintable(component.errorString()));
    // What a view gives to a legend's entry.
    m_engine.rootContext()->setContextProperty(QStringLiteral("modelData"), m_plotter.get());
}

std::unique_ptr<QObject> tst_properties::create(const QString &path)
{
    QQmlComponent component(&m_engine, QUrl("qrc" + path));
    std::unique_ptr<QObject> object(component.create());
    if (!object)
        qWarning() << component.errorString();
    return object;
}

void tst_properties::everyPropertyHasATypeAndAValue_data()
{
    QTest::addColumn<QString>("path");
    int count = 0;
    for (QDirIterator files(":/qml", {"*.qml"}, QDir::Files, QDirIterator::Subdirectories); files.hasNext(); ++count) {
        const QString path = files.next();
        QTest::newRow(qPrintable(path)) << path;
    }
    QCOMPARE(count, 10); // and a script library
}

void tst_properties::everyPropertyHasATypeAndAValue()
{
    QFETCH(QString, path);
    const std::unique_ptr<QObject> object = create(path);
    QVERIFY(object);
    const LogCatcher log;
    QStringList faults;
    const QMetaObject *meta = object->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i)
        faults << fault(meta->property(i), *object);
    faults.removeAll({});
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    QCOMPARE(log.messages(), QStringList());
}

void tst_properties::chartsAreChartAreas_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("of a plot") << ":/qml/SPlotQML.qml" << QByteArray("refChartArea");
    QTest::newRow("of a plot's strip") << ":/qml/SPlotQML.qml" << QByteArray("refNavigator");
    QTest::newRow("of a strip") << ":/qml/NavigatorBar.qml" << QByteArray("navChart");
}

void tst_properties::chartsAreChartAreas()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, name);
    const std::unique_ptr<QObject> object = create(path);
    QVERIFY(object);
    const auto *chart = object->property(name).value<QObject *>();
    QVERIFY(chart);
    QVERIFY(chart->inherits("ChartArea"));
}

QTEST_MAIN(tst_properties)
#include "tst_properties.moc"
