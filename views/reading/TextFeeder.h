// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/InputFile.h"
#include "views/reading/TextDecoder.h"

/// A piece of a text: whole lines. Behind them are bytes that may be looked at.
struct STextPiece
{
    const char *begin() const { return bytes.constData(); }
    const char *end() const { return begin() + size; }

    QByteArray bytes; ///< storage; more than the text
    int size = 0;
};

/// Cuts the text of a file into pieces. First a sample of it may be looked at.
class TextFeeder
{
public:
    /// `front` are the bytes that `file` will give first, as many as tell the encoding. Reads at most `pieceSize` bytes
    /// at once.
    TextFeeder(InputFile &file, const QByteArray &front, int pieceSize = defaultPieceSize);

    /// Reads some more for the sample.
    InputFile::Got readMore();
    /// What was read and not handed over; ends anywhere.
    const char *begin() const { return m_bytes.constData(); }
    const char *end() const { return begin() + m_held; }
    /// Behind the last line end among the first `most` bytes of that; if there is none, behind the first one.
    const char *wholeEnd(qint64 most) const;
    /// Ends the last line, since no more will come. Nothing happens if it has an end.
    void endLastLine();
    /// Drops that many bytes from the front.
    void skip(qint64 size);

    /// Replaces `piece` by the next whole lines, whose storage is used again. Other answers than Bytes say why there
    /// are none; lines may be whole later.
    InputFile::Got next(STextPiece &piece);

    bool isLineTooLong() const { return m_held > longestTextLine; }
    TextDecoder::Encoding encoding() const { return m_decoder.encoding(); }

    static constexpr int defaultPieceSize = 1 << 17;
    static constexpr int longestTextLine = 1 << 20;

private:
    void makeRoom(QByteArray &bytes, int held) const;
    void lookAtLineEnds(int from);
    void handOver(STextPiece &piece, int size);

    InputFile &m_file;
    int m_pieceSize;
    TextDecoder m_decoder;
    enum class LineEnds { Unknown, Usual, Old } m_lineEnds = LineEnds::Unknown; ///< Old: carriage returns alone
    QByteArray m_raw;                                                           ///< of a text that is decoded
    QByteArray m_bytes;
    int m_held = 0;  ///< bytes of text at the front of m_bytes
    int m_known = 0; ///< of those, in front of which there is no line end
};
