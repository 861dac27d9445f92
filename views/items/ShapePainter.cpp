// SPDX-License-Identifier: MIT
#include "views/items/ShapePainter.h"

#include <QPainter>

namespace {

void paintPath(QPainter &painter, const LinePath &path, const SPen &pen, const QColor &color)
{
    painter.setRenderHint(QPainter::Antialiasing, pen.isSmooth);
    painter.setPen(QPen(color, pen.width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    size_t from = 0;
    for (const size_t end : path.ends) {
        if (end - from == 1)
            painter.drawPoint(path.points[from]);
        else
            painter.drawPolyline(path.points.data() + from, int(end - from));
        from = end;
    }
}

} // namespace

void paintShape(QPainter &painter, const SSeriesShape &shape)
{
    for (const SPixelRect &rect : shape.fill.rects())
        painter.fillRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, shape.fillColor);
    paintPath(painter, shape.path, shape.pen, shape.pathColor);
}

QImage paintedShape(const SSeriesShape &shape, int columns, int rows)
{
    QImage image(columns, rows, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintShape(painter, shape);
    return image;
}
