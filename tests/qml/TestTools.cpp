// SPDX-License-Identifier: MIT
#undef QT_WIDGETS_LIB // which Qt's library for tests in QML brings along: QtTest would take the application for a
                      // QApplication
#include "tests/qml/TestTools.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QUrl>
#include <QtTest>

#include <algorithm>

TestTools::~TestTools()
{
    if (!m_log)
        return;
    const QStringList late = m_log->messages();
    m_log.reset();
    for (const QString &message : late)
        qWarning("left in the log: %s", qPrintable(message));
}

void TestTools::catchMessages()
{
    if (!m_log)
        m_log = std::make_unique<LogCatcher>();
}

QStringList TestTools::takeMessages()
{
    const QStringList messages = m_log->messages();
    m_log->clear();
    return messages;
}

QStringList TestTools::takeConsole()
{
    const QStringList messages = m_log->ofType(QtDebugMsg);
    m_log->clear();
    return messages;
}

void TestTools::prepare(QQuickWindow *window)
{
    connect(
        window, &QQuickWindow::beforeRendering, this,
        [] { QOpenGLContext::currentContext()->functions()->glBlendColor(0.0f, 0.0f, 0.0f, 1.0f); },
        Qt::DirectConnection);
    m_frames.follow(*window, *this);
    m_window = window;
}

void TestTools::settle() const
{
    m_frames.settle(*m_window);
}

QVariantList TestTools::otherWindows(QQuickWindow *except) const
{
    QVariantList windows;
    const QWindowList all = QGuiApplication::topLevelWindows();
    for (QWindow *window : all) {
        auto *quick = qobject_cast<QQuickWindow *>(window);
        if (quick && quick != except && quick->isVisible() && quick->width() > 1)
            windows.append(QVariant::fromValue<QObject *>(quick));
    }
    return windows;
}

void TestTools::waitUntilShown(QQuickWindow *window) const
{
    if (!QTest::qWaitForWindowExposed(window, patience))
        qWarning("a window did not appear");
    waitUntilStill([window] {
        window->grabWindow();
        return window->size();
    });
}

void TestTools::clickOn(QQuickItem *item) const
{
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2.0, item->height() / 2.0));
    QTest::mouseClick(item->window(), Qt::LeftButton, Qt::NoModifier, middle.toPoint());
}

void TestTools::press(QQuickWindow *window, int key) const
{
    QTest::keyClick(window, Qt::Key(key));
}

void TestTools::drag(QQuickWindow *window, const QPointF &from, const QPointF &to, bool release) const
{
    constexpr int steps = 10;
    QTest::mouseMove(window, from.toPoint());
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from.toPoint());
    for (int step = 1; step <= steps; ++step)
        QTest::mouseMove(window, (from + (to - from) * step / steps).toPoint(), 5);
    if (release)
        this->release(window, to);
}

void TestTools::release(QQuickWindow *window, const QPointF &at) const
{
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at.toPoint());
}

QColor TestTools::pixelOf(const QImage &picture, int x, int y) const
{
    const qreal ratio = picture.devicePixelRatio();
    return picture.pixelColor(int((x + 0.5) * ratio), int((y + 0.5) * ratio));
}

QString TestTools::urlOf(const QString &path) const
{
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

bool TestTools::exists(const QString &path) const
{
    return QFileInfo::exists(path);
}

QSize TestTools::imageSize(const QString &path) const
{
    return QImage(path).size();
}

QColor TestTools::imagePixel(const QString &path, int x, int y) const
{
    return QImage(path).pixelColor(x, y);
}

bool TestTools::areAlike(const QString &path, const QString &other) const
{
    const QImage picture(path);
    return !picture.isNull() && picture == QImage(other);
}

int TestTools::steepestEdge(const QString &path, const QRect &area) const
{
    const QImage picture = QImage(path).convertToFormat(QImage::Format_Grayscale8);
    int steepest = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        const uchar *line = picture.constScanLine(y);
        for (int x = area.left(); x < area.right(); ++x)
            steepest = std::max(steepest, std::abs(int(line[x + 1]) - int(line[x])));
    }
    return steepest;
}
