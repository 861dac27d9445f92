// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class Stage;

/// Draws new charts in a new window and compares the picture with what the data say. Returns what is wrong with it.
QStringList freshChartFaults(Stage &stage);
