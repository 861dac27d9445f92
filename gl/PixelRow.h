// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SPixelRow.h"

class QOpenGLFunctions;

/// The pixels of the current framebuffer. Render thread, current context.
SPixelRow currentPixelRow(QOpenGLFunctions &gl);
