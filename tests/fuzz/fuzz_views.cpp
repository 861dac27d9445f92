// SPDX-License-Identifier: MIT

// Views, series, stores, axes and what else belongs to plots, made, linked, fed, painted, mistreated and destroyed at
// random. There is nothing to compare: nothing may crash, hang or leak.

#include "fuzz/Bytes.h"
#include "stress/PlotCast.h"
#include "views/items/AreaSeries.h"
#include "views/items/BarSeries.h"
#include "views/items/LineSeries.h"
#include "views/items/LogValueAxis.h"
#include "views/items/OverviewStrip.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotPicture.h"
#include "views/items/PlotRegion.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/ValueAxis.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>

namespace {

template <class T>
QObject *make()
{
    return new T;
}

QObject *makeObject(const QByteArray &type)
{
    struct SMaker
    {
        const char *name;
        QObject *(*make)();
    };
    static const SMaker makers[] = {
        {"PlotView", make<PlotView>},         {"BarSeries", make<BarSeries>},         {"LineSeries", make<LineSeries>},
        {"AreaSeries", make<AreaSeries>},     {"SeriesStore", make<SeriesStore>},     {"ValueAxis", make<ValueAxis>},
        {"LogValueAxis", make<LogValueAxis>}, {"PlotTheme", make<PlotTheme>},         {"PlotCursor", make<PlotCursor>},
        {"PlotRegion", make<PlotRegion>},     {"OverviewStrip", make<OverviewStrip>},
    };
    for (const SMaker &maker : makers) {
        if (type != maker.name)
            continue;
        QObject *const object = maker.make();
        if (auto *item = qobject_cast<QQuickItem *>(object))
            item->setSize(QSizeF(90.0, 70.0));
        return object;
    }
    return nullptr;
}

void paint(PlotCast &cast)
{
    QString error;
    if (auto *view = qobject_cast<PlotView *>(cast.any("PlotView")); view && view->width() < 1000.0)
        pictureOf(*view, 1.3, error);
}

void play(PlotCast &cast, Bytes &bytes)
{
    switch (bytes.below(14)) {
    case 0:
        cast.add(PlotCast::types().at(bytes.below(int(PlotCast::types().size()))));
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
        QCoreApplication::processEvents(); // tells of what stores got
        break;
    case 8:
    case 9:
        cast.mistreat();
        break;
    case 10:
        paint(cast);
        break;
    default:
        cast.act();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int argc = 3;
    static const char *argv[] = {"fuzz_views", "-platform", "offscreen", nullptr};
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
    PlotCast cast(chance, makeObject);
    for (int i = 0; i < 8; ++i)
        play(cast, bytes);
    while (!bytes.atEnd())
        play(cast, bytes);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
