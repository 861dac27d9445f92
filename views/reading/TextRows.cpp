// SPDX-License-Identifier: MIT
#include "views/reading/TextRows.h"

#include "common/LineEnds.h"
#include "views/reading/PlainLines.h"
#include "views/reading/TextTime.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr double gap = std::numeric_limits<double>::quiet_NaN();

/// What a line turned out to be.
enum class LineKind { Values, Doubtful, Nothing, Blank, Comment, Section };

class RowReader
{
public:
    RowReader(const STextLayout &layout, TextRows &rows) : m_layout(layout), m_rows(rows)
    {
        for (int i = 0; i < int(layout.columns.size()); ++i)
            m_columns.push_back({layout.columns[i], rows.place(i)});
        m_point = layout.decimalSign == DecimalSign::Comma ? ',' : '.';
    }

    void read(const char *text, const char *end)
    {
        PlainLines plain(m_layout, m_rows, text, end);
        while (text != end) {
            text = takePlainLines(plain, text);
            if (text == end)
                break;
            const auto *lineEnd = static_cast<const char *>(std::memchr(text, '\n', size_t(end - text)));
            if (!noteLine(readLine(text, lineEnd))) {
                noteSection(text, end);
                return;
            }
            text = lineEnd + 1;
            ++m_line;
        }
        m_rows.lines = m_line;
    }

private:
    struct SColumn
    {
        const STextColumn &column;
        double *place;
    };

    const char *takePlainLines(PlainLines &plain, const char *text);
    LineKind readLine(const char *text, const char *end);
    LineKind readFields(const char *text, const char *end);
    FieldKind fieldValue(const SField &field, const STextColumn &column, double &value);
    void noteSign(char sign);

    void noteValues();
    void closeOpenLines();
    void fillGaps();
    bool noteLine(LineKind kind);
    void noteSection(const char *text, const char *end);

    const STextLayout &m_layout;
    TextRows &m_rows;
    std::vector<SColumn> m_columns;
    char m_point = '.';
    qint64 m_row = 0; ///< the next one, behind gaps that may not become rows
    qint64 m_line = 0;
};

/// Takes lines that need no closer look and returns what is behind them.
const char *RowReader::takePlainLines(PlainLines &plain, const char *text)
{
    const qint64 before = m_row;
    text = plain.take(text, m_point, m_row);
    if (m_row > before) {
        m_line += m_row - before;
        noteValues();
    }
    return text;
}

/// Takes the other sign for the more likely one from now on, while both are allowed.
void RowReader::noteSign(char sign)
{
    if (sign)
        m_point = sign;
    m_rows.usedOtherSign |= sign == ',';
}

/// The value of a field. Other fields than numbers are read here, too.
FieldKind RowReader::fieldValue(const SField &field, const STextColumn &column, double &value)
{
    const FieldKind kind = numberIn(field.begin, field.end, m_layout.decimalSign, value);
    if (kind == FieldKind::Number && m_layout.decimalSign == DecimalSign::Either)
        noteSign(decimalSignOf(field.begin, field.end));
    if (!column.isTime() || kind == FieldKind::Empty || kind == FieldKind::Gap)
        return kind == FieldKind::Number && std::isinf(value) ? FieldKind::Other : kind; // too large: said
    SMoment moment;
    const int perSecond = column.kind == STextColumn::Kind::Milliseconds ? 1000 : 1;
    const bool isMoment = column.kind == STextColumn::Kind::IsoTime
        ? isoMomentIn(field.begin, field.end, moment)
        : epochMomentIn(field.begin, field.end, m_layout.decimalSign, perSecond, moment);
    if (isMoment)
        value = secondsSince(column.origin, moment);
    else if (kind == FieldKind::Number && column.kind != STextColumn::Kind::IsoTime)
        value = value / perSecond - double(column.origin);
    else
        value = gap;
    return isMoment || (kind == FieldKind::Number && !std::isnan(value)) ? FieldKind::Number : FieldKind::Other;
}

LineKind RowReader::readLine(const char *text, const char *end)
{
    const SField line = trimmed(text, end);
    if (line.begin == line.end)
        return LineKind::Blank;
    if (isComment(line, m_layout.commentPrefixes))
        return LineKind::Comment;
    if (m_layout.hasSections && isSection(line))
        return LineKind::Section;
    const LineKind kind = readFields(text, end);
    const char *const cut = kind == LineKind::Values ? end : commentBehind(text, end, m_layout.commentPrefixes);
    return cut == end ? kind : readFields(text, cut);
}

