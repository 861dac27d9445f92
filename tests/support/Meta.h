// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaMethod>
#include <QMetaObject>
#include <QMetaProperty>
#include <QStringList>

// What a class itself declares to QML, in order.

/// As "type name notify".
inline QStringList ownProperties(const QMetaObject &meta)
{
    QStringList found;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        found.append(QStringLiteral("%1 %2 %3")
                         .arg(QLatin1String(property.typeName()), QLatin1String(property.name()),
                              QString::fromLatin1(property.notifySignal().name())));
    }
    return found;
}

/// Their signatures.
inline QStringList ownMethods(const QMetaObject &meta, QMetaMethod::MethodType type)
{
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == type)
            found.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    return found;
}
