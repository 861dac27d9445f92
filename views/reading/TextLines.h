// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/TextLayout.h"
#include "views/reading/TextTime.h"

#include <vector>

// The lines of a sample, looked at one candidate for the separator at a time; for detectLayout().

struct SSampleLine
{
    enum class Kind { Blank, Comment, Section, Content };

    SField text; ///< without blanks around it
    const char *begin = nullptr;
    const char *end = nullptr; ///< behind the line end
    Kind kind = Kind::Content;
};

using SampleLines = std::vector<SSampleLine>;

/// Cuts a text into lines, without the first `skip` ones.
SampleLines sampleLines(const char *begin, const char *end, qint64 skip, const QVector<QByteArray> &commentPrefixes);

/// What a field of a sample may be.
enum class SampleKind { Empty, Number, Time, Text };

SampleKind sampleKind(const SField &field, DecimalSign sign);

/// What a line is, cut at a separator.
struct SLineShape
{
    int fields = 0;
    int values = 0;     ///< fields that hold a number or a time
    int texts = 0;      ///< fields that hold something else
    int textLength = 0; ///< of those, in characters
    bool allQuoted = false;
};

SLineShape shapeOf(const SSampleLine &line, char separator, DecimalSign sign);
