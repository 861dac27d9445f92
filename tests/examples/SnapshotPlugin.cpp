// SPDX-License-Identifier: MIT
#include "SnapshotPlugin.h"

#include "Pictures.h"

#include <QGuiApplication>
#include <QQmlContext>
#include <QQmlExpression>
#include <QQuickWindow>
#include <QWheelEvent>
#include <QtQml>

#include <cstdio>
#include <utility>

namespace {

constexpr int giveUpAfterMs = 300000; // on a busy machine
constexpr int settleIntervalMs = 150;

int warnings = 0; // messages that a user would stumble over
QtMessageHandler previousHandler = nullptr;

void countWarnings(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const bool isTheMachines = message.contains("XDG_RUNTIME_DIR");
    if (type != QtDebugMsg && type != QtInfoMsg && !isTheMachines)
        ++warnings;
    previousHandler(type, context, message);
}

QVariant evaluate(QQuickWindow *window, const char *variable)
{
    QQmlExpression expression(qmlContext(window), window, qEnvironmentVariable(variable));
    const QVariant result = expression.evaluate();
    if (expression.hasError())
        qWarning() << expression.error();
    return result;
}

/// As large as on a screen with one pixel for each of the window's.
QImage atRatioOne(const QImage &image)
{
    const QSize size = (QSizeF(image.size()) / image.devicePixelRatio()).toSize();
    return size == image.size() ? image : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void sendMouse(QQuickWindow *window, const QStringList &words)
{
    if (words.size() < 3)
        return;
    const QPointF at(words[1].toDouble(), words[2].toDouble());
    if (words[0] == "hover") {
        QMouseEvent move(QEvent::MouseMove, at, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window, &move);
    } else if (words[0] == "wheel") {
        const QPoint delta(0, words.value(3).toInt());
        QWheelEvent wheel(at, at, QPoint(), delta, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window, &wheel);
    }
}

bool isRecording()
{
    return qEnvironmentVariableIsSet("SNAPSHOT_RECORD");
}

} // namespace

Snapshot::Snapshot()
{
    previousHandler = qInstallMessageHandler(countWarnings);
    connect(&m_timer, &QTimer::timeout, this, &Snapshot::step);
    m_timer.start(0); // every pass of the event loop: SNAPSHOT_UNTIL is seen at the tick that makes it true
    m_elapsed.start();
}

Snapshot::~Snapshot()
{
    qInstallMessageHandler(nullptr);
}

void Snapshot::step()
{
    if (m_elapsed.elapsed() > giveUpAfterMs) {
        std::fprintf(stderr, "The picture never came to rest.\n");
        return QCoreApplication::exit(3);
    }
    switch (m_stage) {
    case Stage::Opening:
        for (QWindow *window : QGuiApplication::topLevelWindows()) {
            auto *candidate = qobject_cast<QQuickWindow *>(window);
            if (candidate && candidate->isVisible())
                m_window = candidate;
        }
        if (!m_window)
            return;
        m_stage = Stage::Waiting;
        return;
    case Stage::Waiting:
        if (!isReady())
            return;
        m_stage = Stage::Appearing;
        return;
    case Stage::Appearing:
        if (!m_window->isExposed())
            return;
        if (isRecording())
            gesture();
        m_stage = Stage::Settling;
        m_timer.setInterval(qEnvironmentVariableIsSet("SNAPSHOT_AFTER") ? qEnvironmentVariableIntValue("SNAPSHOT_AFTER")
                                                                        : settleIntervalMs);
        return;
    case Stage::Settling:
        return isRecording() ? record() : lookAgain();
    }
}

/// Makes the gestures, once. Whether there were any.
bool Snapshot::gesture()
{
    const QStringList gestures = qEnvironmentVariable("SNAPSHOT_MOUSE").split(',', Qt::SkipEmptyParts);
    if (std::exchange(m_hasGestured, true))
        return false;
    for (const QString &gesture : gestures)
        sendMouse(m_window, gesture.split(' ', Qt::SkipEmptyParts));
    return !gestures.isEmpty();
}

bool Snapshot::isReady()
{
    if (qEnvironmentVariableIsSet("SNAPSHOT_UNTIL") && !evaluate(m_window, "SNAPSHOT_UNTIL").toBool())
        return false;
    if (qEnvironmentVariableIsSet("SNAPSHOT_DO") && !isRecording())
        evaluate(m_window, "SNAPSHOT_DO");
    return true;
}

void Snapshot::lookAgain()
{
    const QImage seen = m_window->grabWindow().convertToFormat(QImage::Format_RGB32);
    const bool isAtRest = qEnvironmentVariableIsSet("SNAPSHOT_AFTER") || seen == m_last;
    m_last = seen;
    if (!isAtRest)
        return;
    if (gesture())
        m_last = QImage(); // it has to come to rest once more
    else
        finish(seen);
}

void Snapshot::record()
{
    const QStringList words = qEnvironmentVariable("SNAPSHOT_RECORD").split(' ');
    m_timer.setInterval(words.value(2).toInt());
    m_window->grabWindow().save(QStringLiteral("%1/%2.png").arg(words.value(0)).arg(m_recorded, 4, 10, QChar('0')));
    evaluate(m_window, "SNAPSHOT_DO");
    if (++m_recorded >= words.value(1).toInt())
        QCoreApplication::exit(0);
}

void Snapshot::finish(const QImage &seen)
{
    m_timer.stop();
    seen.save(qEnvironmentVariable("SNAPSHOT_RESULT"));
    if (qEnvironmentVariableIsSet("SNAPSHOT_THEN") && !evaluate(m_window, "SNAPSHOT_THEN").toBool()) {
        std::fprintf(stderr, "Not so in the end: %s\n", qPrintable(qEnvironmentVariable("SNAPSHOT_THEN")));
        return QCoreApplication::exit(4);
    }
    const bool expects = qEnvironmentVariableIsSet("SNAPSHOT_PICTURE");
    const double difference =
        expects ? differingBlocks(atRatioOne(seen), QImage(qEnvironmentVariable("SNAPSHOT_PICTURE"))) : 0.0;
    const double tolerance = qEnvironmentVariable("SNAPSHOT_TOLERANCE", "0.005").toDouble();
    std::fprintf(stderr, "%.2f %% of the blocks differ, %.2f %% may; %d warnings\n", 100.0 * difference,
                 100.0 * tolerance, warnings);
    QCoreApplication::exit(difference > tolerance ? 1 : warnings > 0 ? 2 : 0);
}

QObject *SnapshotPlugin::create(const QString &, const QString &)
{
    return new Snapshot; // the application deletes it
}
