// SPDX-License-Identifier: MIT
#include "geometry/Slots.h"

#include "common/Index.h"

#include <algorithm>
#include <cmath>

int slotAt(const QRectF &extent, int count, double x)
{
    if (count == 0 || !containsOnAxis(extent, x))
        return -1;
    return std::clamp(toIndex(std::floor((x - extent.left()) / (extent.width() / count))), 0, count);
}

int firstSlot(const QRectF &extent, int count, const QRectF &area)
{
    if (count == 0 || area.right() <= std::min(extent.left(), extent.right()))
        return 0;
    const QRectF shown = extent.intersected(area);
    return std::max(toIndex(std::floor((shown.left() - extent.left()) / (extent.width() / count))), 0);
}

int endSlot(const QRectF &extent, int count, const QRectF &area)
{
    if (count == 0)
        return 0;
    if (area.left() >= std::max(extent.left(), extent.right()))
        return count;
    const QRectF shown = extent.intersected(area);
    return std::min(count, toIndex(std::ceil((shown.right() - extent.left()) / (extent.width() / count))));
}
