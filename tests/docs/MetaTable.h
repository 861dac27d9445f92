// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaObject>
#include <QObject>
#include <QString>
#include <QStringList>

/// The rows that the reference's tables must have for what a meta-object adds to its superclass: as they stand in the
/// pages up to the words that only people can write.
namespace MetaTable {

/// "| `name` | type | `default` | notify" for each property; the default is what `object` has.
QStringList properties(const QMetaObject &meta, QObject &object);
/// "| `name` | type | `default`", without the notify column that QML's own properties need not have.
QStringList componentProperties(const QMetaObject &meta, QObject &object);
/// "| `name(type argument)`" for each signal that isn't a property's NOTIFY signal.
QStringList signalRows(const QMetaObject &meta);
/// "| `name(type argument) : type`" for each invokable.
QStringList functions(const QMetaObject &meta);

} // namespace MetaTable
