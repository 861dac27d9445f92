// SPDX-License-Identifier: MIT
// A thread measures a swing that has both signs, a thousand times a second for six seconds, and a plot follows it.
#include <views/store/SeriesStore.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>

#include <atomic>
#include <chrono>
#include <cmath>
#include <thread>

namespace {

double deflection(int millisecond)
{
    const double time = millisecond / 1000.0;
    return 8.0 * std::sin(9.0 * time) * std::cos(0.7 * time) + 1.5 * std::sin(61.0 * time);
}

/// Appends from a thread of its own; the writer may outlive the store.
void measure(SeriesWriter writer, const std::atomic<bool> &isWanted)
{
    constexpr int samples = 6000;
    for (int i = 0; i < samples && isWanted; ++i) {
        writer.append(deflection(i));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    SeriesStore recorder;
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("recorder", &recorder);
    engine.load(QUrl("qrc:/Main.qml"));
    if (engine.rootObjects().isEmpty())
        return 1;

    std::atomic<bool> isWanted{true};
    std::thread device(measure, recorder.writer(), std::cref(isWanted));
    const int result = application.exec();
    isWanted = false;
    device.join();
    return result;
}
