// SPDX-License-Identifier: MIT
#include "views/items/PlotPicture.h"

#include "views/items/OverviewStrip.h"
#include "views/items/PictureBoxes.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotFrame.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"
#include "views/items/RectsNode.h"
#include "views/items/ShapePainter.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr double mostPixels = 32767.0; // to a side: QPainter counts no further
constexpr double textRoom = 20'000.0;  // more than a text takes

/// Places of the view, in item pixels, on whole pixels of the picture.
QRectF onPixels(const QRectF &rect, double scale)
{
    const auto whole = [scale](double place) { return std::round(place * scale) / scale; };
    return {QPointF(whole(rect.left()), whole(rect.top())), QPointF(whole(rect.right()), whole(rect.bottom()))};
}

/// Paints with a painter that is scaled to item pixels; its origin is the corner of the view.
class ViewPainter
{
public:
    ViewPainter(QPainter &painter, const PlotView &view, double scale)
        : m_painter(painter),
          m_view(view),
          m_theme(*view.theme()),
          m_scale(scale),
          m_ground{onPixels(view.plotArea(), scale), scale, std::max(1.0, std::round(scale)) / scale}
    {
        painter.setFont(m_theme.font());
    }

    void paintAll() const
    {
        paintFrame();
        for (const PlotSeries *series : m_view.series()) {
            if (series->isVisible() && !m_ground.plotArea.isEmpty())
                paintSeries(*series);
        }
    }

    void paintMarks() const
    {
        const SMarksLook marks = m_view.marks()->lookOn(m_ground);
        fill(marks.fills, marks.fillColor);
        fill(marks.lines, marks.color);
        write(marks.letters, marks.color);
    }

    void fill(const QVector<QRectF> &rects, const QColor &color) const
    {
        for (const QRectF &rect : rects)
            m_painter.fillRect(rect, color);
    }

private:
    void paintFrame() const
    {
        const SFrameLook look = frameLook(m_view, m_ground);
        QColor faint = m_theme.gridColor();
        faint.setAlphaF(faint.alphaF() * 0.5);
        fill({QRectF(QPointF(), m_view.layoutSize())}, m_theme.backgroundColor());
        fill({m_ground.plotArea}, m_theme.plotAreaBackgroundColor());
        fill(look.minorGrid, faint);
        fill(look.grid, m_theme.gridColor());
        fill(look.axes, m_theme.axisColor());
        write(look.texts, m_theme.labelTextColor());
    }

    void paintSeries(const PlotSeries &series) const
    {
        const QRectF &area = m_ground.plotArea;
        SSeriesFrame frame;
        frame.ratio = frame.ratioX = frame.ratioY = m_scale;
        frame.columns = int(std::lround(area.width() * m_scale));
        frame.rows = int(std::lround(area.height() * m_scale));
        frame.x = m_view.axisX()->mapping(0.0, frame.columns);
        frame.y = m_view.axisY()->mapping(frame.rows, 0.0);
        SSeriesShape shape;
        series.draw(frame, shape);
        m_painter.save();
        m_painter.setClipRect(area);
        const QPointF corner = m_painter.transform().map(area.topLeft());
        m_painter.resetTransform();
        m_painter.setOpacity(series.opacity());
        m_painter.drawImage(QPoint(qRound(corner.x()), qRound(corner.y())),
                            paintedShape(shape, frame.columns, frame.rows));
        m_painter.restore();
    }

    void write(const QVector<SLabel> &labels, const QColor &color) const
    {
        m_painter.setPen(color);
        for (const SLabel &label : labels)
            write(label);
    }

