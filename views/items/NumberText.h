// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SampleType.h"

/// Enough for any number.
constexpr int longestNumberText = 32;

/// Writes a number to `text`, in the fewest digits from which a value of this type is read back bit by bit, whatever
/// the locale; nothing for what isn't finite. Returns where the text ends. Any thread.
char *writeNumber(char *text, double value, SampleType type);
