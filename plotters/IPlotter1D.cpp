// SPDX-License-Identifier: MIT
#include "plotters/IPlotter1D.h"

#include "common/BlockMaxima.h"
#include "geometry/Slots.h"

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

void IPlotter1D::keepMaxima(const BlockMaxima &maxima)
{
    m_maxima = std::make_shared<const BlockMaxima>(maxima);
}

const BlockMaxima &IPlotter1D::maxima() const
{
    if (!m_maxima || !m_maxima->isOf(m_data))
        m_maxima = std::make_shared<const BlockMaxima>(BlockMaxima::of(m_data));
    return *m_maxima;
}

double IPlotter1D::max_in(const QRectF &area) const
{
    if (area.intersected(modArea()).isEmpty() || m_data.isEmpty())
        return 0.0;
    const int start = std::max(__start_index(area), 0);
    const int end = std::min(__end_index(area), int(m_data.size()));
    if (start >= end)
        return 0.0;
    // Deliberate: single precision. A running maximum that is rounded each time it is replaced ends at the same number:
    // rounding keeps the order, so what the largest value rounds to is neither passed before nor after it.
    return double(float(maxima().maximumIn(start, end)));
}

QRectF IPlotter1D::slotRect(int index) const
{
    const QRectF extent = modArea();
    const double width = extent.width() / m_data.size();
    return {extent.left() + index * width, 0.0, width, m_data.at(index)};
}

SInfoPoint IPlotter1D::mouse_hovering(const QPointF &point) const
{
    SInfoPoint info;
    info.plotter = const_cast<IPlotter1D *>(this);
    const int index = _index_at(point.x());
    if (index < 0 || index >= m_data.size())
        return info;
    info.index = index;
    const QRectF rect = slotRect(index);
    if (point.y() > rect.height()) // Deliberate: a hit on a NaN, which nothing is greater than.
        return info;
    info.area = rect;
    info.valid = true;
    return info;
}
