// SPDX-License-Identifier: MIT
#include "stress/MetaCalls.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QObject>

bool write(QObject *object, const char *property, const QVariant &value)
{
    return object && object->setProperty(property, value);
}

bool call(QObject *object, const char *method)
{
    return object && QMetaObject::invokeMethod(object, method);
}

bool callWith(QObject *object, const char *method, const char *argumentType, QObject *argument)
{
    if (!object)
        return false;
    const QByteArray signature = QByteArray(method) + '(' + argumentType + ')';
    const int index = object->metaObject()->indexOfMethod(signature);
    if (index < 0)
        return false;
    // A pointer to an object has the same address as one to its first base.
    const QGenericArgument typed(argumentType, &argument);
    return object->metaObject()->method(index).invoke(object, Qt::DirectConnection, typed);
}

bool writeObject(QObject *object, const char *property, QObject *value)
{
    const int index = object ? object->metaObject()->indexOfProperty(property) : -1;
    if (index < 0)
        return false;
    const QMetaProperty written = object->metaObject()->property(index);
    return written.write(object, QVariant(written.userType(), static_cast<const void *>(&value)));
}

bool writeObjects(QObject *object, const char *property, const QList<QObject *> &values)
{
    const int index = object ? object->metaObject()->indexOfProperty(property) : -1;
    if (index < 0)
        return false;
    const QMetaProperty written = object->metaObject()->property(index);
    return written.write(object, QVariant(written.userType(), static_cast<const void *>(&values)));
}
