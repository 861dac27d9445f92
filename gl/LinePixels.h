// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/DenseLine.h"

class QOpenGLFunctions;

/// The pixels of the current framebuffer, and how wide a line is drawn there; no pixels if they have several samples.
/// Render thread, current context.
SLinePixels currentLinePixels(QOpenGLFunctions &gl);
