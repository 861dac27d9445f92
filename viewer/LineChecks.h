// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QIODevice;

/// How far the first lines of a text are one number each, as SCSVReader wants it.
struct SLineChecks
{
    bool hasNumbers = false; ///< whether any of them is just a number
    QString problem;         ///< what is wrong with them and what helps, for people; empty if they are well
};

/// Looks at the first hundred thousand lines. Decimal commas are named wherever they are; several columns where half of
/// the lines have them, for a head may well look like some; words where there is no number. `name` is the file's name
/// in the command that helps. Any thread.
SLineChecks checkLines(QIODevice &device, const QString &name);
