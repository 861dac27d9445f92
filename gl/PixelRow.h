// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/VisibleBars.h"

class QOpenGLFunctions;

/// The pixels of the current framebuffer; none where their centres do not decide. Render thread, current context.
SPixelRow currentPixelRow(QOpenGLFunctions &gl);
