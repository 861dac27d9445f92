// SPDX-License-Identifier: MIT
#include "views/reading/TextLines.h"

#include <algorithm>
#include <cstring>

namespace {

SSampleLine::Kind kindOf(const SField &text, const QVector<QByteArray> &commentPrefixes)
{
    if (text.begin == text.end)
        return SSampleLine::Kind::Blank;
    if (isComment(text, commentPrefixes))
        return SSampleLine::Kind::Comment;
    return isSection(text) ? SSampleLine::Kind::Section : SSampleLine::Kind::Content;
}

/// Whether the line may be one of the block of numbers, so that what is behind them may be a comment. A line of names
/// may have a "%" in it.
bool beginsWithNumber(const SField &line)
{
    return (*line.begin >= '0' && *line.begin <= '9') || std::strchr("+-.,\"", *line.begin);
}

} // namespace

bool isComment(const SField &line, const QVector<QByteArray> &prefixes)
{
    return std::any_of(prefixes.begin(), prefixes.end(), [&](const QByteArray &prefix) {
        return line.end - line.begin >= prefix.size() && std::equal(prefix.begin(), prefix.end(), line.begin);
    });
}

const char *commentBehind(const char *begin, const char *end, const QVector<QByteArray> &prefixes)
{
    for (const QByteArray &prefix : prefixes) {
        for (const char *at = begin + 1; at < end; ++at) {
            at = std::search(at, end, prefix.begin(), prefix.end());
            if (at != end && isBlank(at[-1]) && std::find(begin, at, '"') == at)
                return at;
        }
    }
    return end;
}

bool isSection(const SField &line)
{
    if (line.end - line.begin < 3 || *line.begin != '$' || line.end[-1] != ':')
        return false;
    return std::all_of(line.begin + 1, line.end - 1,
                       [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'; });
}

SampleLines sampleLines(const char *begin, const char *end, qint64 skip, const QVector<QByteArray> &commentPrefixes)
{
    SampleLines lines;
    for (const char *line = begin; line != end;) {
        const auto *lineEnd = static_cast<const char *>(std::memchr(line, '\n', size_t(end - line)));
        const char *const next = lineEnd ? lineEnd + 1 : end;
        if (skip-- <= 0) {
            SField text = trimmed(line, next);
            const auto kind = kindOf(text, commentPrefixes);
            const char *behind = next;
            if (kind == SSampleLine::Kind::Content && beginsWithNumber(text)) {
                behind = commentBehind(text.begin, next, commentPrefixes);
                text = trimmed(text.begin, behind);
            }
            lines.push_back({text, line, behind, kind});
        }
        line = next;
    }
    return lines;
}

SampleKind sampleKind(const SField &field, DecimalSign sign)
{
    const FieldKind kind = fieldKind(field.begin, field.end, sign);
    if (kind == FieldKind::Empty || kind == FieldKind::Gap)
        return SampleKind::Empty;
    SMoment moment;
    if (kind == FieldKind::Other)
        return isoMomentIn(field.begin, field.end, moment) ? SampleKind::Time : SampleKind::Text;
    return SampleKind::Number;
}

SLineShape shapeOf(const SSampleLine &line, char separator, DecimalSign sign)
{
    Fields fields;
    splitFields(line.begin, line.end, separator, fields);
    SLineShape shape;
    if (fields.size() > 1 && fields.last().begin == fields.last().end)
        fields.removeLast(); // a separator at the end ends the last field
    shape.fields = fields.size();
    shape.allQuoted = true;
    for (const SField &field : fields) {
        const SampleKind kind = sampleKind(field, sign);
        shape.values += int(kind == SampleKind::Number || kind == SampleKind::Time);
        shape.texts += int(kind == SampleKind::Text);
        shape.textLength += kind == SampleKind::Text ? int(field.end - field.begin) : 0;
        shape.allQuoted = shape.allQuoted && field.quoted;
    }
    return shape;
}
