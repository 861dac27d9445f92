// SPDX-License-Identifier: MIT
#include "plotters/IPlotter1D.h"

#include "plotters/SlotRange.h"

#include <algorithm>

int IPlotter1D::_index_at(double x) const
{
    return slotAt(modArea(), m_data.size(), x);
}

int IPlotter1D::__start_index(const QRectF &area) const
{
    return firstSlot(modArea(), m_data.size(), area);
}

int IPlotter1D::__end_index(const QRectF &area) const
{
    return endSlot(modArea(), m_data.size(), area);
}

double IPlotter1D::max_in(const QRectF &area) const
{
    if (area.intersected(modArea()).isEmpty() || m_data.isEmpty())
        return 0.0;
    const int start = std::max(__start_index(area), 0);
    const int end = std::min(__end_index(area), m_data.size());
    float maximum = 0.0f; // Deliberate: single precision, compared as double.
    for (int i = start; i < end; ++i) {
        if (m_data.at(i) > double(maximum))
            maximum = float(m_data.at(i));
    }
    return double(maximum);
}

SInfoPoint IPlotter1D::mouse_hovering(const QPointF &point) const
{
    SInfoPoint info;
    info.plotter = const_cast<IPlotter1D *>(this);
    const int index = _index_at(point.x());
    if (index < 0 || index >= m_data.size())
        return info;
    info.index = index;
    const double value = m_data.at(index);
    if (!(point.y() <= value)) // above the value; a NaN on either side is a miss
        return info;
    const QRectF extent = modArea();
    const double width = extent.width() / m_data.size();
    info.area = QRectF(extent.left() + index * width, 0.0, width, value);
    info.valid = true;
    return info;
}
