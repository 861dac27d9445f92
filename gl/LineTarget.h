// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/VisibleLine.h"

class QOpenGLFunctions;

/// What the current framebuffer and state make of a line with this opacity; no pixels where it is not known what a line
/// marks. Render thread, current context.
SLineTarget currentLineTarget(QOpenGLFunctions &gl, double alpha);
