// SPDX-License-Identifier: MIT
#include "viewer/FileChecks.h"
#include "viewer/OpaqueBars.h"
#include "viewer/PictureWriter.h"
#include "viewer/SeriesFile.h"
#include "viewer/ViewerOptions.h"
#include "viewer/VisiblePart.h"

#include <QDir>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTextStream>
#include <QVariantMap>

#include <qqml.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int badCommandLine = 2;

void print(std::FILE *stream, const QString &text)
{
    QTextStream(stream) << text;
}

SViewerOptions optionsOf(int argc, char **argv)
{
    const QCoreApplication application(argc, argv); // for the arguments; it needs no display
    return parseViewerOptions(QCoreApplication::arguments());
}

bool displayIsMissing()
{
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

void addImportPaths(QQmlApplicationEngine &engine)
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    for (const char *path : {VORLIX_INSTALLED_QML, VORLIX_BUILD_TREE_QML}) {
        const QString folder = programFolder.absoluteFilePath(QLatin1String(path));
        if (QDir(folder).exists())
            engine.addImportPath(folder);
    }
}

/// The scene's window, not shown yet. Null if the scene can't be loaded; Qt has said why.
QQuickWindow *loadScene(QQmlApplicationEngine &engine, const SViewerOptions &options)
{
    addImportPaths(engine);
    qmlRegisterType<SeriesFile>("VorlixView", 1, 0, "SeriesFile");
    qmlRegisterType<VisiblePart>("VorlixView", 1, 0, "VisiblePart");
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
    return engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
}

/// Makes the window write its picture and end the event loop.
void exitWithPicture(QQuickWindow *window, const QString &path)
{
    // A window manager would have its say about the size.
    window->setFlags(window->flags() | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    auto *chart = window->property("chart").value<QQuickItem *>();
    auto *writer = new PictureWriter(window, chart, path, window);
    QObject::connect(writer, &PictureWriter::finished, window, [](const QString &error) {
        if (!error.isEmpty())
            print(stderr, QStringLiteral("%1: %2\n").arg(QCoreApplication::applicationName(), error));
        QCoreApplication::exit(error.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE);
    });
}

int run(int argc, char **argv, const SViewerOptions &options)
{
    if (!options.picture.isEmpty())
        QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling); // the size asked for is in the picture's pixels
    QGuiApplication application(argc, argv);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering); // the same pixels in every run
    QQmlApplicationEngine engine;
    QQuickWindow *window = loadScene(engine, options);
    if (!window)
        return EXIT_FAILURE;
    keepBarsOpaque(window);
    if (!options.picture.isEmpty())
        exitWithPicture(window, options.picture);
    window->show();
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("vorlixview"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VORLIX_VERSION));
    const SViewerOptions options = optionsOf(argc, argv);
    switch (options.action) {
    case SViewerOptions::Action::PrintAndSucceed:
        print(stdout, options.message);
        return EXIT_SUCCESS;
    case SViewerOptions::Action::PrintAndFail:
        print(stderr, options.message);
        return badCommandLine;
    case SViewerOptions::Action::Show:
        break;
    }
    if (displayIsMissing()) {
        print(stderr, QStringLiteral("vorlixview: there is no display; xvfb-run provides one\n"));
        return EXIT_FAILURE;
    }
    return run(argc, argv, options);
}
