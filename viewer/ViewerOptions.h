// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>
#include <QVariantMap>

/// What the command line asks for.
struct SViewerOptions
{
    enum class Action { Show, PrintAndSucceed, PrintAndFail };

    bool showsWindow() const { return picture.isEmpty() && values.isEmpty(); }

    Action action = Action::Show;
    QString message; ///< what to print, for the two actions that print

    QString picture; ///< path of the PNG to write instead of showing a window; empty for none
    QString values;  ///< path of the CSV, or "-"; empty for none
    QSize size;      ///< of the window or the picture, in pixels; empty if none is asked for
    bool keepsSettings = true;
    QVariantMap scene; ///< properties of the window
};

/// Reads the command line, the program's name included. Needs an application object (for its name and version), but
/// no display: whatever is wrong with the arguments or the files is said before a window is tried.
SViewerOptions parseViewerOptions(const QStringList &arguments);
