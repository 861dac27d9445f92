// SPDX-License-Identifier: MIT
#include "viewer/PictureWriter.h"

#include "viewer/PictureFile.h"

#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>

#include <chrono>
#include <cmath>
#include <cstring>

namespace {

constexpr int stillFramesNeeded = 4;
constexpr std::chrono::seconds patience{60};

/// Bit by bit: infinities and NaN stand still, too.
bool sameRect(const QRectF &a, const QRectF &b)
{
    return std::memcmp(&a, &b, sizeof(QRectF)) == 0;
}

} // namespace

PictureWriter::PictureWriter(QQuickWindow *window, QQuickItem *chart, const SPictureOrder &order, QObject *parent)
    : QObject(parent),
      m_window(window),
      m_chart(chart),
      m_order(order)
{
    fitWindow();
    // Queued: the render thread emits it.
    connect(window, &QQuickWindow::frameSwapped, this, &PictureWriter::frameShown, Qt::QueuedConnection);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        finish(QStringLiteral("%1: the picture was still changing after %2 s").arg(m_order.path).arg(patience.count()));
    });
    m_patience.setSingleShot(true);
    m_patience.start(patience);
}

/// A window has whole units of its own, which may be more than one pixel: it gets the first that cover the picture.
void PictureWriter::fitWindow()
{
    const double ratio = m_window->effectiveDevicePixelRatio();
    m_window->resize(int(std::ceil(m_order.size.width() / ratio)), int(std::ceil(m_order.size.height() / ratio)));
}

void PictureWriter::askForFrame()
{
    m_chart->update();
    m_window->update();
}

void PictureWriter::frameShown()
{
    if (m_finished)
        return;
    const bool reading = m_window->property("reading").toBool();
    if (reading)
        m_patience.start(patience); // however long that takes
    const QRectF chartRect = m_chart->property("chartRect").toRectF();
    const QRectF zoomRect = m_chart->property("zoomRect").toRectF();
    const bool still = !reading && sameRect(chartRect, m_chartRect) && sameRect(zoomRect, m_zoomRect);
    m_stillFrames = still ? m_stillFrames + 1 : 0;
    m_chartRect = chartRect;
    m_zoomRect = zoomRect;
    if (m_stillFrames < stillFramesNeeded) {
        askForFrame();
        return;
    }
    if (!m_window->property("hasNumbers").toBool()) {
        finish(QStringLiteral("%1: not written: there are no numbers to show").arg(m_order.path));
        return;
    }
    finish(writeWindow());
}

/// Returns what went wrong, or nothing.
QString PictureWriter::writeWindow()
{
    QImage image = m_window->grabWindow();
    const QRect picture(QPoint(), m_order.size);
    if (!image.rect().contains(picture))
        return QStringLiteral("%1: can't read the picture from the window").arg(m_order.path);
    image = image.copy(picture).convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1.0); // or the file would claim another resolution
    return writePicture(image, m_order.path, "png");
}

void PictureWriter::finish(const QString &error)
{
    if (m_finished)
        return;
    m_finished = true;
    emit finished(error);
}
