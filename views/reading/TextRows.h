// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/BareLines.h"
#include "views/reading/TextLayout.h"

#include <memory>
#include <vector>

/// Bytes behind a text that may be looked at. Copies of a text keep as many free.
constexpr int textMargin = 16;

/// What became of a piece of text: rows of values, one for each line that isn't a comment.
///
/// Lines that hold nothing understandable are rows of gaps, except at the end of the piece: there they are only
/// counted, since they may be what follows the numbers.
class TextRows
{
public:
    qint64 lines = 0;         ///< all of the piece
    qint64 rows = 0;          ///< with values, and the gaps between them
    qint64 badLines = 0;      ///< of the rows, those with something that was not understood, or with nothing
    qint64 firstBadLine = -1; ///< counted from 0 in the piece; -1 if there is none
    qint64 openLines = 0;     ///< behind the last row; they hold nothing understandable
    qint64 openTextLines = 0; ///< of those, the ones that aren't blank
    qint64 firstOpenLine = -1;
    qint64 comments = 0;
    bool ended = false;         ///< a new section began: `openLines` are what follows the numbers
    bool usedOtherSign = false; ///< a comma was decimal before it was known whether one is

    /// The values of a column, `rows` of them; null if it's not read.
    const double *column(int index) const { return m_columns[size_t(index)].get(); }

    /// Makes room for a number of rows and forgets those that were there. Memory is used again.
    void reset(const STextLayout &layout, qint64 capacity);
    double *place(int index) { return m_columns[size_t(index)].get(); }
    /// What takes most lines, if all columns are read. It knows what those before were like. Null where there is no
    /// such thing.
    BareLines *bareLines(char separator);

private:
    std::vector<std::unique_ptr<double[]>> m_columns;
    qint64 m_capacity = 0;
    BareLines m_bareLines;
};

/// Converts whole lines; `end[-1]` is a line end, and textMargin bytes may be read from `end` on. Takes any bytes. Any
/// thread; several at once with rows of their own.
void convertText(const char *begin, const char *end, const STextLayout &layout, TextRows &rows);
