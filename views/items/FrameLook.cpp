// SPDX-License-Identifier: MIT
#include "views/items/FrameLook.h"

#include "views/items/AxisLook.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotFrame.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace {

class FrameBuilder
{
public:
    FrameBuilder(const PlotView &view, const SPlotGround &ground)
        : m_view(view),
          m_ground(ground),
          m_area(ground.plotArea),
          m_metrics(view.theme()->font())
    {
    }

    SFrameLook build()
    {
        addX();
        addY();
        addTitles();
        return m_look;
    }

private:
    double digit() const { return m_metrics.horizontalAdvance(QLatin1Char('0')); }
    double row() const { return std::ceil(m_metrics.height()) + rowGap; }

    /// The first whole device pixel of a line at `pixels` that ends at `end` or before.
    double snapped(double pixels, double end) const
    {
        return std::min(std::floor(pixels * m_ground.ratio + 1e-6) / m_ground.ratio, end - m_ground.line);
    }
    QRectF upright(double x, double top, double bottom) const
    {
        return {snapped(x, m_area.right()), top, m_ground.line, bottom - top};
    }
    QRectF level(double y, double left, double right) const
    {
        return {left, snapped(y, m_area.bottom()), right - left, m_ground.line};
    }

    double distanceOfX(const PlotAxis &axis, const AxisMapping &mapping, const SLabelSpace &space) const;
    void addX();
    void addY();
    void addTitles();

    const PlotView &m_view;
    const SPlotGround &m_ground;
    const QRectF m_area;
    const QFontMetricsF m_metrics;
    SFrameLook m_look;
};

/// The least distance of two labels of x. An interval that's wished for is kept as long as its own labels have room.
double FrameBuilder::distanceOfX(const PlotAxis &axis, const AxisMapping &mapping, const SLabelSpace &space) const
{
    if (!(axis.tickInterval() > 0.0))
        return digit() * (labelDigits + 2);
    double widest = digit();
    for (const STickLabel &label : axisLook(axis, mapping, space.gap, space).labels)
        widest = std::max(widest, m_metrics.horizontalAdvance(label.text));
    return widest + digit();
}

void FrameBuilder::addX()
{
    const PlotAxis &axis = *m_view.axisX();
    const bool hasLabels = m_view.frame()->hasLabelsOfX();
    const SLabelSpace space{digit(), digit() * 2.0};
    const AxisMapping mapping = axis.mapping(m_area.left(), m_area.right());
    const SAxisLook look = axisLook(axis, mapping, distanceOfX(axis, mapping, space), space);
    double free = -1e9; // a format by hand may give longer labels: then some are left out
    for (const STickLabel &tick : look.labels) {
        if (axis.gridVisible())
            m_look.grid.append(upright(tick.pixels, m_area.top(), m_area.bottom()));
        const double half = m_metrics.horizontalAdvance(tick.text) * 0.5;
        if (!hasLabels || tick.pixels - half < free)
            continue;
        free = tick.pixels + half + digit();
        m_look.axes.append(upright(tick.pixels, m_area.bottom(), m_area.bottom() + tickLength));
        m_look.texts.append({tick.text, {tick.pixels, m_area.bottom() + tickLength + labelGap}, SLabel::Top});
    }
    for (const double pixels : look.minor) {
        if (axis.gridVisible() && axis.isLog())
            m_look.minorGrid.append(upright(pixels, m_area.top(), m_area.bottom()));
        if (hasLabels)
            m_look.axes.append(upright(pixels, m_area.bottom(), m_area.bottom() + tickLength * 0.5));
    }
    const double titleTop = m_area.bottom() + tickLength + labelGap + row();
    if (hasLabels && !look.base.isEmpty())
        m_look.texts.append({look.base, {m_area.right(), titleTop + m_metrics.height() * 0.5}, SLabel::Right});
    m_look.axes.append(level(m_area.bottom(), m_area.left(), m_area.right()));
}

void FrameBuilder::addY()
{
    const PlotAxis &axis = *m_view.axisY();
    const SLabelSpace space{m_metrics.height(), m_metrics.height()};
    const AxisMapping mapping = axis.mapping(m_area.bottom(), m_area.top());
    const SAxisLook look = axisLook(axis, mapping, labelDistance(axis, m_area.height(), m_metrics.height()), space);
    for (const STickLabel &tick : look.labels) {
        if (axis.gridVisible())
            m_look.grid.append(level(tick.pixels, m_area.left(), m_area.right()));
        if (!axis.labelsVisible())
            continue;
        m_look.axes.append(level(tick.pixels, m_area.left() - tickLength, m_area.left()));
        m_look.texts.append({tick.text, {m_area.left() - tickLength - labelGap, tick.pixels}, SLabel::Right});
    }
    for (const double pixels : look.minor) {
        if (axis.gridVisible() && axis.isLog())
            m_look.minorGrid.append(level(pixels, m_area.left(), m_area.right()));
        if (axis.labelsVisible())
            m_look.axes.append(level(pixels, m_area.left() - tickLength * 0.5, m_area.left()));
    }
    if (axis.labelsVisible() && !look.base.isEmpty()) {
        const double y = m_area.top() - m_metrics.height() * 0.5 - rowGap;
        m_look.texts.append({look.base, {std::min(frameEdge, m_area.left()), y}, SLabel::Left});
    }
    m_look.axes.append(upright(m_area.left(), m_area.top(), m_area.bottom()));
}

void FrameBuilder::addTitles()
{
    const QString below = m_view.frame()->headingOfX();
    if (!below.isEmpty()) {
        const double labels = m_view.frame()->hasLabelsOfX() ? tickLength + labelGap + row() : rowGap;
        m_look.texts.append({below, {m_area.center().x(), m_area.bottom() + labels}, SLabel::Top});
    }
    const QString beside = m_view.axisY()->heading();
    if (!beside.isEmpty())
        m_look.texts.append({beside, {frameEdge + row() * 0.5, m_area.center().y()}, SLabel::CentreUpwards});
    if (!m_view.title().isEmpty())
        m_look.texts.append({m_view.title(), {m_area.center().x(), frameEdge + row() * 0.5}, SLabel::Centre});
}

} // namespace

double labelDistance(const PlotAxis &axis, double height, double row)
{
    constexpr double wanted = 6.0; // labels
    constexpr double leastRows = 1.2;
    constexpr double mostRows = 2.6;
    if (axis.tickInterval() > 0.0)
        return leastRows * row;
    return std::clamp(height / wanted, leastRows * row, mostRows * row);
}

SFrameLook frameLook(const PlotView &view, const SPlotGround &ground)
{
    return ground.plotArea.isEmpty() ? SFrameLook() : FrameBuilder(view, ground).build();
}
