// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

// Arithmetic of n equal slots that divide a rectangle from left to right. Free of state: any thread.

/// The slot under x; -1 for no slots, a NaN, or when (x, 0) lies outside `extent`; `count` on the right edge.
int slotAt(const QRectF &extent, int count, double x);

/// The first slot that `area` touches, counted from extent.left(); 0 if `area` lies to the left of both edges, or
/// without slots. In an extent of negative width this is the slot under the left end of what they share, which is the
/// last one.
int firstSlot(const QRectF &extent, int count, const QRectF &area);

/// One past the last slot that `area` touches, at most `count`; `count` for an area to the right of both edges.
int endSlot(const QRectF &extent, int count, const QRectF &area);
