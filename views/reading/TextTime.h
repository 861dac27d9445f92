// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/TextNumber.h"

#include <QtGlobal>

/// A moment, to the nanosecond: doubles that count from 1970 keep only a quarter of a microsecond.
struct SMoment
{
    qint64 seconds = 0; ///< since the beginning of 1970, UTC
    qint32 nanoseconds = 0;
    bool zoned = false; ///< whether the text says its zone; without one it's taken as UTC
};

/// Reads an ISO 8601 date, or date and time, with or without zone, with a "T" or a blank between: 2026-01-31,
/// 2026-01-31T09:30, 2026-01-31 09:30:15.25+01:00. False if the text is something else.
bool isoMomentIn(const char *text, const char *end, SMoment &moment);

/// Reads a plain number of seconds since 1970 (`perSecond` 1) or of milliseconds (1000).
bool epochMomentIn(const char *text, const char *end, DecimalSign sign, int perSecond, SMoment &moment);

/// Seconds from `origin`, a count of seconds since 1970, to the moment.
double secondsSince(qint64 origin, const SMoment &moment);
