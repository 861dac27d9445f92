// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/SeriesShape.h"

#include <QImage>

class QPainter;

/// Paints the shape with its upper left corner at 0, 0. Any thread.
void paintShape(QPainter &painter, const SSeriesShape &shape);

/// The shape as a picture, on nothing: for scene graphs that draw no geometry. Any thread.
QImage paintedShape(const SSeriesShape &shape, int columns, int rows);
