// SPDX-License-Identifier: MIT
#include "views/plugin/ViewsPlugin.h"

#include "views/items/AreaSeries.h"
#include "views/items/BarSeries.h"
#include "views/items/LineSeries.h"
#include "views/items/LogValueAxis.h"
#include "views/items/OverviewStrip.h"
#include "views/items/PlotCursor.h"
#include "views/items/PlotRegion.h"
#include "views/items/PlotStack.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/ValueAxis.h"
#include "views/reading/SeriesReader.h"
#include "views/store/MovingAverage.h"
#include "views/store/SeriesDifference.h"
#include "views/store/SeriesStore.h"

#include <QDebug>
#include <QJSEngine>
#include <qqml.h>

namespace {

constexpr char moduleUri[] = "VorlixPlugin.Views";

template <class T>
void registerType(const char *name)
{
    qmlRegisterType<T>(moduleUri, 1, 0, name);
}

/// A type that QML knows but can't make.
template <class T>
void registerBase(const char *name)
{
    qmlRegisterUncreatableType<T>(moduleUri, 1, 0, name,
                                  QStringLiteral("%1 is what other types have in common").arg(QLatin1String(name)));
}

/// What a store doesn't take is an exception of the script that handed it over.
void throwInScript(const QObject *store, const QString &words)
{
    if (QJSEngine *engine = qjsEngine(store))
        engine->throwError(QJSValue::TypeError, words);
    else
        qWarning().noquote() << store << words;
}

} // namespace

void ViewsPlugin::registerTypes(const char *)
{
    SeriesStore::setRefusal(throwInScript);
    registerBase<PlotAxis>("PlotAxis");
    registerBase<PlotSeries>("PlotSeries");
    registerType<SeriesStore>("SeriesStore");
    registerType<SeriesReader>("SeriesReader");
    registerType<MovingAverage>("MovingAverage");
    registerType<SeriesDifference>("SeriesDifference");
    registerType<OverviewStrip>("OverviewStrip");
    registerType<PlotCursor>("PlotCursor");
    registerType<PlotRegion>("PlotRegion");
    registerType<PlotStack>("PlotStack");
    registerType<PlotTheme>("PlotTheme");
    registerType<PlotView>("PlotView");
    registerType<BarSeries>("BarSeries");
    registerType<LineSeries>("LineSeries");
    registerType<AreaSeries>("AreaSeries");
    registerType<ValueAxis>("ValueAxis");
    registerType<LogValueAxis>("LogValueAxis");
    for (const char *name : {"FieldPanel", "FileDifference", "FileSeries", "ReaderPanel"})
        qmlRegisterType(QUrl(QStringLiteral("qrc:/VorlixPlugin/Views/%1.qml").arg(QLatin1String(name))), moduleUri, 1,
                        0, name);
}
