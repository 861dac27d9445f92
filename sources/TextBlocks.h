// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

/// A line that is longer ends the reading: twice that is needed as QString. Bytes.
constexpr int longestLine = 1 << 29;

QString lineTooLong(); ///< says that there was one, for people

/// Whole lines. Behind them are a line end, if the last line has none, and bytes that may be looked at.
struct STextBlock
{
    const char *begin() const { return bytes.constData(); }
    const char *end() const { return begin() + size; }

    QByteArray bytes; ///< storage; more than the text
    int size = 0;     ///< of the text
    int lines = 0;
    bool isLong = false; ///< longer than a block should be, because of a line that is
};

/// Cuts the text that a device gives into blocks, which are read one after the other and are all that is kept of it.
class TextBlocks
{
public:
    /// Reads `blockSize` bytes at once, at least 1.
    TextBlocks(QIODevice &device, int blockSize) : m_device(device), m_blockSize(blockSize) {}

    /// Replaces `block` by the next one, whose storage is used again. False at the end of the text and on an error.
    bool next(STextBlock &block);

    qint64 taken() const { return m_taken; }         ///< size of the blocks so far
    const QString &error() const { return m_error; } ///< empty when there was none; for people

private:
    int readLines();
    bool readMore();
    void makeRoom(QByteArray &bytes, int held) const;
    void handOver(STextBlock &block, int size);

    QIODevice &m_device;
    int m_blockSize;
    QByteArray m_bytes;
    int m_held = 0; ///< bytes of text at the front of m_bytes
    qint64 m_taken = 0;
    QString m_error;
};
