// SPDX-License-Identifier: MIT
#include "benchmarks/start/FirstPicture.h"

#include <QCoreApplication>
#include <QEvent>
#include <QQuickWindow>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

long long now(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

bool hasAll(const QQuickWindow &window)
{
    const QVariant hasNumbers = window.property("hasNumbers");
    return !window.property("reading").toBool() && (!hasNumbers.isValid() || hasNumbers.toBool());
}

void printAndExit()
{
    std::printf("%lld %lld\n", now(CLOCK_MONOTONIC), now(CLOCK_PROCESS_CPUTIME_ID));
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS);
}

} // namespace

FirstPicture::FirstPicture()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool FirstPicture::eventFilter(QObject *object, QEvent *event)
{
    auto *const window = qobject_cast<QQuickWindow *>(object);
    if (!window || event->type() != QEvent::Show)
        return false;
    // Asked while the frame takes over what is to be drawn, told once that is on the screen; both in the render thread,
    // the first with the GUI thread blocked.
    auto *const isDrawn = new std::atomic<bool>(false); // for as long as the program runs
    QObject::connect(
        window, &QQuickWindow::afterSynchronizing, window, [window, isDrawn] { *isDrawn = hasAll(*window); },
        Qt::DirectConnection);
    QObject::connect(
        window, &QQuickWindow::frameSwapped, window,
        [isDrawn] {
            if (*isDrawn)
                printAndExit();
        },
        Qt::DirectConnection);
    return false;
}
