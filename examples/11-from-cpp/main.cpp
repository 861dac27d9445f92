// SPDX-License-Identifier: MIT
// Feeds a node of the QML scene from C++: a walk of two thousand steps, fifty steps at a time.
#include <filters/Filter1D.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QTimer>

#include <random>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine(QUrl("qrc:/Main.qml"));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto *source = engine.rootObjects().constFirst()->findChild<Filter1D *>("source");

    constexpr int steps = 2000;
    QVector<double> walk{300.0};
    std::mt19937 generator(7);
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, source, [&] {
        for (int i = 0; i < 50 && walk.size() < steps; ++i)
            walk.append(walk.constLast() + double(generator() % 2001) / 100.0 - 10.0);
        source->setArea(QRectF(0.0, 0.0, walk.size(), 1.0));
        source->setData(walk); // shared with the node and its plotters, not copied
        if (walk.size() == steps)
            timer.stop();
    });
    timer.start(40);
    return application.exec();
}
