// SPDX-License-Identifier: MIT
#pragma once

#include "gl/LinkedProgram.h"

/// The current context's bar program, shared by all bar plotters. Render thread.
LinkedProgram &barProgram();

/// Chooses the variant and links the program. Render thread.
bool constructBarProgram(LinkedProgram &program);
