// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

/// What the command line asks for.
struct SViewerOptions
{
    enum class Action { Show, PrintAndSucceed, PrintAndFail };

    Action action = Action::Show;
    QString message; ///< what to print, for the two actions that print

    QStringList files;     ///< absolute paths of files that exist and are readable
    QString picture;       ///< path of the PNG to write instead of showing a window; empty for a window
    QSize size{1280, 720}; ///< of the window or the picture, in pixels
    double binWidth = 1.0; ///< width of one value along x
    QString unit;          ///< of x
    int smoothDepth = 1;   ///< running average over so many values; 1 for none
    bool area = false;     ///< filled areas instead of bars
    bool logarithmic = false;
    bool darkGround = false;
};

/// Reads the command line, the program's name included. Needs an application object (for its name and version), but
/// no display: whatever is wrong with the arguments or the files is said before a window is tried.
SViewerOptions parseViewerOptions(const QStringList &arguments);
