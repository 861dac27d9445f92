// SPDX-License-Identifier: MIT
#include "views/items/ShapePainter.h"

#include "views/items/StrokeRaster.h"

#include <QPainter>

namespace {

QImage newLayer(int columns, int rows)
{
    QImage layer(columns, rows, QImage::Format_ARGB32_Premultiplied);
    if (!layer.isNull())
        layer.fill(Qt::transparent);
    return layer;
}

/// The pieces of a line lie over each other: it's painted opaque, and laid over the rest as a whole.
void paintStroke(QImage &image, const SSeriesShape &shape)
{
    const std::vector<SStrokePart> stroke = strokeOf(shape.path, shape.pen);
    if (shape.pathColor.alpha() == 255)
        return fillStroke(image, stroke, shape.pathColor);
    QImage layer = newLayer(image.width(), image.height());
    if (layer.isNull())
        return;
    QColor opaque = shape.pathColor;
    opaque.setAlpha(255);
    fillStroke(layer, stroke, opaque);
    QPainter painter(&image);
    painter.setOpacity(shape.pathColor.alphaF());
    painter.drawImage(0, 0, layer);
}

} // namespace

QImage paintedShape(const SSeriesShape &shape, int columns, int rows)
{
    QImage image = newLayer(columns, rows);
    if (image.isNull())
        return image;
    QPainter painter(&image);
    for (const SPixelRect &rect : shape.fill.rects())
        painter.fillRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, shape.fillColor);
    painter.end();
    if (!shape.path.points.empty())
        paintStroke(image, shape);
    return image;
}
