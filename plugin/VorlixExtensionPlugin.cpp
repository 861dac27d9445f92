// SPDX-License-Identifier: MIT
#include "plugin/VorlixExtensionPlugin.h"

#include "chart/ChartArea.h"
#include "chart/IChartArea.h"
#include "filters/Filter1D.h"
#include "plotters/BarPlotter.h"
#include "plotters/ShaderProgramRegistry.h"
#include "sources/SCSVReader.h"

#include <qqml.h>

namespace {

constexpr char moduleUri[] = "VorlixPlugin";

template <class T>
void registerType(const char *name)
{
    qmlRegisterType<T>(moduleUri, 1, 0, name);
}

} // namespace

void VorlixExtensionPlugin::registerTypes(const char *)
{
    registerType<ChartArea>("ChartArea");
    registerType<IChartArea>("IChartArea");
    registerType<BarPlotter>("BarPlotter");
    registerType<Filter1D>("IFIlterU64"); // Deliberate: a second name of Filter1D, spelled so.
    registerType<Filter1D>("Filter1D");
    registerType<SCSVReader>("SCSVReader");
}
