// SPDX-License-Identifier: MIT
#include "views/reading/TextFields.h"

#include <algorithm>

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Whether the field is a date like 2026-01-31.
bool isDate(const SField &field)
{
    return field.end - field.begin == 10 && field.begin[4] == '-' && field.begin[7] == '-' && isDigit(*field.begin);
}

/// Whether the field begins like 09:30.
bool isTimeOfDay(const SField &field)
{
    return field.end - field.begin >= 5 && field.begin[2] == ':' && isDigit(*field.begin);
}

/// What is behind the quoted text at `begin`: its closing quote, or `end` if there is none.
const char *closingQuote(const char *begin, const char *end)
{
    for (const char *at = begin + 1; at < end; ++at) {
        if (*at != '"')
            continue;
        if (at + 1 == end || at[1] != '"')
            return at;
        ++at; // a doubled quote is a character
    }
    return end;
}

const char *skipBlanks(const char *text, const char *end)
{
    return std::find_if_not(text, end, isBlank);
}

/// Takes the field at `text`, up to `stop(c)`. Returns what is behind it.
template <class Stop>
const char *takeField(const char *text, const char *end, Stop stop, SField &field)
{
    if (text != end && *text == '"') {
        const char *const quote = closingQuote(text, end);
        const char *const behind = quote == end ? end : skipBlanks(quote + 1, end);
        if (quote != end && (behind == end || stop(*behind) || stop(quote[1]))) {
            field = {text + 1, quote, true};
            return stop(quote[1]) ? quote + 1 : behind;
        }
    }
    const char *const behind = std::find_if(text, end, stop);
    field = trimmed(text, behind);
    return behind;
}

void splitAtBlanks(const char *text, const char *end, Fields &fields)
{
    for (text = skipBlanks(text, end); text != end; text = skipBlanks(text, end)) {
        SField field;
        text = takeField(text, end, isBlank, field);
        if (!fields.isEmpty() && !field.quoted && isTimeOfDay(field) && isDate(fields.last()))
            fields.last().end = field.end;
        else
            fields.append(field);
    }
}

} // namespace

SField trimmed(const char *begin, const char *end)
{
    const auto blankOrEnd = [](char c) { return isBlank(c) || c == '\n'; };
    while (end != begin && blankOrEnd(end[-1]))
        --end;
    return {skipBlanks(begin, end), end, false};
}

void splitFields(const char *begin, const char *end, char separator, Fields &fields)
{
    fields.clear();
    const SField line = trimmed(begin, end);
    if (separator == blankSeparator) {
        splitAtBlanks(line.begin, line.end, fields);
        return;
    }
    const char *text = separator == '\t' ? begin : line.begin; // an empty field in front is a field
    const char *const behind = separator == '\t' ? std::find(begin, end, '\n') : line.end;
    for (;;) {
        SField field;
        const auto blankButSeparator = [=](char c) { return c != separator && isBlank(c); };
        text = std::find_if_not(text, behind, blankButSeparator);
        text = takeField(
            text, behind, [=](char c) { return c == separator; }, field);
        fields.append(field);
        if (text == behind)
            return;
        ++text;
    }
}

QByteArray textOf(const SField &field)
{
    QByteArray text(field.begin, int(field.end - field.begin));
    return field.quoted ? text.replace("\"\"", "\"") : text;
}
