// SPDX-License-Identifier: MIT
#pragma once

#include "gl/BarShaders.h"
#include "gl/LinkedProgram.h"

/// The process-wide variant of the bar program. Any thread.
int barShaderMode();

/// The current context's bar program, shared by all bar plotters. Render thread.
LinkedProgram &barProgram();

/// Chooses the variant and links the program. Render thread.
bool constructBarProgram(LinkedProgram &program);
