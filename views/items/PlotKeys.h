// SPDX-License-Identifier: MIT
#pragma once

class PlotView;
class QKeyEvent;

/// What keys do to a view. Arrows pan; Ctrl and arrows, + and - zoom; Shift and left or right walk the cursor; Home and
/// End go to the ends, End resumes following; 0 shows all, Backspace goes back, F follows or pauses, L switches the
/// scale of y, C shows one cursor, two or none, M a region, P marks the highest peak, comma and point the next one to
/// the left and to the right, X takes the mark away, Escape gives up a box.
/// @return whether the key was one of these
bool pressKey(PlotView &view, const QKeyEvent &event);
