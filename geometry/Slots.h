// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

// Arithmetic of n equal slots that divide a rectangle from left to right. Free of state: any thread.

/// The slot under x; -1 for no slots, a NaN, or when (x, 0) lies outside `extent`; `count` on the right edge.
int slotAt(const QRectF &extent, int count, double x);

/// The first slot that `area` touches; 0 if `area` ends at or before extent.left(), or without slots.
int firstSlot(const QRectF &extent, int count, const QRectF &area);

/// One past the last slot that `area` touches, at most `count`; `count` for an area to the right of both edges.
int endSlot(const QRectF &extent, int count, const QRectF &area);
