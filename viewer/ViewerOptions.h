// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

/// What the command line asks for.
struct SViewerOptions
{
    enum class Action { Show, PrintAndSucceed, PrintAndFail };

    /// Otherwise a picture or values are written.
    bool showsWindow() const
    {
        return !scene.contains(QStringLiteral("picture")) && !scene.contains(QStringLiteral("values"));
    }

    Action action = Action::Show;
    QString message; ///< what to print, for the two actions that print

    bool keepsSettings = true;
    QVariantMap scene; ///< properties of the window
};

/// Reads the command line, the program's name included. Needs an application object (for its name and version), but
/// no display: whatever is wrong with the arguments or the files is said before a window is tried.
SViewerOptions parseViewerOptions(const QStringList &arguments);
