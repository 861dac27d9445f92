// SPDX-License-Identifier: MIT
#include "plugin/VorlixExtensionPlugin.h"

#include "chart/ChartArea.h"
#include "filters/DecimatorU64.h"
#include "filters/Filter1D.h"
#include "filters/FixedDecimator2D.h"
#include "filters/FixedDecimatorU64.h"
#include "filters/MinimalWidth2D.h"
#include "filters/MovingAvarangeU64.h"
#include "plotters/AreaPlotter.h"
#include "plotters/BarDecorator.h"
#include "plotters/BarPlotter.h"
#include "plotters/BarPlotterDx.h"
#include "plotters/SAreaGradientProgram.h"
#include "plotters/SAreaPlotterProgram.h"
#include "plotters/SHResBarProgram.h"
#include "plotters/ShaderProgramRegistry.h"
#include "plugin/TypeList.h"
#include "plugin/TypeRegistration.h"
#include "sources/RandomU64Data.h"
#include "sources/SCSVReader.h"

#include <QDebug>

#include <new>

#define VORLIX_NOT_AGAIN(kind, name, Class) // an alias: the class has its element
#define VORLIX_ELEMENT(kind, Class) VORLIX_WITHDRAWING_ELEMENT(Class)
VORLIX_TYPES(VORLIX_ELEMENT, VORLIX_NOT_AGAIN)

namespace {

constexpr char moduleUri[] = "VorlixPlugin";

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
#define VORLIX_REGISTER_TYPE(kind, Class) registerType<Class>(moduleUri, #Class);
#define VORLIX_REGISTER_ALIAS(kind, name, Class) registerType<Class>(moduleUri, #name);
    VORLIX_TYPES(VORLIX_REGISTER_TYPE, VORLIX_REGISTER_ALIAS)

    registerShaderProgram<SAreaPlotterProgram>();
    registerShaderProgram<SHResBarProgram>();
    registerShaderProgram<SAreaGradientProgram>();
}
