// SPDX-License-Identifier: MIT
#include "viewer/ViewerOptions.h"
#include "viewer/ViewerScene.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTextStream>
#include <QThread>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int badCommandLine = 2;

void print(std::FILE *stream, const QString &text)
{
    QTextStream(stream) << text;
}

bool displayIsMissing()
{
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

/// A picture is painted without OpenGL and needs no display; without one, it's the same wherever it's made.
void prepareForErrand()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QSG_RENDER_LOOP", "basic"); // the other one may wait for itself at the end if there's no OpenGL
    QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling);
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
}

/// The variable that chose another renderer than OpenGL's, or the platform, which has nothing else.
QString whoDrawsWithoutOpenGL()
{
    for (const char *variable : {"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QSG_RHI"}) {
        if (!qEnvironmentVariableIsEmpty(variable))
            return QStringLiteral("%1=%2 draws without OpenGL")
                .arg(QLatin1String(variable), qEnvironmentVariable(variable));
    }
    return QStringLiteral("the platform \"%1\" has no OpenGL").arg(QGuiApplication::platformName());
}

/// What comes at once is in the first frame already: that saves one without it.
void awaitNumbers(const QQuickWindow &window)
{
    constexpr int patience = 40; // milliseconds
    const QDeadlineTimer end(patience);
    while (window.property("reading").toBool() && !window.property("hasNumbers").toBool() && !end.hasExpired()) {
        QThread::msleep(1);
        QCoreApplication::processEvents();
    }
}

int giveUp(const QString &why)
{
    print(stderr, QStringLiteral("vorlixview: %1, which a window needs\n").arg(why));
    return EXIT_FAILURE;
}

int run(int argc, char **argv, const SViewerOptions &options)
{
    if (!options.showsWindow())
        prepareForErrand();
    QGuiApplication application(argc, argv);
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/vorlixview/icon.png")));
    QGuiApplication::setDesktopFileName(QStringLiteral("vorlixview"));  // Wayland takes the icon from there
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering); // the same pixels in every run
    QQmlApplicationEngine engine;
    QQuickWindow *window = loadViewerScene(engine, options);
    if (!window)
        return EXIT_FAILURE;
    if (options.showsWindow() && window->rendererInterface()->graphicsApi() != QSGRendererInterface::OpenGL)
        return giveUp(whoDrawsWithoutOpenGL());
    // Otherwise Qt aborts the program when it can't create a context.
    QObject::connect(window, &QQuickWindow::sceneGraphError, window,
                     [] { QCoreApplication::exit(giveUp(whoDrawsWithoutOpenGL())); });
    awaitNumbers(*window);
    window->show();
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("vorlixview"));
    QCoreApplication::setOrganizationName(QStringLiteral("vorlixview")); // where dialogs keep their settings
    QCoreApplication::setOrganizationDomain(QStringLiteral("vorlixview"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VORLIX_VERSION));
    // Another application object, which needs no display.
    const SViewerOptions options = (QCoreApplication(argc, argv), parseViewerOptions(QCoreApplication::arguments()));
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
    if (options.showsWindow() && displayIsMissing()) {
        print(stderr, QStringLiteral("vorlixview: no display for a window; --png needs none\n"));
        return EXIT_FAILURE;
    }
    return run(argc, argv, options);
}
