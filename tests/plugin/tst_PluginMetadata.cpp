// SPDX-License-Identifier: MIT
#include "tests/plugin/Library.h"

#include <QtTest>

#include <QJsonObject>
#include <QPluginLoader>

class tst_PluginMetadata : public QObject
{
    Q_OBJECT

private slots:
    void itIsReadWithoutRunningTheLibrary();
    void theModuleFolderNamesTheLibrary();
};

void tst_PluginMetadata::itIsReadWithoutRunningTheLibrary()
{
    QPluginLoader loader(libraryFile());
    const QJsonObject data = loader.metaData();
    QVERIFY(!loader.isLoaded());
    QVERIFY(!QFile::exists(":/qml/utils.js")); // its initialisers have not run
    QCOMPARE(data.value("IID").toString(), "org.sadrim.VorlixExtensionPlugin/1.0");
    QCOMPARE(data.value("className").toString(), "VorlixExtensionPlugin");
    QCOMPARE(data.value("version").toInt(), QT_VERSION_CHECK(5, 15, 0));
    // Nothing is required of the machine; the lowest bit says that a build is for debugging.
    QCOMPARE(data.value("archreq").toInt(-1), data.value("debug").toBool() ? 1 : 0);
    QVERIFY(data.value("MetaData").toObject().isEmpty());
    QStringList keys = data.keys();
    keys.removeOne("MetaData");
    QCOMPARE(keys, (QStringList{"IID", "archreq", "className", "debug", "version"}));
}

void tst_PluginMetadata::theModuleFolderNamesTheLibrary()
{
    QCOMPARE(QFileInfo(libraryFile()).absolutePath(), QDir(importPath()).absoluteFilePath("VorlixPlugin"));
    QCOMPARE(QFileInfo(libraryFile()).fileName(), "libvorlixplugin.so");
    QFile qmldir(importPath() + "/VorlixPlugin/qmldir");
    QVERIFY(qmldir.open(QIODevice::ReadOnly | QIODevice::Text));
    const QStringList lines = QString::fromUtf8(qmldir.readAll()).split('\n');
    QVERIFY(lines.contains("module VorlixPlugin"));
    QVERIFY(lines.contains("plugin vorlixplugin"));
    QVERIFY(lines.contains("classname VorlixExtensionPlugin"));
}

QTEST_GUILESS_MAIN(tst_PluginMetadata)
#include "tst_PluginMetadata.moc"
