// SPDX-License-Identifier: MIT
#include "tests/plugin/Library.h"

#include <QtTest>

#include <QPluginLoader>
#include <QPointer>
#include <QQmlExtensionInterface>
#include <QQmlExtensionPlugin>

class tst_PluginInstance : public QObject
{
    Q_OBJECT

private slots:
    void thereIsOneWithoutAParent();
    void itAddsNothingToItsBase();
    void aDestroyedOneIsReplaced();
};

void tst_PluginInstance::thereIsOneWithoutAParent()
{
    QPluginLoader first(libraryFile()), second(libraryFile());
    QObject *plugin = first.instance();
    QVERIFY2(plugin, qPrintable(first.errorString()));
    QCOMPARE(second.instance(), plugin);
    QCOMPARE(plugin->metaObject()->className(), "VorlixExtensionPlugin");
    QCOMPARE(plugin->parent(), nullptr);
    QVERIFY(qobject_cast<QQmlExtensionPlugin *>(plugin));
    QVERIFY(qobject_cast<QQmlExtensionInterface *>(plugin));
}

void tst_PluginInstance::itAddsNothingToItsBase()
{
    const QMetaObject *meta = QPluginLoader(libraryFile()).instance()->metaObject();
    QCOMPARE(meta->superClass(), &QQmlExtensionPlugin::staticMetaObject);
    QCOMPARE(meta->propertyCount(), meta->superClass()->propertyCount());
    QCOMPARE(meta->methodCount(), meta->superClass()->methodCount());
    QCOMPARE(meta->classInfoCount(), meta->superClass()->classInfoCount());
}

void tst_PluginInstance::aDestroyedOneIsReplaced()
{
    QPluginLoader loader(libraryFile());
    const QPointer<QObject> first(loader.instance());
    delete first.data();
    QVERIFY(!first);
    QObject *second = loader.instance();
    QVERIFY(second);
    QCOMPARE(second->metaObject()->className(), "VorlixExtensionPlugin");
    QCOMPARE(loader.instance(), second);
}

QTEST_GUILESS_MAIN(tst_PluginInstance)
#include "tst_PluginInstance.moc"
