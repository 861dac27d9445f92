// SPDX-License-Identifier: MIT
#pragma once

#include "plotters/BarShaders.h"
#include "plotters/OwnProgram.h"

/// The process-wide variant of the bar program. Any thread.
int barShaderMode();

/// The current context's bar program, shared by all bar plotters. Render thread.
OwnProgram &barProgram();
