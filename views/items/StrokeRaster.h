// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/LineStroke.h"

#include <QImage>

/// Fills the triangles of a line in a picture with premultiplied alpha, one over the other, as a graphics card does it:
/// a pixel belongs to the triangle that its middle lies in, and is covered as its middle is. Any thread.
void fillStroke(QImage &picture, const std::vector<SStrokePart> &parts, const QColor &color);
