// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/compare/Contender.h"

#include <QApplication>
#include <QWidget>

/// The application of the contenders that are widgets: says when something was painted.
class WidgetApplication final : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        const QEvent::Type type = event->type(); // the event may be gone afterwards
        const bool handled = QApplication::notify(receiver, event);
        if (type == QEvent::Paint || type == QEvent::UpdateRequest || type == QEvent::Expose)
            frameFinished();
        return handled;
    }
};

/// Shows the widget as a window of the contest's size.
inline QWindow *showAsWindow(QWidget &widget)
{
    widget.setFixedSize(windowWidth, windowHeight);
    widget.show();
    return widget.windowHandle();
}
