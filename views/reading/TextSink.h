// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/TextLayout.h"

#include <memory>
#include <vector>

class SeriesData;
class TextRows;

/// Appends the rows of a text, piece after piece, to a series for each column, and counts its lines.
class TextSink
{
public:
    explicit TextSink(const STextLayout &layout);

    /// The series of a column; null if it's not read.
    const std::shared_ptr<SeriesData> &series(int column) const { return m_series[size_t(column)]; }

    /// Appends what became of the next piece. False if memory ran out.
    bool take(const TextRows &rows);

    qint64 rows() const { return m_rows; }
    qint64 badLines() const { return m_badLines; }
    qint64 firstBadLine() const { return m_firstBadLine; } ///< counted from 1; 0 if there is none
    qint64 linesBehind() const { return m_openTextLines; } ///< with text, behind the numbers
    qint64 comments() const { return m_comments; }
    bool usedOtherSign() const { return m_usedOtherSign; }

private:
    qint64 rowsOfAll() const;
    bool appendGaps(qint64 count);
    void noteBadLines(qint64 count, qint64 first);

    std::vector<std::shared_ptr<SeriesData>> m_series;
    qint64 m_lines; ///< in front of the next piece
    qint64 m_rows = 0;
    qint64 m_badLines = 0;
    qint64 m_firstBadLine = 0;
    qint64 m_openLines = 0; ///< that hold nothing understandable, since the last row
    qint64 m_openTextLines = 0;
    qint64 m_firstOpenLine = 0;
    qint64 m_comments = 0;
    bool m_ended = false; ///< what follows the numbers has begun
    bool m_usedOtherSign = false;
};
