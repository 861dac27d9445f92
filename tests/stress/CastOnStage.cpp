// SPDX-License-Identifier: MIT
#include "stress/Cast.h"
#include "stress/Stage.h"

Cast::Creator castIn(Stage &stage, QQuickWindow &window)
{
    return [&](const QByteArray &type) -> QObject * {
        const bool drawable = Cast::areaTypes().contains(type);
        const QString text =
            QString::fromUtf8(type) + (drawable ? " { width: 100; height: 100; updateIntervalMs: 0 }" : " {}");
        return drawable ? stage.makeIn(window, text) : stage.make(text);
    };
}
