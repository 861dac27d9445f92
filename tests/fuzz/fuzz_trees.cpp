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
#include "sources/RandomU64Data.h"
#include "sources/SCSVReader.h"
#include "stress/Cast.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>

namespace {

/// Sources that start at once would make the run depend on time.
QObject *makeSource()
{
    auto *source = new RandomU64Data;
    source->setRepeat(false);
    source->setNumBin(32);
    return source;
}

template <class T>
QObject *make()
{
    return new T;
}

QObject *makeObject(const QByteArray &type)
{
    struct SKind
    {
        const char *name;
        QObject *(*make)();
    };
    static const SKind kinds[] = {
        {"ChartArea", [] { return make<ChartArea>(); }},
        {"IChartArea", [] { return make<IChartArea>(); }},
        {"BarPlotter", [] { return make<BarPlotter>(); }},
        {"BarPlotterDx", [] { return make<BarPlotterDx>(); }},
        {"AreaPlotter", [] { return make<AreaPlotter>(); }},
        {"BarDecorator", [] { return make<BarDecorator>(); }},
        {"Filter1D", [] { return make<Filter1D>(); }},
        {"DecimatorU64", [] { return make<DecimatorU64>(); }},
        {"RandomU64Data", makeSource},
        {"MovingAvarangeU64", [] { return make<MovingAvarangeU64>(); }},
        {"FixedDecimatorU64", [] { return make<FixedDecimatorU64>(); }},
        {"FixedDecimator2D", [] { return make<FixedDecimator2D>(); }},
        {"MinimalWidth2D", [] { return make<MinimalWidth2D>(); }},
        {"SCSVReader", [] { return make<SCSVReader>(); }},
    };
    for (const SKind &kind : kinds) {
        if (type == kind.name)
            return kind.make();
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
