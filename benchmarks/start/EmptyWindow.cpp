// SPDX-License-Identifier: MIT
// A window with nothing in it: what any program with Qt Quick takes to start.
#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData(
        "import QtQuick 2.15\nimport QtQuick.Window 2.15\nWindow { width: 1280; height: 720; visible: true }");
    return engine.rootObjects().isEmpty() ? EXIT_FAILURE : QGuiApplication::exec();
}
