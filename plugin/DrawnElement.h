// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartArea.h"
#include "chart/IChartArea.h"
#include "plotters/AreaPlotter.h"
#include "plotters/BarDecorator.h"
#include "plotters/BarPlotter.h"
#include "plotters/BarPlotterDx.h"

#include <qqml.h>

// What the QML engine makes of the types that the render thread works with. It is the most derived class, and the only
// one that can take the object out of the render thread's reach before the first destructor changes what virtual calls
// mean. Otherwise as Qt's own: the engine allocates more than the object, so the memory is given back without a size.
#define VORLIX_DRAWN_ELEMENT(T) \
  template <> \
  class QQmlPrivate::QQmlElement<T> final : public T \
  { \
public: \
    ~QQmlElement() override \
    { \
      withdraw(); \
      QQmlPrivate::qdeclarativeelement_destructor(this); \
    } \
    static void operator delete(void *memory) { ::operator delete(memory); } \
    static void operator delete(void *, void *) {} \
  }

VORLIX_DRAWN_ELEMENT(ChartArea);
VORLIX_DRAWN_ELEMENT(IChartArea);
VORLIX_DRAWN_ELEMENT(BarPlotter);
VORLIX_DRAWN_ELEMENT(BarPlotterDx);
VORLIX_DRAWN_ELEMENT(AreaPlotter);
VORLIX_DRAWN_ELEMENT(BarDecorator);

#undef VORLIX_DRAWN_ELEMENT
