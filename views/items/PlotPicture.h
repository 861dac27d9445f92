// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

class PlotView;

/// A view painted anew, `scale` pixels for an item pixel, however many its window has: text, lines and columns are as
/// sharp as that many pixels allow. With its background, legend, cursors, regions, their panels and the overview;
/// without the read-out, the focus and items that were declared in the view. Needs neither a window nor OpenGL. GUI
/// thread.
///
/// Null, with the reason in `error`, where the scale isn't a number above 0, where there would be no pixel or more than
/// 32767 to a side, or where memory doesn't suffice.
QImage pictureOf(PlotView &view, double scale, QString &error);
