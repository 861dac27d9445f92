// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/SeriesShape.h"

#include <QImage>

/// The shape as a picture, on nothing: for pictures, and for scene graphs that draw no geometry. It has the pixels that
/// the geometry has. Any thread.
QImage paintedShape(const SSeriesShape &shape, int columns, int rows);
