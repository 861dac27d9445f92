// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QVariant>

class QObject;

// Through the meta-object system. Nothing happens, and the answer is false, if there is no object, or if it has no such
// member.

bool write(QObject *object, const char *property, const QVariant &value);
/// Calls an invokable without arguments.
bool call(QObject *object, const char *method);
/// Calls an invokable that takes one object.
bool callWith(QObject *object, const char *method, const char *argumentType, QObject *argument);
/// Writes a property whose type is a pointer to an object.
bool writeObject(QObject *object, const char *property, QObject *value);
/// Writes a property whose type is a list of pointers to objects.
bool writeObjects(QObject *object, const char *property, const QList<QObject *> &values);
