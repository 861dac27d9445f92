// SPDX-License-Identifier: MIT
#include "views/reading/TextSink.h"

#include "views/reading/TextRows.h"
#include "views/store/SeriesData.h"

#include <algorithm>
#include <array>
#include <limits>

TextSink::TextSink(const STextLayout &layout) : m_lines(layout.headLines)
{
    for (const STextColumn &column : layout.columns)
        m_series.push_back(column.isRead() ? SeriesData::create(SampleType::Float64) : nullptr);
}

bool TextSink::take(const TextRows &rows)
{
    if (m_ended) {
        m_openTextLines += rows.lines;
        return true;
    }
    bool appended = true;
    if (rows.rows > 0) {
        appended = appendGaps(m_openLines);
        noteBadLines(m_openLines, m_firstOpenLine);
        m_openLines = 0;
        m_openTextLines = 0;
        for (size_t i = 0; i < m_series.size() && appended; ++i)
            appended = !m_series[i] || m_series[i]->append(rows.column(int(i)), rows.rows);
        m_rows += rows.rows;
    }
    noteBadLines(rows.badLines, m_lines + rows.firstBadLine + 1);
    if (m_openLines == 0)
        m_firstOpenLine = m_lines + rows.firstOpenLine + 1;
    m_openLines += rows.openLines;
    m_openTextLines += rows.openTextLines;
    m_comments += rows.comments;
    m_lines += rows.lines;
    m_ended = rows.ended;
    m_usedOtherSign |= rows.usedOtherSign;
    if (!appended)
        m_rows = rowsOfAll();
    return appended;
}

/// How many rows all columns have: when memory runs out, some have more.
qint64 TextSink::rowsOfAll() const
{
    qint64 rows = m_rows;
    for (const std::shared_ptr<SeriesData> &series : m_series)
        rows = series ? std::min(rows, series->end()) : rows;
    return rows;
}

bool TextSink::appendGaps(qint64 count)
{
    constexpr qint64 portion = 512;
    std::array<double, portion> gaps;
    std::fill_n(gaps.begin(), std::min(count, portion), std::numeric_limits<double>::quiet_NaN());
    m_rows += count;
    for (; count > 0; count -= portion) {
        for (const std::shared_ptr<SeriesData> &series : m_series) {
            if (series && !series->append(gaps.data(), std::min(count, portion)))
                return false;
        }
    }
    return true;
}

void TextSink::noteBadLines(qint64 count, qint64 first)
{
    if (count > 0 && m_badLines == 0)
        m_firstBadLine = first;
    m_badLines += count;
}
