// SPDX-License-Identifier: MIT
#include "views/reading/TextLayout.h"

#include <algorithm>

namespace {

QString separatorWord(char separator)
{
    switch (separator) {
    case ';':
        return QStringLiteral("semicolons");
    case '\t':
        return QStringLiteral("tabs");
    case ',':
        return QStringLiteral("commas");
    case blankSeparator:
        return QStringLiteral("blanks");
    default:
        return QStringLiteral("“%1”").arg(QLatin1Char(separator));
    }
}

QString columnsWords(const STextLayout &layout)
{
    if (layout.columns.size() == 1)
        return QStringLiteral("1 column");
    return QStringLiteral("%1 columns between %2").arg(layout.columns.size()).arg(separatorWord(layout.separator));
}

QString timeWords(const STextColumn &column, int number)
{
    switch (column.kind) {
    case STextColumn::Kind::IsoTime:
        return QStringLiteral("dates and times in column %1, without a zone taken as UTC").arg(number);
    case STextColumn::Kind::Seconds:
        return QStringLiteral("seconds since 1970 in column %1").arg(number);
    case STextColumn::Kind::Milliseconds:
        return QStringLiteral("milliseconds since 1970 in column %1").arg(number);
    case STextColumn::Kind::Text:
        return QStringLiteral("column %1 is text and not read").arg(number);
    case STextColumn::Kind::Number:
        break;
    }
    return {};
}

} // namespace

QString describe(const STextLayout &layout)
{
    QStringList words{columnsWords(layout)};
    if (layout.decimalSign == DecimalSign::Comma)
        words << QStringLiteral("decimal comma");
    for (int i = 0; i < int(layout.columns.size()); ++i) {
        if (layout.columns.at(i).kind != STextColumn::Kind::Number)
            words << timeWords(layout.columns.at(i), i + 1);
    }
    if (layout.firstMayBeX)
        words << QStringLiteral("column 1 ascends: set xColumn to 1 if it is x");
    const auto hasName = [](const STextColumn &column) { return !column.name.isEmpty(); };
    if (std::any_of(layout.columns.begin(), layout.columns.end(), hasName))
        words << QStringLiteral("names in the head");
    if (layout.headLines > 0)
        words << QStringLiteral("%1 %2 before the numbers")
                     .arg(layout.headLines)
                     .arg(layout.headLines == 1 ? QStringLiteral("line") : QStringLiteral("lines"));
    if (layout.skipsBlankLines)
        words << QStringLiteral("blank lines between them left out");
    return (words + layout.remarks).join(QStringLiteral("; "));
}
