// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/TextLines.h"

// What else the sample of a text tells; for detectLayout().

/// Finds the names and units of the columns in the lines in front of line `first`, and whether there are sections.
void lookAtHead(STextLayout &layout, const SampleLines &lines, int first);

/// Finds out which columns are times, where they count from, and whether the first one ascends. Lines [first, behind)
/// are the block of numbers.
void lookAtTimes(STextLayout &layout, const SampleLines &lines, int first, int behind);

/// Finds out whether the first column may be x. Whether it is, the lines can't tell: that's for people to say.
void lookForX(STextLayout &layout, const SampleLines &lines, int first, int behind);

/// Whether commas divide the digits of the numbers by threes, beyond doubt: 1,234,567 and 12,345.6, one in a line.
bool haveThousands(const SampleLines &lines);

/// What the commas in the lines stand for if they are all that is between digits.
struct SCommas
{
    bool areDecimal = false;
    QString remark; ///< said if there was a doubt
};

SCommas meaningOfCommas(const SampleLines &lines, const std::vector<SLineShape> &shapes);
