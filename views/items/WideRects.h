// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/PixelRects.h"

/// The same pixels as `rects`, which come from left to right, in rectangles as wide as they can be: what neighbours
/// have in common becomes one rectangle, and what they have above and below it some small ones. Like `rects` they don't
/// overlap. A rasteriser marks squares of pixels at once, and of a column that is one pixel wide most of each is
/// wasted. Any thread.
void makeWide(const std::vector<SPixelRect> &rects, std::vector<SPixelRect> &wide);
