// SPDX-License-Identifier: MIT

// Areas, plotters and nodes that are made, linked, fed, mistreated and destroyed at random through the meta-object
// system. There is nothing to compare: nothing may crash, hang or leak.

#include "chart/ChartArea.h"
#include "filters/DecimatorU64.h"
#include "filters/FixedDecimator2D.h"
#include "filters/FixedDecimatorU64.h"
#include "filters/MinimalWidth2D.h"
#include "filters/MovingAvarangeU64.h"
#include "fuzz/TroupeTarget.h"
#include "plotters/AreaPlotter.h"
#include "plotters/BarDecorator.h"
#include "plotters/BarPlotter.h"
#include "plotters/BarPlotterDx.h"
#include "plugin/TypeList.h"
#include "sources/RandomU64Data.h"
#include "sources/SCSVReader.h"
#include "stress/Cast.h"

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
    const int deed = bytes.below(12);
    if (playCommon(cast, deed))
        return;
    if (deed == 0)
        cast.add(types.at(bytes.below(types.size())));
    else if (deed <= 8)
        cast.mistreat();
    else
        cast.act();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    beQuietApplication("fuzz_trees");
    playAll<Cast>(data, size, makeObject, play);
    return 0;
}
