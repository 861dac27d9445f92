// SPDX-License-Identifier: MIT
#include "tests/support/MetaTable.h"

#include <QMetaMethod>
#include <QMetaProperty>

namespace {

QString text(const QMetaProperty &property)
{
    const QString notify =
        property.hasNotifySignal() ? QString::fromLatin1(property.notifySignal().name()) : QStringLiteral("-");
    return QStringLiteral("%1 %2 %3 %4")
        .arg(QLatin1String(property.name()), QLatin1String(property.typeName()),
             property.isWritable() ? QStringLiteral("write") : QStringLiteral("-"), notify);
}

} // namespace

QStringList ownProperties(const QMetaObject &meta)
{
    QStringList lines;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        lines.append(text(meta.property(i)));
    return lines;
}

QStringList ownSignals(const QMetaObject &meta)
{
    QStringList lines;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            lines.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    return lines;
}

QStringList ownMethods(const QMetaObject &meta)
{
    QStringList lines;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() != QMetaMethod::Signal)
            lines.append(QLatin1String(method.typeName()) + QLatin1Char(' ')
                         + QString::fromLatin1(method.methodSignature()));
    }
    return lines;
}
