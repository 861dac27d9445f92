// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/SeriesShape.h"

#include <QImage>

/// The shape as a picture, on nothing: for scene graphs that draw no geometry. Any thread.
QImage paintedShape(const SSeriesShape &shape, int columns, int rows);
