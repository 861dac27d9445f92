// SPDX-License-Identifier: MIT
#pragma once

class QQuickWindow;
class Stage;
class Troupe;

// What any troupe can be put through, drawn in a window.

void linkOften(Troupe &troupe, int times);
/// Destroys all, one by one, while the others go on.
void destroyOneByOne(Stage &stage, Troupe &troupe);
/// Any value into any property, while everything is drawn.
void mistreatOften(Stage &stage, QQuickWindow &window, Troupe &troupe, int times);
