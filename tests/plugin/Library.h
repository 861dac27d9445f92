// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Where the build has put what it delivers.

inline QString libraryFile()
{
    return QStringLiteral(VORLIX_LIBRARY);
}

inline QString importPath()
{
    return QStringLiteral(VORLIX_IMPORT_PATH);
}

inline QString qmlFolder()
{
    return QStringLiteral(VORLIX_QML_FOLDER);
}
