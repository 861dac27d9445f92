// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// How a file is read. Auto: as its first bytes say.
enum class FileFormat { Auto, Text, Npy, Raw, Wav };

/// Bytes that tell the format.
constexpr int tellingBytes = 64;

/// The format of a file that begins like this: Npy, Wav or Text, or Auto if it's none of them; then `obstacle` says
/// what it seems to be and what helps, for people.
FileFormat formatOf(const QByteArray &front, QString &obstacle);
