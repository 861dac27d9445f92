// SPDX-License-Identifier: MIT
#pragma once

struct STextBlock;

/// Writes the value of each line of a block, from `values` on. False when what a line means is not known before the
/// whole text is read in text mode. Any thread.
bool convertLines(const STextBlock &block, double *values);
