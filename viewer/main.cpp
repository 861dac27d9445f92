// SPDX-License-Identifier: MIT
#include "viewer/OpenGLCheck.h"
#include "viewer/PictureWriter.h"
#include "viewer/ViewerOptions.h"
#include "viewer/ViewerScene.h"

#include <QGuiApplication>
#include <QIcon>
#include <QJSValue>
#include <QQmlApplicationEngine>
#include <QQuickItem>
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

/// Makes the window write its picture and end the event loop.
void exitWithPicture(QQuickWindow *window, const SPictureOrder &order)
{
    // A window manager would have its say about the size.
    window->setFlags(window->flags() | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    auto *chart = window->property("chart").value<QQuickItem *>();
    auto *writer = new PictureWriter(window, chart, order, window);
    QObject::connect(writer, &PictureWriter::finished, window, [window](const QString &error) {
        const QStringList problems = window->property("problems").value<QJSValue>().toVariant().toStringList();
        for (const QString &words : problems + (error.isEmpty() ? QStringList() : QStringList{error}))
            print(stderr, QStringLiteral("%1: %2\n").arg(QCoreApplication::applicationName(), words));
        QCoreApplication::exit(error.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE);
    });
}

/// A file that is being read is read to its end, whoever waits for that. Nobody does: the window is gone, and nothing
/// of it is wanted any more. No destructor runs beside a reader.
[[noreturn]] void leaveTheReaders(int code)
{
    std::fflush(nullptr);
    std::_Exit(code);
}

int run(int argc, char **argv, const SViewerOptions &options)
{
    if (!options.picture.isEmpty())
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
    if (!options.picture.isEmpty())
        exitWithPicture(window, {options.picture, options.size});
    window->show();
    const int code = QGuiApplication::exec();
    if (window->property("reading").toBool())
        leaveTheReaders(code);
    return code;
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
