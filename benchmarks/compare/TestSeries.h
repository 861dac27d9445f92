// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

// The series that every contender draws, and what has to be seen on the screen then.
//
// High stretches (0.75 to 1.0) and low ones (0.0 to 0.2) alternate towards the middle so that every zoom step and every
// replacement turns high into low at the two places where the screen is probed: a picture of the state before never
// passes for the new one.

/// A part of the series: both ends as fractions of its length.
struct SView
{
    double from = 0.0;
    double to = 1.0;
};

/// Values in 0.0 to 1.0, the largest close to 1.0. `phase` is 0 or 1; each is the other's opposite.
QVector<double> testSeries(int count, int phase);

/// Zooming in on the middle: step 0 shows everything, each further one seven tenths of what the step before showed,
/// down to some 60 of `count` values.
int zoomSteps(int count);
SView zoomView(int step);

/// Whether the left probe must be high at `step`; the right one is the opposite.
bool leftIsHigh(int step, int phase);

/// Where the probes are, as fractions of the plot: from the left, and mirrored from the right.
constexpr double probeLeft = 0.205;
constexpr double probeRight = 0.235;
/// The height between which a high stretch leaves ink and a low one none, from 0.0 to 1.0 of the largest value.
constexpr double probeBottom = 0.30;
constexpr double probeTop = 1.03;
/// The axis from 0 to the top of the plot.
constexpr double plotTop = 1.05;
