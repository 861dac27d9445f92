// SPDX-License-Identifier: MIT
#include "viewer/ViewerScene.h"

#include "viewer/FileChecks.h"
#include "viewer/LineOfBars.h"
#include "viewer/OpaqueBars.h"
#include "viewer/SeriesFile.h"
#include "viewer/ViewerOptions.h"

#include <QCoreApplication>
#include <QDir>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>
#include <QVariantMap>

#include <qqml.h>

namespace {

void addImportPaths(QQmlApplicationEngine &engine)
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    for (const char *path : {VORLIX_INSTALLED_QML, VORLIX_BUILD_TREE_QML}) {
        const QString folder = programFolder.absoluteFilePath(QLatin1String(path));
        if (QDir(folder).exists())
            engine.addImportPath(folder);
    }
}

} // namespace

QQuickWindow *loadViewerScene(QQmlApplicationEngine &engine, const SViewerOptions &options)
{
    addImportPaths(engine);
    qmlRegisterType<SeriesFile>("VorlixView", 1, 0, "SeriesFile");
    qmlRegisterType<LineOfBars>("VorlixView", 1, 0, "LineOfBars");
    engine.rootContext()->setContextProperty(QStringLiteral("fileChecks"), new FileChecks(&engine));
    engine.setInitialProperties({{QStringLiteral("files"), options.files},
                                 {QStringLiteral("binWidth"), options.binWidth},
                                 {QStringLiteral("unit"), options.unit},
                                 {QStringLiteral("smoothDepth"), options.smoothDepth},
                                 {QStringLiteral("asArea"), options.area},
                                 {QStringLiteral("logarithmic"), options.logarithmic},
                                 {QStringLiteral("dark"), options.darkGround},
                                 {QStringLiteral("asPicture"), !options.picture.isEmpty()},
                                 {QStringLiteral("width"), options.size.width()},
                                 {QStringLiteral("height"), options.size.height()}});
    engine.load(QUrl(QStringLiteral("qrc:/vorlixview/main.qml")));
    if (engine.rootObjects().isEmpty())
        return nullptr;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    if (window)
        keepBarsOpaque(window);
    return window;
}
