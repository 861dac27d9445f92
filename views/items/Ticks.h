// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisMapping.h"

#include <QVector>

// Where an axis gets its ticks. Plain arithmetic, any thread. The step follows from the zoom alone (values a pixel),
// never from where the view stands, so that ticks move with the data when the view is panned. A mapping that isn't
// valid gets no ticks, and there are never more than maximalTickCount of a kind.

constexpr int maximalTickCount = 1000;

/// What the owner of an axis asks for.
struct STickWish
{
    double pixels = 80.0;  ///< the least distance of two major ticks
    double interval = 0.0; ///< the distance in values; 0, negative or NaN: chosen
    int subTicks = 0;      ///< minor ticks between two major ones
};

struct STicks
{
    QVector<double> major; ///< ascending
    QVector<double> minor; ///< ascending, without the major ones
    double step = 0.0;     ///< the distance of major ticks; 0 on a log scale, where it differs
};

/// The smallest of 1, 2, 5, 10, 20… (and 0.5, 0.2…) that is at least `least`. 0 if that isn't a positive number.
double roundStep(double least);

/// Multiples of a round step, or of the wanted interval: one that would crowd the ticks is taken 2, 5, 10… times.
STicks linearTicks(const AxisMapping &mapping, const STickWish &wish);

/// Whole powers of ten; every second, third… of them where they would crowd; 2 and 5, and then finer steps, where there
/// is room. The minor ticks are the whole multiples of each power, except the major ones.
STicks logTicks(const AxisMapping &mapping, const STickWish &wish);
