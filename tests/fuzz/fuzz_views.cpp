// SPDX-License-Identifier: MIT

// Views, series, stores, axes and what else belongs to plots, made, linked, fed, painted, mistreated and destroyed at
// random. There is nothing to compare: nothing may crash, hang or leak.

#include "fuzz/TroupeTarget.h"
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
    const int deed = bytes.below(14);
    if (playCommon(cast, deed))
        return;
    if (deed == 0)
        cast.add(PlotCast::types().at(bytes.below(int(PlotCast::types().size()))));
    else if (deed == 7)
        QCoreApplication::processEvents(); // tells of what stores got
    else if (deed <= 9)
        cast.mistreat();
    else if (deed == 10)
        paint(cast);
    else
        cast.act();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    beQuietApplication("fuzz_views");
    playAll<PlotCast>(data, size, makeObject, play);
    return 0;
}
