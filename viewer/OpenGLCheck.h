// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Says, in words, what keeps Qt Quick from drawing with OpenGL here. Returns nothing if it can. Without this check Qt
/// ends the program when the first window is shown. GUI thread; needs the application object.
QString whyNoOpenGL();
