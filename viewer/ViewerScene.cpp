// SPDX-License-Identifier: MIT
#include "viewer/ViewerScene.h"

#include "viewer/Desktop.h"
#include "viewer/ViewerOptions.h"

#include <QCoreApplication>
#include <QDir>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>

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
    auto *const desktop = new Desktop(options.keepsSettings, &engine);
    engine.rootContext()->setContextProperty(QStringLiteral("desktop"), desktop);
    QVariantMap scene = options.scene;
    for (const char *name : {"pixels", "look", "colors", "logarithmic", "overview"}) {
        const QVariant value = desktop->remembered(QLatin1String(name));
        if (value.isValid() && !scene.contains(QLatin1String(name)))
            scene.insert(QLatin1String(name), value);
    }
    engine.setInitialProperties(scene);
    engine.load(QUrl(QStringLiteral("qrc:/vorlixview/Viewer.qml")));
    return engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
}
