// SPDX-License-Identifier: MIT
// Charts on a light and on a dark ground. OpenGL's constant blend alpha says how opaque a chart is: 0 in a fresh
// context, so that bars only add light to what lies under them and vanish on white. Set to 1 before each frame,
// colours are what they are, on any ground.
#include <QGuiApplication>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

//! [opaque]
void keepChartsOpaque(QQuickWindow *window)
{
    // On the render thread, before any chart of this window draws: connect before the window is shown.
    QObject::connect(
        window, &QQuickWindow::beforeRendering, window,
        [] { QOpenGLContext::currentContext()->functions()->glBlendColor(0.0f, 0.0f, 0.0f, 1.0f); },
        Qt::DirectConnection);
}
//! [opaque]

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine(QUrl("qrc:/Main.qml"));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    keepChartsOpaque(window);
    window->show();
    return application.exec();
}
