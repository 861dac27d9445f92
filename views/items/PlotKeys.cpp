// SPDX-License-Identifier: MIT
#include "views/items/PlotKeys.h"

#include "views/items/PlotAxis.h"
#include "views/items/PlotHands.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotView.h"
#include "views/items/PlotZoom.h"

#include <QKeyEvent>

namespace {

constexpr double panStep = 0.1; // of what is shown
constexpr double zoomStep = 1.5;

double middle(const PlotAxis &axis)
{
    return axis.mapping(0.0, 1.0).toValue(0.5);
}

bool zoomByArrow(PlotView &view, int key, int gesture)
{
    PlotZoom &zoom = *view.zoom();
    switch (key) {
    case Qt::Key_Right:
        zoom.zoomX(1.0 / zoomStep, middle(*view.axisX()), gesture);
        return true;
    case Qt::Key_Left:
        zoom.zoomX(zoomStep, middle(*view.axisX()), gesture);
        return true;
    case Qt::Key_Up:
        zoom.zoomY(1.0 / zoomStep, middle(*view.axisY()), gesture);
        return true;
    case Qt::Key_Down:
        zoom.zoomY(zoomStep, middle(*view.axisY()), gesture);
        return true;
    default:
        return false;
    }
}

bool panByArrow(PlotView &view, int key, int gesture)
{
    PlotZoom &zoom = *view.zoom();
    switch (key) {
    case Qt::Key_Right:
        zoom.panX(panStep, gesture);
        return true;
    case Qt::Key_Left:
        zoom.panX(-panStep, gesture);
        return true;
    case Qt::Key_Up:
        zoom.panY(panStep, gesture);
        return true;
    case Qt::Key_Down:
        zoom.panY(-panStep, gesture);
        return true;
    default:
        return false;
    }
}

bool walkByArrow(PlotView &view, int key)
{
    if (key != Qt::Key_Left && key != Qt::Key_Right)
        return false;
    view.marks()->walk(key == Qt::Key_Right ? 1 : -1);
    return true;
}

void follow(PlotView &view)
{
    if (view.followMode() == PlotView::FollowNone)
        view.setFollowMode(PlotView::FollowEnd);
    else if (view.isFollowing())
        view.zoom()->pause();
    else
        view.zoom()->toEnd();
}

bool measureByLetter(PlotView &view, int key)
{
    PlotMarks &marks = *view.marks();
    switch (key) {
    case Qt::Key_C:
        marks.cycleCursors();
        return true;
    case Qt::Key_M:
        marks.showRegion(!marks.isRegionShown());
        return true;
    case Qt::Key_P:
        marks.markPeak(0);
        return true;
    case Qt::Key_Comma:
        marks.markPeak(-1);
        return true;
    case Qt::Key_Period:
        marks.markPeak(1);
        return true;
    case Qt::Key_X:
        marks.unmarkPeak();
        return true;
    default:
        return false;
    }
}

bool pressLetter(PlotView &view, int key)
{
    PlotZoom &zoom = *view.zoom();
    switch (key) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: // + without Shift on many keyboards
        view.zoomIn();
        return true;
    case Qt::Key_Minus:
        view.zoomOut();
        return true;
    case Qt::Key_Home:
        zoom.toBegin();
        return true;
    case Qt::Key_End:
        zoom.toEnd();
        return true;
    case Qt::Key_0:
        zoom.reset();
        return true;
    case Qt::Key_Backspace:
        zoom.back();
        return true;
    case Qt::Key_F:
        follow(view);
        return true;
    case Qt::Key_L:
        zoom.switchScale();
        return true;
    case Qt::Key_Escape:
        return view.hands()->cancel();
    default:
        return false;
    }
}

} // namespace

bool pressKey(PlotView &view, const QKeyEvent &event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const int key = event.key();
    const int gesture = view.zoom()->keyGesture(event.isAutoRepeat());
    if (modifiers == Qt::ControlModifier && zoomByArrow(view, key, gesture))
        return true;
    if (modifiers == Qt::NoModifier && panByArrow(view, key, gesture))
        return true;
    if (modifiers == Qt::ShiftModifier && walkByArrow(view, key))
        return true;
    // + takes Shift on some keyboards; with Ctrl or Alt letters are the application's.
    return !(modifiers & ~Qt::ShiftModifier) && (pressLetter(view, key) || measureByLetter(view, key));
}
