// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/TextFields.h"
#include "views/reading/TextNumber.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// What the user says about a text; the rest is guessed.
struct STextHints
{
    char separator = 0; ///< 0: guessed; blankSeparator: any number of blanks and tabs
    std::optional<DecimalSign> decimalSign;
    QByteArray commentPrefix; ///< empty: "#", "%" and "//"
    qint64 skipLines = 0;     ///< lines at the beginning that are not looked at
};

/// A column of a text.
struct STextColumn
{
    enum class Kind {
        Number,
        IsoTime,      ///< dates, or dates and times
        Seconds,      ///< since 1970
        Milliseconds, ///< since 1970
        Text          ///< holds no numbers and is not read
    };
    bool isTime() const { return kind != Kind::Number && kind != Kind::Text; }
    bool isRead() const { return kind != Kind::Text; }

    Kind kind = Kind::Number;
    QString name;
    QString unit;
    qint64 origin = 0; ///< of times: the seconds since 1970 that their values count from
};

/// How the lines of a text are to be read, and what was guessed for that.
struct STextLayout
{
    char separator = blankSeparator;
    DecimalSign decimalSign = DecimalSign::Either; ///< Either: none was seen yet
    QVector<QByteArray> commentPrefixes;
    bool skipsBlankLines = false; ///< otherwise a blank line is a gap
    bool hasSections = false;     ///< lines like "$DATA:" divide the text, and the next one ends the numbers
    QVector<STextColumn> columns;
    qint64 headLines = 0;     ///< in front of the block of numbers, skipped ones and comments included
    qint64 headSize = 0;      ///< bytes of those lines
    int timeColumn = -1;      ///< of times that ascend, fit to be x
    bool firstMayBeX = false; ///< numbers in the first column ascend, and those in no other column do
    QStringList remarks;      ///< doubts and choices, for people
};

/// A layout, or why there is none yet.
struct SDetection
{
    std::optional<STextLayout> layout;
    QString obstacle;     ///< for people, behind the name of the file: "line 1 has 5000 columns …"
    bool isFinal = false; ///< more text doesn't help
};

/// The most columns that are read.
constexpr int mostColumns = 1000;

/// Finds out how to read a text from its beginning, whole lines in UTF-8 or any encoding that extends ASCII. Any
/// thread.
SDetection detectLayout(const char *begin, const char *end, const STextHints &hints);

/// Whether a line, without blanks around it, is a comment.
bool isComment(const SField &line, const QVector<QByteArray> &prefixes);

/// Where a comment behind the values of a line begins: a prefix with a blank in front; `end` if there is none.
const char *commentBehind(const char *begin, const char *end, const QVector<QByteArray> &prefixes);

/// Whether a line, without blanks around it, is the name of a section: "$DATA:".
bool isSection(const SField &line);

/// What was guessed, in words, such as "3 columns with a semicolon between, decimal comma, names in line 1".
QString describe(const STextLayout &layout);
