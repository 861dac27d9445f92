// SPDX-License-Identifier: MIT

// Areas, plotters and nodes that are made, linked, fed, mistreated and destroyed at random through the meta-object
// system. There is nothing to compare: nothing may crash, hang or leak.

#include "chart/ChartArea.h"
#include "filters/DecimatorU64.h"
#include "filters/FixedDecimator2D.h"
#include "filters/FixedDecimatorU64.h"
#include "filters/MinimalWidth2D.h"
#include "filters/MovingAvarangeU64.h"
#include "fuzz/Bytes.h"
#include "plotters/AreaPlotter.h"
#include "plotters/BarDecorator.h"
#include "plotters/BarPlotter.h"
#include "plotters/BarPlotterDx.h"
#include "plugin/TypeList.h"
#include "sources/RandomU64Data.h"
#include "sources/SCSVReader.h"
#include "stress/Cast.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>

namespace {

template <class T>
QObject *make()
{
    return new T;
}

/// Sources that start at once would make the run depend on time.
template <>
QObject *make<RandomU64Data>()
{
    auto *source = new RandomU64Data;
    source->setRepeat(false);
    source->setNumBin(32);
    return source;
}

QObject *makeObject(const QByteArray &type)
{
    struct SMaker
    {
        const char *name;
        QObject *(*make)();
    };
#define MAKE_TYPE(kind, Class) {#Class, make<Class>},
#define MAKE_ALIAS(kind, name, Class) {#name, make<Class>},
    static const SMaker makers[] = {VORLIX_TYPES(MAKE_TYPE, MAKE_ALIAS)};
    for (const SMaker &maker : makers) {
        if (type == maker.name)
            return maker.make();
    }
    return nullptr;
}

void play(Cast &cast, Bytes &bytes)
{
    static const QVector<QByteArray> types = Cast::areaTypes() + Cast::plotterTypes() + Cast::nodeTypes();
    switch (bytes.below(12)) {
    case 0:
        cast.add(types.at(bytes.below(types.size())));
        break;
    case 1:
    case 2:
    case 3:
        cast.link();
        break;
    case 4:
        cast.unlink();
        break;
    case 5:
        cast.destroyOne();
        break;
    case 6:
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        break;
    case 7:
    case 8:
        cast.mistreat();
        break;
    default:
        cast.act();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int argc = 3;
    static const char *argv[] = {"fuzz_trees", "-platform", "offscreen", nullptr};
    // Never destroyed: the offscreen platform would leave its screens behind, which the leak sanitizer reports.
    static const auto *const application = new QGuiApplication(argc, const_cast<char **>(argv));
    Q_UNUSED(application)
    static const bool quiet = [] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        return true;
    }();
    Q_UNUSED(quiet)

    Bytes bytes(data, size);
    Chance chance([&bytes] { return bytes.raw<uint32_t>(); });
    Cast cast(chance, makeObject);
    for (int i = 0; i < 8; ++i)
        play(cast, bytes);
    while (!bytes.atEnd())
        play(cast, bytes);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
