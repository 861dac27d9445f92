// SPDX-License-Identifier: MIT
// Usage: sample [--check]
//
// Shows series that come from a worker thread through a filter of this program's own.
// With --check it looks at the window after the last series, says what it saw, and ends.
#include "Envelope.h"
#include "Sampler.h"

#include <QDebug>
#include <QGuiApplication>
#include <QImage>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QThread>
#include <QTimer>

namespace {

constexpr int seriesCount = 20;

bool isBar(const QImage &picture, int x, int y)
{
    const QColor color = picture.pixelColor(x, y);
    return color.red() > 200 && color.green() > 150 && color.blue() < 80;
}

/// The peak stands at a quarter of the width and falls off to its right, to 0.99^50 = 0.6 of its height 50 samples on.
/// The chart's top is 1.05 times the largest number.
bool looksRight(const QImage &picture)
{
    const auto rowOf = [&](double share) { return int(picture.height() * (1.0 - share / 1.05)); };
    const auto columnOf = [&](double sample) { return int(picture.width() * (sample + 0.5) / 400.0); };
    return !isBar(picture, columnOf(50), rowOf(0.1))  // left of the peak: nothing
        && isBar(picture, columnOf(100), rowOf(0.95)) // the peak
        && isBar(picture, columnOf(150), rowOf(0.55)) // falling off ...
        && !isBar(picture, columnOf(150), rowOf(0.68))
        && isBar(picture, columnOf(200), rowOf(0.45)) // ... until the second peak
        && !isBar(picture, columnOf(200), rowOf(0.6));
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    //! [register]
    qRegisterMetaType<QVector<double>>("QVector<double>"); // so that a queued connection can carry a series
    //! [register]
    //! [type]
    qmlRegisterType<Envelope>("Sample", 1, 0, "Envelope");
    //! [type]

    QQmlApplicationEngine engine(QUrl("qrc:/Main.qml"));
    if (engine.rootObjects().isEmpty())
        return 2;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    auto *envelope = window->property("envelope").value<Envelope *>();

    //! [connect]
    QThread thread;
    Sampler sampler(seriesCount);
    sampler.moveToThread(&thread);
    QObject::connect(&thread, &QThread::started, &sampler, &Sampler::run);
    QObject::connect(&sampler, &Sampler::produced, envelope, &Envelope::setData, Qt::QueuedConnection);
    //! [connect]

    int published = 0;
    bool right = false;
    QObject::connect(envelope, &Envelope::dataChanged, &application, [&] {
        if (QThread::currentThread() != application.thread())
            qFatal("A series arrived on the wrong thread");
        if (++published < seriesCount || !application.arguments().contains("--check"))
            return;
        QTimer::singleShot(200, window, [&] {
            const QImage picture = window->grabWindow();
            right = looksRight(picture);
            qInfo() << published << "series published," << (right ? "the picture is right" : "the picture is WRONG");
            application.quit();
        });
    });
    thread.start();
    application.exec();
    thread.quit();
    thread.wait();
    return right || !application.arguments().contains("--check") ? 0 : 1;
}
