// SPDX-License-Identifier: MIT
#include "tests/plugin/Library.h"

#include <QtTest>

#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

class tst_PluginTypes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_engine.addImportPath(importPath()); }
    void everyTypeIsCreatable_data();
    void everyTypeIsCreatable();
    void bothNamesOfTheNodeAreOneClass();
    void basesOfPlottersAreNotTypes_data();
    void basesOfPlottersAreNotTypes();
    void thereIsNoOtherVersion();

private:
    std::unique_ptr<QObject> create(const QByteArray &source, QString *errors = nullptr)
    {
        QQmlComponent component(&m_engine);
        component.setData(source, QUrl());
        std::unique_ptr<QObject> object(component.isReady() ? component.create() : nullptr);
        if (errors)
            *errors = component.errorString();
        return object;
    }

    QQmlEngine m_engine;
};

void tst_PluginTypes::everyTypeIsCreatable_data()
{
    QTest::addColumn<QByteArray>("className");
    const auto row = [](const char *name, const char *className) { QTest::newRow(name) << QByteArray(className); };
    row("ChartArea", "ChartArea");
    row("IChartArea", "IChartArea");
    row("BarPlotter", "BarPlotter");
    row("BarPlotterDx", "BarPlotterDx");
    row("AreaPlotter", "AreaPlotter");
    row("BarDecorator", "BarDecorator");
    row("IFIlterU64", "Filter1D");
    row("DecimatorU64", "DecimatorU64");
    row("RandomU64Data", "RandomU64Data");
    row("MovingAvarangeU64", "MovingAvarangeU64");
    row("FixedDecimatorU64", "FixedDecimatorU64");
    row("Filter1D", "Filter1D");
    row("FixedDecimator2D", "FixedDecimator2D");
    row("MinimalWidth2D", "MinimalWidth2D");
    row("SCSVReader", "SCSVReader");
}

void tst_PluginTypes::everyTypeIsCreatable()
{
    QFETCH(QByteArray, className);
    QString errors;
    const auto object = create(QByteArray("import VorlixPlugin 1.0\n") + QTest::currentDataTag() + " {}", &errors);
    QVERIFY2(object, qPrintable(errors));
    QCOMPARE(QByteArray(object->metaObject()->className()), className);
}

void tst_PluginTypes::bothNamesOfTheNodeAreOneClass()
{
    const auto one = create("import VorlixPlugin 1.0\nIFIlterU64 {}");
    const auto other = create("import VorlixPlugin 1.0\nFilter1D {}");
    QVERIFY(one && other);
    QCOMPARE(one->metaObject(), other->metaObject());
}

void tst_PluginTypes::basesOfPlottersAreNotTypes_data()
{
    QTest::addColumn<int>("unused");
    for (const char *name : {"IPlotter", "IPlotter1D", "ChartRenderer", "Filter2D"})
        QTest::newRow(name) << 0;
}

void tst_PluginTypes::basesOfPlottersAreNotTypes()
{
    QString errors;
    QVERIFY(!create(QByteArray("import VorlixPlugin 1.0\n") + QTest::currentDataTag() + " {}", &errors));
    QVERIFY2(errors.contains("is not a type"), qPrintable(errors));
}

void tst_PluginTypes::thereIsNoOtherVersion()
{
    for (const char *version : {"1.1", "2.0", "0.9"}) {
        QString errors;
        QVERIFY(!create(QByteArray("import VorlixPlugin ") + version + "\nChartArea {}", &errors));
        QVERIFY2(errors.contains("version"), qPrintable(errors));
    }
}

QTEST_MAIN(tst_PluginTypes)
#include "tst_PluginTypes.moc"
