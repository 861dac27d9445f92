// SPDX-License-Identifier: MIT
#include "viewer/OpaqueBars.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

void keepBarsOpaque(QQuickWindow *window)
{
    // Direct: the render thread, with the window's context current. Charts draw at the same signal, but connect later.
    QObject::connect(
        window, &QQuickWindow::beforeRendering, window,
        [] { QOpenGLContext::currentContext()->functions()->glBlendColor(0.0f, 0.0f, 0.0f, 1.0f); },
        Qt::DirectConnection);
}
