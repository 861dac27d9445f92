// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaObject>
#include <QStringList>

// A class's own meta-object as text, to be compared with a table. Inherited entries are left out.

/// "name type write notify", in order; "-" for what a property lacks.
QStringList ownProperties(const QMetaObject &meta);
/// Signatures of the signals, in order.
QStringList ownSignals(const QMetaObject &meta);
/// "result signature" of everything else that can be invoked, in order.
QStringList ownMethods(const QMetaObject &meta);
