// SPDX-License-Identifier: MIT
#include "viewer/Desktop.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJSValue>
#include <QKeyEvent>
#include <QKeySequence>
#include <QSettings>
#include <QTextStream>

Desktop::Desktop(bool keepsSettings, QObject *parent) : QObject(parent)
{
    if (keepsSettings)
        m_settings = new QSettings(this);
}

QString Desktop::whyUnreadable(const QString &path)
{
    const QFileInfo info(path);
    if (path == QLatin1String("-"))
        return {};
    if (!info.exists())
        return QStringLiteral("no such file");
    if (info.isDir())
        return QStringLiteral("a directory, not a file of numbers");
    return info.isReadable() ? QString() : QStringLiteral("permission denied");
}

QStringList Desktop::pathsOf(const QList<QUrl> &urls)
{
    QStringList paths;
    for (const QUrl &url : urls)
        paths.append(url.isLocalFile() ? url.toLocalFile() : url.toString());
    return paths;
}

void Desktop::exit(const QStringList &problems, int code)
{
    for (const QString &words : problems)
        QTextStream(stderr) << QCoreApplication::applicationName() << ": " << words << '\n';
    QCoreApplication::exit(code);
}

void Desktop::copy(const QString &text)
{
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

void Desktop::press(QObject *item, const QString &key)
{
    const int code = QKeySequence(key)[0];
    const auto modifiers = Qt::KeyboardModifiers(code & int(Qt::KeyboardModifierMask));
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, code & ~int(Qt::KeyboardModifierMask), modifiers);
        QCoreApplication::sendEvent(item, &event);
    }
}

QVariant Desktop::remembered(const QString &name, const QVariant &otherwise) const
{
    const QVariant value = m_settings ? m_settings->value(name, otherwise) : otherwise;
    // A file of settings knows no booleans.
    const bool isSwitch = value == QLatin1String("true") || value == QLatin1String("false");
    return isSwitch ? QVariant(value.toBool()) : value;
}

void Desktop::remember(const QString &name, const QVariant &value)
{
    if (m_settings)
        m_settings->setValue(name, value.canConvert<QJSValue>() ? value.value<QJSValue>().toVariant() : value);
}
