// SPDX-License-Identifier: MIT
#include "plotters/BarDecorator.h"

#include "chart/IChartArea.h"
#include "common/Change.h"

#include <QPointer>

#include <cmath>

namespace {

constexpr int fadeIntervalMs = 20;

/// Per rectangle (x, y) to (right, bottom) with corners in the order of uploadPoints().
QVector<uint> quadIndices(int quads)
{
    QVector<uint> indices;
    indices.reserve(6 * quads);
    for (uint corner = 0; corner < 4u * uint(quads); corner += 4)
        indices << corner + 1 << corner + 2 << corner << corner + 1 << corner + 2 << corner + 3;
    return indices;
}

QVariantMap describe(const IPlotter &plotter, const SInfoPoint &info)
{
    return {{QStringLiteral("rect"), info.area},
            {QStringLiteral("plotter"), info.plotter != nullptr},
            {QStringLiteral("name"), plotter.name()},
            {QStringLiteral("color"), plotter.color()}};
}

} // namespace

BarDecorator::BarDecorator(QObject *parent) : IPlotter(parent), m_indices(quadIndices(HighlightTrail::maximum))
{
    m_color = QColor(255, 255, 255, 70);
    m_fadeTimer.setInterval(fadeIntervalMs);
    connect(&m_fadeTimer, &QTimer::timeout, this, &BarDecorator::fade);
    m_fadeTimer.start();
}

BarDecorator::~BarDecorator()
{
    withdraw();
}

void BarDecorator::setMouseX(double mouseX)
{
    if (change(m_mouseX, mouseX))
        queryHover();
}

void BarDecorator::setMouseY(double mouseY)
{
    if (change(m_mouseY, mouseY))
        queryHover();
}

void BarDecorator::setActive(bool active)
{
    if (!change(m_active, active))
        return;
    m_hovered.clear();
    const bool released = !active && m_trail.push(QRectF(), QTime::currentTime());
    if (released) {
        m_uploadFlags |= vertexDataDirty;
        emitAndRequestUpdate(static_cast<Signal>(&BarDecorator::activeChanged));
    } else {
        emit activeChanged();
    }
}

// the plotters that are asked

void BarDecorator::setPlotters(const QList<IPlotter *> &plotters)
{
    const QList<IPlotter *> before = m_plotters.items();
    m_plotters.clear();
    for (IPlotter *plotter : plotters)
        m_plotters.append(plotter);
    if (m_plotters.items() != before)
        announcePlotters();
}

void BarDecorator::addPlotter(IPlotter *newPlotter)
{
    if (m_plotters.append(newPlotter))
        announcePlotters();
}

void BarDecorator::removePlotter(IPlotter *newPlotter)
{
    if (m_plotters.remove(newPlotter))
        announcePlotters();
}

void BarDecorator::removeAllPlotter()
{
    if (m_plotters.items().isEmpty())
        return;
    m_plotters.clear();
    announcePlotters();
}

void BarDecorator::announcePlotters()
{
    const QPointer<BarDecorator> alive(this);
    emit plottersChanged();
    if (alive)
        queryHover();
}

// hovering

bool BarDecorator::mapMouseToData(QPointF &point) const
{
    const IChartArea &area = *chartArea();
    if (!(area.width() > 0.0) || !(area.height() > 0.0))
        return false;
    const QRectF &shown = area.viewRect();
    point.setX(shown.left() + shown.width() * (m_mouseX / area.width()));
    point.setY(shown.top() + shown.height() * (1.0 - m_mouseY / area.height()));
    return !std::isnan(point.x()) && !std::isnan(point.y());
}

void BarDecorator::queryHover()
{
    if (!chartArea() || !m_active)
        return;
    QVariantList hovered;
    QVector<QRectF> rects;
    QPointF point;
    if (mapMouseToData(point)) {
        m_plotters.sort([](const IPlotter *a, const IPlotter *b) { return a->zOrder() < b->zOrder(); });
        for (const IPlotter *plotter : m_plotters.items()) {
            if (!plotter->visible())
                continue;
            const SInfoPoint info = plotter->mouse_hovering(point);
            if (!info.valid)
                continue;
            hovered.append(describe(*plotter, info));
            rects.append(info.area);
        }
    }
    const bool pushed = highlight(rects);
    const QPointer<BarDecorator> alive(this);
    if (change(m_infoMap, hovered))
        emit infoMapChanged();
    if (alive && pushed)
        requestUpdate();
}

bool BarDecorator::highlight(const QVector<QRectF> &hovered)
{
    const QTime now = QTime::currentTime();
    bool pushed = false;
    for (const QRectF &rect : hovered) {
        if (!containsRect(m_hovered, rect))
            pushed |= m_trail.push(rect, now);
    }
    // What stays hovered is not pushed again, unless the mouse has left what was highlighted instead.
    if (!hovered.isEmpty() && !containsRect(hovered, m_trail.newest()))
        pushed |= m_trail.push(hovered.last(), now);
    m_hovered = hovered;
    if (pushed)
        m_uploadFlags |= vertexDataDirty;
    return pushed;
}

void BarDecorator::fade()
{
    if (m_trail.isFading()) {
        m_trail.expire(QTime::currentTime());
        m_settling.start();
    }
    if (!m_settling.isValid())
        return;
    // Requests that come too soon are dropped, and nothing else would ask for the frame without the faded rest.
    const bool isAccepted = chartArea() && m_settling.elapsed() >= qint64(chartArea()->updateIntervalMs());
    if (!m_trail.isFading() && (isAccepted || !chartArea()))
        m_settling.invalidate();
    requestUpdate();
}
