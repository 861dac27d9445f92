// SPDX-License-Identifier: MIT
#include <QDirIterator>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QResource>
#include <QtTest>

/// What the library carries, and how an application comes to it.
class tst_resources : public QObject
{
    Q_OBJECT

private slots:
    void theTreeComesWithTheModule();
    void itHoldsTheElevenFilesAndNoOther();
    void theContentsAreThoseOfTheSources();
    void theFilesAreCompressedWithZlibInFormatThree();

private:
    QQmlEngine m_engine;
};

void tst_resources::theTreeComesWithTheModule()
{
    QVERIFY(!QFile::exists(":/qml/SPlotQML.qml"));
    QQmlComponent component(&m_engine);
    component.setData(
        "import QtQml 2.15\nimport VorlixPlugin 1.0\nimport \"qrc:/qml\"\nimport \"qrc:/qml/Legend\"\n"
        "QtObject { property SPlotQML plot; property ViewLegend legend }",
        QUrl());
    QVERIFY2(component.isReady(), qPrintable(component.errorString()));
    QVERIFY(QFile::exists(":/qml/SPlotQML.qml"));
}

void tst_resources::itHoldsTheElevenFilesAndNoOther()
{
    QStringList found;
    for (QDirIterator files(":/qml", QDir::Files, QDirIterator::Subdirectories); files.hasNext();)
        found.append(files.next());
    found.sort();
    const QStringList expected{":/qml/ChartTooltip.qml",
                               ":/qml/Legend/HorizontalLegend.qml",
                               ":/qml/Legend/LegendDropArea.qml",
                               ":/qml/Legend/LegendElement.qml",
                               ":/qml/Legend/VerticalLegend.qml",
                               ":/qml/Legend/ViewLegend.qml",
                               ":/qml/LinearXAxis.qml",
                               ":/qml/LinearYAxis.qml",
                               ":/qml/NavigatorBar.qml",
                               ":/qml/SPlotQML.qml",
                               ":/qml/utils.js"};
    QCOMPARE(found, expected);
}

void tst_resources::theContentsAreThoseOfTheSources()
{
    for (QDirIterator files(":/qml", QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        QFile carried(files.next());
        QFile source(QString(QML_FOLDER) + carried.fileName().mid(int(qstrlen(":/qml"))));
        QVERIFY(carried.open(QFile::ReadOnly) && source.open(QFile::ReadOnly));
        QCOMPARE(carried.readAll(), source.readAll());
    }
}

void tst_resources::theFilesAreCompressedWithZlibInFormatThree()
{
    for (QDirIterator files(":/qml", QDir::Files, QDirIterator::Subdirectories); files.hasNext();)
        QCOMPARE(QResource(files.next()).compressionAlgorithm(), QResource::ZlibCompression);
    QFile generated(GENERATED_RESOURCES);
    QVERIFY(generated.open(QFile::ReadOnly));
    QVERIFY(generated.readAll().contains("int version = 3;"));
}

QTEST_MAIN(tst_resources)
#include "tst_resources.moc"