LineKind RowReader::readFields(const char *text, const char *end)
{
    Fields fields;
    splitFields(text, end, m_layout.separator, fields);
    while (fields.size() > int(m_columns.size()) && fields.last().begin == fields.last().end)
        fields.removeLast();
    const bool tooMany = fields.size() > int(m_columns.size());
    bool doubtful = tooMany || fields.size() < int(m_columns.size());
    bool understood = false;
    for (int i = 0; i < int(m_columns.size()); ++i) {
        const SColumn &column = m_columns[size_t(i)];
        if (!column.column.isRead())
            continue;
        double &value = column.place[m_row];
        value = gap;
        if (i >= fields.size() || tooMany)
            continue;
        const FieldKind kind = fieldValue(fields[i], column.column, value);
        doubtful |= kind == FieldKind::Other;
        understood |= kind == FieldKind::Number || kind == FieldKind::Gap || std::isinf(value);
    }
    if (!understood && (doubtful || fields.size() <= 1))
        return LineKind::Nothing;
    return doubtful ? LineKind::Doubtful : LineKind::Values;
}

/// Makes rows of the lines that held nothing, now that values follow.
void RowReader::closeOpenLines()
{
    m_rows.badLines += m_rows.openLines;
    if (m_rows.firstBadLine < 0)
        m_rows.firstBadLine = m_rows.firstOpenLine;
    m_rows.openLines = 0;
    m_rows.openTextLines = 0;
    m_rows.firstOpenLine = -1;
}

/// Counts the rows so far, the last of which has values.
void RowReader::noteValues()
{
    if (m_rows.openLines > 0)
        closeOpenLines();
    m_rows.rows = m_row;
}

void RowReader::fillGaps()
{
    for (const SColumn &column : m_columns) {
        if (column.place)
            column.place[m_row] = gap;
    }
    ++m_row;
}

/// Counts a line. False if the block of numbers ends here.
bool RowReader::noteLine(LineKind kind)
{
    switch (kind) {
    case LineKind::Section:
        return false;
    case LineKind::Comment:
        ++m_rows.comments;
        return true;
    case LineKind::Values:
    case LineKind::Doubtful:
        ++m_row;
        noteValues();
        if (kind == LineKind::Doubtful) {
            ++m_rows.badLines;
            if (m_rows.firstBadLine < 0)
                m_rows.firstBadLine = m_line;
        }
        return true;
    case LineKind::Blank:
        if (m_layout.skipsBlankLines)
            return true;
        break;
    case LineKind::Nothing:
        ++m_rows.openTextLines;
        break;
    }
    if (m_rows.openLines++ == 0)
        m_rows.firstOpenLine = m_line;
    fillGaps();
    return true;
}

/// Counts the rest of the piece, which lies behind the block of numbers.
void RowReader::noteSection(const char *text, const char *end)
{
    const qint64 rest = lineEnds(text, end);
    m_rows.ended = true;
    m_rows.openLines += rest;
    m_rows.openTextLines += rest;
    if (m_rows.firstOpenLine < 0)
        m_rows.firstOpenLine = m_line;
    m_rows.lines = m_line + rest;
}

} // namespace

void TextRows::reset(const STextLayout &layout, qint64 capacity)
{
    const auto columns = size_t(layout.columns.size());
    if (capacity > m_capacity || m_columns.size() != columns) {
        m_columns.clear();
        m_columns.resize(columns);
        m_capacity = capacity + capacity / 8;
        for (size_t i = 0; i < columns; ++i) {
            if (layout.columns[int(i)].isRead())
                m_columns[i].reset(new double[size_t(
                    m_capacity + BareLines::spareRows)]); // not filled: every row that counts is written
        }
    }
    lines = rows = badLines = openLines = openTextLines = comments = 0;
    firstBadLine = firstOpenLine = -1;
    ended = usedOtherSign = false;
}

BareLines *TextRows::bareLines(char separator)
{
    if (!BareLines::areSupported())
        return nullptr;
    std::vector<double *> places;
    for (const std::unique_ptr<double[]> &column : m_columns)
        places.push_back(column.get());
    m_bareLines.prepareFor(separator, std::move(places));
    return &m_bareLines;
}

void convertText(const char *begin, const char *end, const STextLayout &layout, TextRows &rows)
{
    rows.reset(layout, lineEnds(begin, end));
    RowReader(layout, rows).read(begin, end);
}
