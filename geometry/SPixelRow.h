// SPDX-License-Identifier: MIT
#pragma once

/// The pixels across a framebuffer and the bits of the grid within each.
struct SPixelRow
{
    int count = 0;
    int subPixelBits = 0;
    bool centresDecide = true; ///< whether an element leaves a mark only where it covers the centre of a pixel
};
