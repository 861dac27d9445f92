// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// What pieces of a text look like that differ in their digits alone, and where the digits of their numbers are.
struct SPieceShape
{
    static constexpr int mostBytes = 32;      ///< of a piece
    static constexpr int mostNumbers = 4;     ///< in a piece
    static constexpr int mostCharacters = 16; ///< of a number, without its sign
    static constexpr int mostDigits = 15;     ///< all of their values are doubles

    alignas(32) char others[mostBytes] = {}; ///< zeros where digits are, and behind the piece
    /// Of each number, which of its characters to put in a row of 16, so that all of its digits stand at the end; -1
    /// for a zero in front of them. What isn't a number is all zeros. Of a narrow piece, a row is for the first number
    /// and the second, and the next one for the others: each has its digits at the end of a half. Those rows begin with
    /// the characters of the first number and of the third.
    alignas(32) qint8 digits[mostNumbers][mostCharacters];
    bool isNarrow = false;                  ///< no number has more than eight digits, and two lie within 16 bytes
    alignas(32) double scales[mostNumbers]; ///< divide the digits; with the number's sign
    quint8 starts[mostNumbers] = {};        ///< the numbers' first characters behind the sign
    int numbers = 0;
    quint64 key = 0; ///< for whoever keeps shapes
};

/// The shape of the bytes between `text` and `end`, at most mostBytes. These must be numbers and what divides them:
/// behind each one the separator, or a line end behind the last one; blanks around don't matter. False if they aren't,
/// or if there are too many numbers or too many digits.
bool findShape(const char *text, const char *end, char separator, char point, SPieceShape &shape);
