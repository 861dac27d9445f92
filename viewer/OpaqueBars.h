// SPDX-License-Identifier: MIT
#pragma once

class QQuickWindow;

/// Gives charts in this window their colours on any ground. A chart's alpha follows the context's constant blend
/// alpha, which is 0 in a fresh context (the bars then add to the ground and vanish on white) and may be changed by
/// whatever else draws; this sets it to 1 before each frame. To be called before the window is shown. GUI thread.
void keepBarsOpaque(QQuickWindow *window);
