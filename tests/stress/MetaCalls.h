// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QVariant>

class QObject;

// These go through the meta-object system. They do nothing and return false if the object is null or lacks the member.

bool write(QObject *object, const char *property, const QVariant &value);
/// Calls an invokable without arguments.
bool call(QObject *object, const char *method);
/// Calls an invokable that takes one object.
bool callWith(QObject *object, const char *method, const char *argumentType, QObject *argument);
/// Writes a property whose type is a pointer to an object.
bool writeObject(QObject *object, const char *property, QObject *value);
/// Writes a property whose type is a list of pointers to objects.
bool writeObjects(QObject *object, const char *property, const QList<QObject *> &values);