    void write(const SLabel &label) const
    {
        constexpr double half = textRoom / 2.0;
        const bool isUpwards = label.anchor == SLabel::CentreUpwards;
        m_painter.save();
        m_painter.translate(label.place);
        m_painter.rotate(isUpwards ? -90.0 : 0.0);
        if (label.anchor == SLabel::Left)
            m_painter.drawText(QRectF(0.0, -half, textRoom, textRoom), Qt::AlignLeft | Qt::AlignVCenter, label.text);
        else if (label.anchor == SLabel::Right)
            m_painter.drawText(QRectF(-textRoom, -half, textRoom, textRoom), Qt::AlignRight | Qt::AlignVCenter,
                               label.text);
        else if (label.anchor == SLabel::Top)
            m_painter.drawText(QRectF(-half, 0.0, textRoom, textRoom), Qt::AlignHCenter | Qt::AlignTop, label.text);
        else
            m_painter.drawText(QRectF(-half, -half, textRoom, textRoom), Qt::AlignCenter, label.text);
        m_painter.restore();
    }

    QPainter &m_painter;
    const PlotView &m_view;
    const PlotTheme &m_theme;
    const double m_scale;
    const SPlotGround m_ground;
};

void paintOverview(QPainter &painter, const OverviewStrip &strip, double scale)
{
    painter.save();
    painter.translate(std::round(strip.x() * scale) / scale, std::round(strip.y() * scale) / scale);
    const ViewPainter small(painter, strip.smallView(), scale);
    small.paintAll();
    small.fill(strip.dimmed(), strip.dimColor());
    small.fill(frameOf(strip.shownPart(), 1.0), strip.view()->theme()->accentColor());
    painter.restore();
}

void paintView(QPainter &painter, PlotView &view, const QPointF &corner, double scale)
{
    view.frame()->layOutNow();
    painter.save();
    painter.translate(std::round(corner.x() * scale) / scale, std::round(corner.y() * scale) / scale);
    const ViewPainter all(painter, view, scale);
    all.paintAll();
    all.paintMarks();
    paintBoxes(painter, view);
    if (const OverviewStrip *strip = view.overview())
        paintOverview(painter, *strip, scale);
    painter.restore();
}

/// An empty picture; null with the reason in `error`.
QImage groundFor(const QSizeF &size, const QColor &color, double scale, QString &error)
{
    if (!(scale > 0.0) || !std::isfinite(scale)) {
        error = QStringLiteral("the scale of a picture is a number above 0, not %1").arg(scale);
        return {};
    }
    const double width = std::round(size.width() * scale);
    const double height = std::round(size.height() * scale);
    const QString pixels = QStringLiteral("%1 x %2").arg(width, 0, 'f', 0).arg(height, 0, 'f', 0);
    if (!(width >= 1.0 && height >= 1.0)) {
        error = QStringLiteral("the picture would have no pixels: %1").arg(pixels);
        return {};
    }
    if (width > mostPixels || height > mostPixels) {
        error = QStringLiteral("a picture has at most 32767 pixels to a side, not %1").arg(pixels);
        return {};
    }
    const bool isOpaque = color.alpha() == 255;
    QImage picture(int(width), int(height), isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        error = QStringLiteral("there's no memory for a picture of %1 pixels").arg(pixels);
    else
        picture.fill(isOpaque ? color : Qt::transparent); // a view paints its own ground
    return picture;
}

} // namespace

QImage pictureOf(PlotView &view, double scale, QString &error)
{
    return pictureOf(view, view.layoutSize(), {&view}, scale, error);
}

QImage pictureOf(const QQuickItem &whole, const QSizeF &size, const QVector<PlotView *> &views, double scale,
                 QString &error)
{
    const QColor color = views.isEmpty() ? QColor(Qt::white) : views.first()->theme()->backgroundColor();
    QImage picture = groundFor(size, color, scale, error);
    if (picture.isNull())
        return picture;
    for (const PlotView *view : views)
        view->frame()->layOutNow(); // of linked views, one's place depends on all
    QPainter painter(&picture);
    painter.scale(scale, scale);
    for (PlotView *view : views)
        paintView(painter, *view, view->mapToItem(&whole, QPointF()), scale);
    painter.end();
    constexpr double pixelsPerMetre =
        96.0 / 0.0254; // of the usual screen: a larger scale is printed as large, but sharper
    picture.setDotsPerMeterX(int(std::lround(pixelsPerMetre * scale)));
    picture.setDotsPerMeterY(picture.dotsPerMeterX());
    return picture;
}
