// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/BareLines.h"
#include "views/reading/TextLayout.h"
#include "views/reading/TextMarks.h"

#include <vector>

class TextRows;

/// Takes lines that are written as most are, a plain number in each column, at high speed. Where numbers end is looked
/// up for many lines at once, so that none has to wait for the one in front of it.
class PlainLines
{
public:
    /// For lines between `begin` and `end`; textMargin bytes may be read from there on.
    PlainLines(const STextLayout &layout, TextRows &rows, const char *begin, const char *end);

    /// Takes lines from `text` on, as far as they are plain, and writes their values from `row` on. Returns what is
    /// behind them; `row` becomes the next one, and may have been written to.
    const char *take(const char *text, char point, qint64 &row);

private:
    // A field begins behind a mark. Each of these returns the mark behind what it takes; null if that isn't plain.
    const quint32 *takeBareLine(const quint32 *at, char point, qint64 row) const;
    const quint32 *takeShortNumber(const quint32 *at, char point, double &value) const;
    Q_NEVER_INLINE const quint32 *takeNumber(const quint32 *at, char point, double &value) const;
    Q_NEVER_INLINE const quint32 *takeLine(const quint32 *at, char point, qint64 row) const;
    const quint32 *takeLineEnd(const quint32 *at) const;
    bool isSpecial(const quint32 *at) const;
    const quint32 *skipText(const quint32 *at) const;

    const quint32 *skipBlanks(const quint32 *at) const;
    bool isInnerBlank(char c) const { return c == ' ' || c == m_otherBlank; }
    const char *behind(const quint32 *mark) const { return m_begin + quint32(*mark + 1); }
    const quint32 *lookThrough(const char *text);

    const STextLayout &m_layout;
    const char *const m_begin;
    const char *const m_end;
    const char m_separator;
    const char m_otherBlank;        ///< what may stand around fields, besides a blank
    std::vector<double *> m_places; ///< of columns; null for one that isn't read
    bool m_isPossible;              ///< whether the layout is of that kind, and a division rounds once
    bool m_isAllRead = true;
    BareLines *m_bareLines = nullptr; ///< null if the processor can't take them
    TextMarks m_marks;                ///< of some lines
    const char *m_marksEnd;           ///< behind those
};
