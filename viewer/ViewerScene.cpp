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

constexpr QSize usualSize(1280, 720);

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
    const QSize size =
        options.size.isEmpty() ? desktop->remembered(QStringLiteral("size"), usualSize).toSize() : options.size;
    QVariantMap scene = options.scene;
    for (const char *name : {"look", "colors", "logarithmic", "overview"}) {
        const QVariant value = desktop->remembered(QLatin1String(name));
        const bool isGiven = scene.contains(QLatin1String(name));
        if (value.isValid() && !isGiven)
            scene.insert(QLatin1String(name), value);
    }
    scene.insert(QStringLiteral("picture"), options.picture);
    scene.insert(QStringLiteral("values"), options.values);
    scene.insert(QStringLiteral("pixels"), QSizeF(size));
    engine.setInitialProperties(scene);
    engine.load(QUrl(QStringLiteral("qrc:/vorlixview/Viewer.qml")));
    return engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
}
