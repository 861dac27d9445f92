// SPDX-License-Identifier: MIT
#include "views/reading/TextFeeder.h"

#include "views/reading/TextRows.h"

#include <algorithm>
#include <cstring>
#include <utility>

TextFeeder::TextFeeder(InputFile &file, const QByteArray &front, int pieceSize)
    : m_file(file),
      m_pieceSize(pieceSize),
      m_decoder(front)
{
    char mark[4];
    qint64 count = 0;
    for (int left = m_decoder.markSize(); left > 0; left -= int(count)) {
        if (m_file.read(mark, left, count) != InputFile::Got::Bytes)
            return;
    }
}

const char *TextFeeder::wholeEnd(qint64 most) const
{
    const char *const sampleEnd = begin() + std::min(most, qint64(m_held));
    const char *at = sampleEnd;
    while (at != begin() && at[-1] != '\n')
        --at;
    if (at != begin())
        return at;
    const auto *first = static_cast<const char *>(std::memchr(sampleEnd, '\n', size_t(end() - sampleEnd)));
    return first ? first + 1 : begin();
}

InputFile::Got TextFeeder::readMore()
{
    const int from = m_held;
    qint64 count = 0;
    makeRoom(m_bytes, m_held);
    if (!m_decoder.isPlain())
        m_raw.resize(m_pieceSize);
    char *const target = m_decoder.isPlain() ? m_bytes.data() + m_held : m_raw.data();
    const InputFile::Got got = m_file.read(target, m_pieceSize, count);
    if (got != InputFile::Got::Bytes)
        return got;
    m_held += int(count);
    if (!m_decoder.isPlain()) {
        m_bytes.resize(from);
        m_decoder.decode(target, count, m_bytes);
        m_held = int(m_bytes.size());
        makeRoom(m_bytes, m_held);
    }
    lookAtLineEnds(from);
    return got;
}

/// Finds out whether lines end in carriage returns and nothing else, as on computers of long ago, and replaces them.
void TextFeeder::lookAtLineEnds(int from)
{
    char *const text = m_bytes.data();
    if (m_lineEnds == LineEnds::Unknown) {
        const auto *first = static_cast<const char *>(std::memchr(text, '\r', size_t(m_held)));
        if (std::memchr(text + from, '\n', size_t(m_held - from)))
            m_lineEnds = LineEnds::Usual;
        else if (first && first + 1 != end()) // the last one may be half of CRLF
            m_lineEnds = LineEnds::Old;
        from = 0;
    }
    if (m_lineEnds == LineEnds::Old)
        std::replace(text + from, text + m_held, '\r', '\n');
}

void TextFeeder::makeRoom(QByteArray &bytes, int held) const
{
    const int needed = held + m_pieceSize + textMargin;
    if (bytes.size() < needed)
        bytes.resize(needed);
}

void TextFeeder::endLastLine()
{
    if (m_held == 0 || end()[-1] == '\n')
        return;
    makeRoom(m_bytes, m_held);
    m_bytes.data()[m_held++] = '\n';
}

void TextFeeder::skip(qint64 size)
{
    m_held -= int(size);
    std::memmove(m_bytes.data(), m_bytes.constData() + size, size_t(m_held));
    m_known = 0;
}

InputFile::Got TextFeeder::next(STextPiece &piece)
{
    for (;;) {
        const char *behindLast = end();
        while (behindLast != begin() + m_known && behindLast[-1] != '\n')
            --behindLast;
        if (behindLast != begin() + m_known) {
            handOver(piece, int(behindLast - begin()));
            return InputFile::Got::Bytes;
        }
        m_known = m_held;
        if (isLineTooLong())
            return InputFile::Got::Error;
        const InputFile::Got got = readMore();
        if (got != InputFile::Got::Bytes)
            return got;
    }
}

void TextFeeder::handOver(STextPiece &piece, int size)
{
    char *const text = m_bytes.data();
    std::memset(text + m_held, 0, textMargin);
    const int rest = m_held - size;
    makeRoom(piece.bytes, rest);
    std::memcpy(piece.bytes.data(), text + size, size_t(rest));
    std::swap(m_bytes, piece.bytes);
    m_held = rest;
    m_known = 0;
    piece.size = size;
}
