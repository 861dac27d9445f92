// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVarLengthArray>

/// One field of a line, without the blanks and quotes around it.
struct SField
{
    const char *begin = nullptr;
    const char *end = nullptr;
    bool quoted = false;
};

using Fields = QVarLengthArray<SField, 16>;

/// Separator that stands for any number of blanks and tabs.
constexpr char blankSeparator = ' ';

inline bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

/// The line without its end and the blanks around it.
SField trimmed(const char *begin, const char *end);

/// Cuts a line into fields; at least one unless `separator` is blankSeparator and the line is empty. A separator inside
/// double quotes is part of the field. Between blanks, a date and the time behind it are one field.
void splitFields(const char *begin, const char *end, char separator, Fields &fields);

/// The field as text, with doubled quotes made single if it was quoted.
QByteArray textOf(const SField &field);
