// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// Makes text that extends ASCII, with line ends of one kind, of what is in a file.
class TextDecoder
{
public:
    enum class Encoding { Plain, Utf16Little, Utf16Big };

    TextDecoder() = default;
    /// For a text that begins with these bytes: a byte order mark or the zeros of UTF-16 tell.
    explicit TextDecoder(const QByteArray &front);

    Encoding encoding() const { return m_encoding; }
    bool isPlain() const { return m_encoding == Encoding::Plain; }
    /// The text's bytes from the beginning that stand for nothing.
    int markSize() const { return m_markSize; }

    /// Appends the text that raw bytes stand for. Characters may be cut anywhere: the rest is kept for the next call.
    void decode(const char *raw, qint64 count, QByteArray &text);

private:
    void appendUnit(quint16 unit, QByteArray &text);

    Encoding m_encoding = Encoding::Plain;
    int m_markSize = 0;
    char m_half = 0; ///< of a unit
    bool m_hasHalf = false;
    quint16 m_highSurrogate = 0;
};
