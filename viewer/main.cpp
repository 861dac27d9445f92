// SPDX-License-Identifier: MIT
#include "viewer/Errand.h"
#include "viewer/OpenGLCheck.h"
#include "viewer/ViewerOptions.h"
#include "viewer/ViewerScene.h"

#include <QGuiApplication>
#include <QIcon>
#include <QJSValue>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTextStream>

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

/// Makes the window write what is wanted and end the event loop.
void exitWithErrand(QQuickWindow *window, const SViewerOptions &options)
{
    auto *errand = new Errand(window, options, window);
    QObject::connect(errand, &Errand::finished, window, [window](const QString &error) {
        const QStringList problems = window->property("problems").value<QJSValue>().toVariant().toStringList();
        for (const QString &words : problems + (error.isEmpty() ? QStringList() : QStringList{error}))
            print(stderr, QStringLiteral("%1: %2\n").arg(QCoreApplication::applicationName(), words));
        QCoreApplication::exit(error.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE);
    });
}

int run(int argc, char **argv, const SViewerOptions &options)
{
    if (!options.showsWindow())
        QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling); // the same letters on every screen
    QGuiApplication application(argc, argv);
    const QString lack = whyNoOpenGL();
    if (!lack.isEmpty()) {
        print(stderr, QStringLiteral("vorlixview: %1\n").arg(lack));
        return EXIT_FAILURE;
    }
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/vorlixview/icon.png")));
    QGuiApplication::setDesktopFileName(QStringLiteral("vorlixview"));  // Wayland takes the icon from there
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering); // the same pixels in every run
    QQmlApplicationEngine engine;
    QQuickWindow *window = loadViewerScene(engine, options);
    if (!window)
        return EXIT_FAILURE;
    if (!options.showsWindow())
        exitWithErrand(window, options);
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
        print(stderr, QStringLiteral("vorlixview: no display; run it with xvfb-run\n"));
        return EXIT_FAILURE;
    }
    return run(argc, argv, options);
}
