// SPDX-License-Identifier: MIT
#include "tests/support/ProbePlotter.h"

ProbePlotter::~ProbePlotter()
{
    withdraw();
}

void ProbePlotter::sync_buffers()
{
    ++m_syncs;
    if (onSync)
        onSync();
}

void ProbePlotter::draw(const QRectF &viewArea)
{
    {
        const std::lock_guard lock(m_mutex);
        m_drawnView = viewArea;
    }
    ++m_draws;
    if (onDraw)
        onDraw();
}

double ProbePlotter::max_in(const QRectF &area) const
{
    ++m_queries;
    m_queriedArea = area;
    return maximum ? maximum(area) : IPlotter1D::max_in(area);
}

QRectF ProbePlotter::drawnView() const
{
    const std::lock_guard lock(m_mutex);
    return m_drawnView;
}
