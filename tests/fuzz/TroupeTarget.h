// SPDX-License-Identifier: MIT
#pragma once

#include "fuzz/Bytes.h"
#include "stress/Troupe.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>

/// An application without a display, which says nothing, for a target of this name.
inline void beQuietApplication(const char *name)
{
    static int argc = 3;
    static const char *argv[] = {name, "-platform", "offscreen", nullptr};
    // Never destroyed: the offscreen platform would leave its screens behind, which the leak sanitizer reports.
    static const auto *const application = new QGuiApplication(argc, const_cast<char **>(argv));
    Q_UNUSED(application)
    static const bool quiet = [] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        return true;
    }();
    Q_UNUSED(quiet)
}

/// Does what one number asks for, if every troupe can do it. False if it's for the target to say.
inline bool playCommon(Troupe &troupe, int deed)
{
    switch (deed) {
    case 1:
    case 2:
    case 3:
        troupe.link();
        return true;
    case 4:
        troupe.unlink();
        return true;
    case 5:
        troupe.destroyOne();
        return true;
    case 6:
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return true;
    default:
        return false;
    }
}

/// Calls play(troupe, bytes) until the bytes are used up, and some times at least. Then nothing may be left.
template <class Company, class Make, class Play>
void playAll(const uint8_t *data, size_t size, Make make, Play play)
{
    Bytes bytes(data, size);
    Chance chance([&bytes] { return bytes.raw<uint32_t>(); });
    Company troupe(chance, make);
    for (int i = 0; i < 8; ++i)
        play(troupe, bytes);
    while (!bytes.atEnd())
        play(troupe, bytes);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
