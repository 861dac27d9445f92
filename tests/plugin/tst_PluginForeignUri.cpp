// SPDX-License-Identifier: MIT
#include "tests/plugin/Library.h"

#include <QtTest>

#include <QPluginLoader>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionInterface>

#include <memory>

namespace {

QtMessageHandler previous = nullptr;
QStringList warnings;

void collect(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtDebugMsg)
        warnings.append(text);
}

} // namespace

/// A process of its own: what is registered stays registered.
class tst_PluginForeignUri : public QObject
{
    Q_OBJECT

private slots:
    void theTypesAreRegisteredUnderTheirOwnUri();
    void registeringAgainIsSilent();
};

void tst_PluginForeignUri::theTypesAreRegisteredUnderTheirOwnUri()
{
    auto *plugin = qobject_cast<QQmlExtensionInterface *>(QPluginLoader(libraryFile()).instance());
    QVERIFY(plugin);
    plugin->registerTypes("Something.Else");

    QQmlEngine engine; // without the import path: it knows what was registered and nothing else
    const auto create = [&](const char *source) {
        QQmlComponent component(&engine);
        component.setData(source, QUrl());
        return std::unique_ptr<QObject>(component.isReady() ? component.create() : nullptr);
    };
    for (const char *name : {"ChartArea", "IChartArea", "BarPlotter", "Filter1D", "IFIlterU64", "SCSVReader"})
        QVERIFY2(create(QByteArray("import VorlixPlugin 1.0\n" + QByteArray(name) + " {}").constData()), name);
    QVERIFY(!create("import Something.Else 1.0\nChartArea {}"));
}

void tst_PluginForeignUri::registeringAgainIsSilent()
{
    auto *plugin = qobject_cast<QQmlExtensionInterface *>(QPluginLoader(libraryFile()).instance());
    previous = qInstallMessageHandler(collect);
    plugin->registerTypes("VorlixPlugin");
    plugin->registerTypes(nullptr);
    qInstallMessageHandler(previous);
    QCOMPARE(warnings, QStringList());
}

QTEST_MAIN(tst_PluginForeignUri)
#include "tst_PluginForeignUri.moc"
