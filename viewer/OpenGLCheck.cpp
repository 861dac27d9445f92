// SPDX-License-Identifier: MIT
#include "viewer/OpenGLCheck.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace {

/// A window that is never shown knows what it would be drawn with.
bool isOpenGLChosen()
{
    const QQuickWindow window;
    return window.rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL;
}

bool canMakeContext()
{
    QOpenGLContext context;
    return context.create();
}

/// Names the variable that chose another renderer, or the platform, which has nothing else.
QString whoChoseAnother()
{
    for (const char *variable : {"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QSG_RHI"}) {
        if (!qEnvironmentVariableIsEmpty(variable))
            return QStringLiteral("%1=%2 draws without OpenGL")
                .arg(QLatin1String(variable), qEnvironmentVariable(variable));
    }
    return QStringLiteral("the platform \"%1\" has no OpenGL").arg(QGuiApplication::platformName());
}

} // namespace

QString whyNoOpenGL()
{
    if (isOpenGLChosen() && canMakeContext())
        return {};
    return whoChoseAnother() + QStringLiteral(", which the charts need");
}
