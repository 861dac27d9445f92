// SPDX-License-Identifier: MIT
#pragma once

// Every QML type of the module, in the order of registration: TYPE(kind, Class), or ALIAS(kind, name, Class) for a
// second name of a class. A kind says what a type is for: an Area to draw on, a Plotter that draws, a Node that holds a
// series.
//
// The plugin registers what stands here, and the tests that try every type read it, too: a type is tried everywhere
// from the line on that adds it.
#define VORLIX_TYPES(TYPE, ALIAS) \
  TYPE(Area, ChartArea) \
  TYPE(Area, IChartArea) \
  TYPE(Plotter, BarPlotter) \
  TYPE(Plotter, BarPlotterDx) \
  TYPE(Plotter, AreaPlotter) \
  TYPE(Plotter, BarDecorator) \
  ALIAS(Node, IFIlterU64, Filter1D) /* Deliberate: spelled so. */ \
  TYPE(Node, DecimatorU64) \
  TYPE(Node, RandomU64Data) \
  TYPE(Node, MovingAvarangeU64) \
  TYPE(Node, FixedDecimatorU64) \
  TYPE(Node, Filter1D) \
  TYPE(Node, FixedDecimator2D) \
  TYPE(Node, MinimalWidth2D) \
  TYPE(Node, SCSVReader)

enum class TypeKind { Area, Plotter, Node };

struct STypeName
{
    TypeKind kind;
    const char *name;
};

#define VORLIX_TYPE_NAME(kind, Class) {TypeKind::kind, #Class},
#define VORLIX_ALIAS_NAME(kind, name, Class) {TypeKind::kind, #name},
constexpr STypeName typeNames[] = {VORLIX_TYPES(VORLIX_TYPE_NAME, VORLIX_ALIAS_NAME)};
#undef VORLIX_TYPE_NAME
#undef VORLIX_ALIAS_NAME
