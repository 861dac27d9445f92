// SPDX-License-Identifier: MIT
#include "plugin/VorlixExtensionPlugin.h"

#include "filters/DecimatorU64.h"
#include "filters/Filter1D.h"
#include "filters/FixedDecimator2D.h"
#include "filters/FixedDecimatorU64.h"
#include "filters/MinimalWidth2D.h"
#include "filters/MovingAvarangeU64.h"
#include "plotters/SAreaGradientProgram.h"
#include "plotters/SAreaPlotterProgram.h"
#include "plotters/SHResBarProgram.h"
#include "plotters/ShaderProgramRegistry.h"
#include "plugin/DrawnElement.h"
#include "sources/RandomU64Data.h"
#include "sources/SCSVReader.h"

#include <QDebug>

#include <qqml.h>

#include <new>

namespace {

constexpr char moduleUri[] = "VorlixPlugin";

template <class T>
void registerType(const char *name)
{
    qmlRegisterType<T>(moduleUri, 1, 0, name);
}

template <class Definition>
void registerShaderProgram()
{
    // One for the process, however many engines register: the registry keeps its first and frees no other.
    static auto *const definition = new (std::nothrow) Definition;
    if (definition)
        ShaderProgramRegistry::instance().registerProgram(definition);
    else
        qCritical() << "Cannot register program shader";
}

} // namespace

void VorlixExtensionPlugin::registerTypes(const char *)
{
    registerType<ChartArea>("ChartArea");
    registerType<IChartArea>("IChartArea");
    registerType<BarPlotter>("BarPlotter");
    registerType<BarPlotterDx>("BarPlotterDx");
    registerType<AreaPlotter>("AreaPlotter");
    registerType<BarDecorator>("BarDecorator");
    registerType<Filter1D>("IFIlterU64"); // Deliberate: a second name of Filter1D, spelled so.
    registerType<DecimatorU64>("DecimatorU64");
    registerType<RandomU64Data>("RandomU64Data");
    registerType<MovingAvarangeU64>("MovingAvarangeU64");
    registerType<FixedDecimatorU64>("FixedDecimatorU64");
    registerType<Filter1D>("Filter1D");
    registerType<FixedDecimator2D>("FixedDecimator2D");
    registerType<MinimalWidth2D>("MinimalWidth2D");
    registerType<SCSVReader>("SCSVReader");

    registerShaderProgram<SAreaPlotterProgram>();
    registerShaderProgram<SHResBarProgram>();
    registerShaderProgram<SAreaGradientProgram>();
}
