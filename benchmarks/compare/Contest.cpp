// SPDX-License-Identifier: MIT
#include "benchmarks/compare/Contender.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <atomic>
#include <cstdio>

namespace {

std::atomic<bool> frameMayBeNew{false};

/// What a probe must show: ink or none.
struct SExpectation
{
    bool leftHigh = false;
    bool rightHigh = false;
};

SExpectation expectedAt(int step, int phase)
{
    const bool left = leftIsHigh(step, phase);
    return {left, !left};
}

/// Whether there is ink in the probe that begins `from` pixels from the left, as the X server has the window now.
bool hasInk(QWindow &window, int from)
{
    const int top = int(windowHeight * (1.0 - probeTop / plotTop));
    const int bottom = int(windowHeight * (1.0 - probeBottom / plotTop));
    const int width = int(windowWidth * (probeRight - probeLeft));
    const QImage probe = window.screen()
                             ->grabWindow(window.winId(), from, top, width, bottom - top)
                             .toImage()
                             .convertToFormat(QImage::Format_RGB32);
    constexpr int leastInk = 20; // pixels: a thin line across the probe leaves more
    int inked = 0;
    for (int y = 0; y < probe.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(probe.constScanLine(y));
        for (int x = 0; x < probe.width(); ++x)
            inked += qMax(qMax(qRed(line[x]), qGreen(line[x])), qBlue(line[x])) > 80;
    }
    return inked >= leastInk;
}

bool shows(QWindow &window, const SExpectation &expected)
{
    const int left = int(windowWidth * probeLeft);
    const int right = windowWidth - int(windowWidth * probeRight);
    return hasInk(window, left) == expected.leftHigh && hasInk(window, right) == expected.rightHigh;
}

/// A field of /proc/self/status in kB.
long statusField(const QByteArray &name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ').value(0).toLong();
    }
    return -1;
}

void report(const char *what, double milliseconds)
{
    std::printf("{\"what\": \"%s\", \"ms\": %.3f}\n", what, milliseconds);
    std::fflush(stdout);
}

void reportMemory(const char *what)
{
    std::printf("{\"what\": \"%s\", \"kB\": %ld}\n", what, statusField("VmHWM"));
    std::fflush(stdout);
}

class Contest
{
public:
    Contest(Contender &contender, const STask &task) : m_contender(contender), m_task(task)
    {
        m_wake.setInterval(checkEveryMs);
        QObject::connect(&m_wake, &QTimer::timeout, &m_wake, [] { frameMayBeNew = true; });
        m_wake.start();
    }

    /// False when the right picture did not come in time.
    bool run()
    {
        const QVector<double> first = testSeries(m_task.count, 0);
        m_contender.prepare(m_task, first);
        m_clock.start();
        m_window = m_contender.open(m_task, first);
        if (!waitFor(0, 0))
            return false;
        report("first frame", elapsedMs());
        if (!zoomThrough())
            return false;
        reportMemory("memory");
        if (!replaceSeries(first))
            return false;
        reportMemory("memory with replacements");
        reportProbe();
        return true;
    }

private:
    double elapsedMs() const { return double(m_clock.nsecsElapsed()) * 1e-6; }

    bool waitFor(int step, int phase)
    {
        const SExpectation expected = expectedAt(step, phase);
        for (;;) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
            if (m_window->isExposed() && frameMayBeNew.exchange(false) && shows(*m_window, expected))
                return true;
            if (elapsedMs() > patienceMs)
                return false;
        }
    }

    bool zoomTo(int step)
    {
        settle();
        m_clock.start();
        m_contender.zoom(zoomView(step));
        if (!waitFor(step, 0))
            return false;
        report("zoom step", elapsedMs());
        return true;
    }

    bool zoomThrough()
    {
        QElapsedTimer total;
        total.start();
        for (int step = 1; step < zoomSteps(m_task.count) && total.elapsed() < roundMs; ++step) {
            if (!zoomTo(step))
                return false;
            m_step = step;
        }
        while (m_step > 0) {
            const bool late = total.elapsed() > roundMs;
            const int next =
                late ? (m_step - 1) % 2 : m_step - 1; // only odd distances change the picture at the probes
            if (!zoomTo(next))
                return false;
            m_step = next;
        }
        return true;
    }

    bool replaceSeries(const QVector<double> &first)
    {
        constexpr int replacements = 8;
        const QVector<double> second = testSeries(m_task.count, 1);
        m_contender.prepare(m_task, second);
        QElapsedTimer total;
        total.start();
        for (int i = 1; i <= replacements && total.elapsed() < roundMs; ++i) {
            const int phase = i % 2;
            settle();
            m_clock.start();
            m_contender.replace(phase == 1 ? second : first);
            if (!waitFor(0, phase))
                return false;
            report("replace", elapsedMs());
        }
        return true;
    }

    /// What reading the screen costs: a part of every measurement of every contender.
    void reportProbe()
    {
        m_clock.start();
        shows(*m_window, {});
        report("probe", elapsedMs());
    }

public:
    /// Saves the window as it is on the screen: to see what was measured.
    void savePicture(const QString &file)
    {
        if (!file.isEmpty())
            m_window->screen()->grabWindow(m_window->winId()).save(file);
    }

private:
    /// Lets what the last frame left behind happen outside of the next measurement.
    static void settle()
    {
        QElapsedTimer rest;
        rest.start();
        while (rest.elapsed() < 30)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        frameMayBeNew = false;
    }

    static constexpr int checkEveryMs = 5;        ///< for contenders that do not say when a frame is finished
    static constexpr double patienceMs = 60000.0; ///< for one picture
    static constexpr int roundMs = 5000;          ///< for one kind of measurement, after which no further one begins

    Contender &m_contender;
    STask m_task;
    QWindow *m_window = nullptr;
    QElapsedTimer m_clock;
    QTimer m_wake;
    int m_step = 0;
};

} // namespace

void frameFinished()
{
    frameMayBeNew = true;
    QMetaObject::invokeMethod(
        qApp, [] {}, Qt::QueuedConnection); // wakes the GUI thread
}

int runContest(Contender &contender)
{
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("kind"), QString(), QStringLiteral("kind"), QStringLiteral("bars")});
    parser.addOption({QStringLiteral("variant"), QString(), QStringLiteral("variant")});
    parser.addOption({QStringLiteral("count"), QString(), QStringLiteral("count"), QStringLiteral("1000")});
    parser.addOption({QStringLiteral("variants"), QString()});
    parser.addOption({QStringLiteral("picture"), QString(), QStringLiteral("file")});
    parser.process(*QCoreApplication::instance());
    const STask task{parser.value(QStringLiteral("kind")), parser.value(QStringLiteral("variant")),
                     parser.value(QStringLiteral("count")).toInt()};
    if (parser.isSet(QStringLiteral("variants"))) {
        for (const QString &variant : contender.variants(task.kind))
            std::printf("%s\n", qPrintable(variant));
        return 0;
    }
    Contest contest(contender, task);
    const bool done = contest.run();
    contest.savePicture(parser.value(QStringLiteral("picture")));
    if (!done)
        std::printf("{\"what\": \"no picture\"}\n");
    std::fflush(stdout);
    std::_Exit(done ? 0 : 3); // tearing down a million items isn't measured
}
