// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/PieceShape.h"

#include <vector>

/// Takes lines in which nothing but short numbers and what divides them stands, at the highest speed: with instructions
/// that not every processor has. Most lines have the shape of one before, of which it's known where everything is.
class BareLines
{
public:
    /// Whether this processor has what it takes.
    static bool areSupported();

    /// What the lines to come are like, and where the values of each column go. More than one of them must be free
    /// behind the last row: `spareRows`. The shapes of other lines are forgotten.
    void prepareFor(char separator, std::vector<double *> places);
    static constexpr int spareRows = SPieceShape::mostNumbers - 1;

    /// Takes lines from `text` on, as far as they are bare, and writes their values from `row` on. Returns what is
    /// behind them; `row` becomes the next one, and may have been written to. What is left may be a few bare lines.
    /// textMargin bytes may be read from `end` on.
    const char *take(const char *text, const char *end, char point, qint64 &row);

private:
    struct SStop;
    SStop takeKnown(const char *text, const char *end, qint64 &row) const;
    template <int columns>
    SStop takeShortLines(const char *text, const char *end, qint64 &row) const;
    template <bool isBlank>
    SStop takeLongLine(const char *text, const char *end, qint64 row) const;
    bool learn(const SStop &stop);
    void forget();

    std::vector<SPieceShape> m_shapes;
    std::vector<double *> m_places; ///< and some more of the last column
    int m_columns = 0;
    char m_separator = 0;
    char m_point = 0;
    int m_patience = 0; ///< with lines of ever other shapes
};
