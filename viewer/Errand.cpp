// SPDX-License-Identifier: MIT
#include "viewer/Errand.h"

#include "viewer/PictureFile.h"
#include "viewer/ViewerOptions.h"

#include <QImage>
#include <QQuickWindow>

#include <chrono>
#include <cmath>

namespace {

constexpr int stillFramesNeeded = 3;
constexpr std::chrono::seconds patience{60};

} // namespace

Errand::Errand(QQuickWindow *window, const SViewerOptions &options, QObject *parent)
    : QObject(parent),
      m_window(window),
      m_options(options)
{
    fitWindow();
    // Queued: the render thread emits it.
    connect(window, &QQuickWindow::frameSwapped, this, &Errand::frameShown, Qt::QueuedConnection);
    connect(&m_patience, &QTimer::timeout, this,
            [this] { finish(QStringLiteral("the picture was still changing after %1 s").arg(patience.count())); });
    m_patience.setSingleShot(true);
    m_patience.start(patience);
}

/// A window has whole units of its own, which may be more than one pixel: it gets the first that cover the picture.
void Errand::fitWindow()
{
    // A window manager would have its say about the size.
    m_window->setFlags(m_window->flags() | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    if (m_options.size.isEmpty())
        return;
    const double ratio = m_window->effectiveDevicePixelRatio();
    m_window->resize(int(std::ceil(m_options.size.width() / ratio)), int(std::ceil(m_options.size.height() / ratio)));
}

void Errand::frameShown()
{
    if (m_finished)
        return;
    const bool reading = m_window->property("reading").toBool();
    if (reading)
        m_patience.start(patience); // however long that takes
    const QString shown = m_window->property("shown").toString();
    m_stillFrames = !reading && shown == m_shown ? m_stillFrames + 1 : 0;
    m_shown = shown;
    if (m_stillFrames < stillFramesNeeded)
        m_window->update();
    else
        finish(write());
}

QString Errand::write()
{
    if (!m_window->property("hasNumbers").toBool())
        return QStringLiteral("%1: not written: there are no numbers to show")
            .arg(m_options.picture.isEmpty() ? m_options.values : m_options.picture);
    return m_options.picture.isEmpty() ? QString() : writePicture();
}

QString Errand::writePicture()
{
    QImage image = m_window->grabWindow();
    const QRect picture(QPoint(), m_options.size.isEmpty() ? image.size() : m_options.size);
    if (!image.rect().contains(picture))
        return QStringLiteral("%1: can't read the picture from the window").arg(m_options.picture);
    image = image.copy(picture).convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1.0); // or the file would claim another resolution
    return ::writePicture(image, m_options.picture, "png");
}

void Errand::finish(const QString &error)
{
    if (m_finished)
        return;
    m_finished = true;
    emit finished(error);
}
