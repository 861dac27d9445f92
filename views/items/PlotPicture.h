// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>
#include <QVector>

#include <cmath>

class PlotView;
class QQuickItem;

/// Whether a picture can be laid out for a size, which is neither empty nor endless.
inline bool isLayoutSize(const QSizeF &size)
{
    return !size.isEmpty() && std::isfinite(size.width()) && std::isfinite(size.height());
}

/// A view painted anew as it's laid out now, `scale` pixels for an item pixel, however many its window has: text, lines
/// and columns are as sharp as that many pixels allow. With its background, legend, cursors, regions, their panels and
/// the overview; without the read-out, the focus and items that were declared in the view. Needs neither a window nor
/// OpenGL. GUI thread.
///
/// Null, with the reason in `error`, where the scale isn't a number above 0, where there would be no pixel or more than
/// 32767 to a side, or where memory doesn't suffice.
QImage pictureOf(PlotView &view, double scale, QString &error);
/// The same of the views in an item, each where it lies there, for a picture of `size` item pixels.
QImage pictureOf(const QQuickItem &whole, const QSizeF &size, const QVector<PlotView *> &views, double scale,
                 QString &error);
