// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisMapping.h"

#include <QString>
#include <QVector>

// Ticks of an axis that counts seconds from a moment, in steps of the calendar: 1, 2, 5, 10, 15, 30 seconds and
// minutes, hours, days, months, years. Everything is UTC. Plain arithmetic, any thread.

enum class TimeUnit { Second, Day, Month, Year };

/// A step of the calendar. For TimeUnit::Second, `count` may be a fraction, and minutes and hours are counted in
/// seconds.
struct STimeStep
{
    TimeUnit unit = TimeUnit::Second;
    double count = 0.0;

    /// Its length, where months and years have their mean length; 0: no step.
    double seconds() const;
};

/// What labels take: the width of a digit and the gap between two labels, in pixels.
struct SLabelSpace
{
    double digit = 7.0;
    double gap = 16.0;
};

/// Whether all values from one to the other are moments that a calendar knows: up to some 31,000 years from 1970.
/// @param startTime seconds since 1970 at value 0
bool areInTime(double from, double to, double startTime);

/// The smallest step of the calendar whose labels have room. No step if the mapping isn't valid or reaches beyond
/// calendars.
/// @param startTime seconds since 1970 at value 0
STimeStep timeStep(const AxisMapping &mapping, double startTime, const SLabelSpace &space);

/// The same for a wanted interval in seconds: the step of the calendar that comes closest from above, or a coarser one
/// with room.
STimeStep timeStepFor(double interval, const AxisMapping &mapping, double startTime, const SLabelSpace &space);

/// The values at which such steps begin, ascending, maximalTickCount at most. Steps of days and less begin at midnight.
QVector<double> timeTicks(const AxisMapping &mapping, double startTime, const STimeStep &step);

/// The moment of a value in as many parts as the step needs: a year, a month, a day; or hours and minutes, at midnight
/// the day.
QString timeLabel(double value, double startTime, const STimeStep &step);

/// The moment of a value from the year on, down to what a pixel shows: `resolution` is in seconds.
QString fullTime(double value, double startTime, double resolution);

/// The moment in a format of QDateTime, such as "hh:mm:ss.zzz". Empty if there is no such moment.
QString formattedTime(double value, double startTime, const QString &format);
