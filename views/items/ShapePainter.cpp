// SPDX-License-Identifier: MIT
#include "views/items/ShapePainter.h"

#include "views/items/StrokeRaster.h"

#include <QPainter>

QImage paintedShape(const SSeriesShape &shape, int columns, int rows)
{
    QImage image(columns, rows, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    QPainter painter(&image);
    for (const SPixelRect &rect : shape.fill.rects())
        painter.fillRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, shape.fillColor);
    painter.end();
    fillStroke(image, strokeOf(shape.path, shape.pen), shape.pathColor);
    return image;
}
