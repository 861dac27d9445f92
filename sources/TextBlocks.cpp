// SPDX-License-Identifier: MIT
#include "sources/TextBlocks.h"

#include "common/LineEnds.h"

#include <QIODevice>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr int margin = 16; // bytes behind the text that are there and not arbitrary

} // namespace

QString lineTooLong()
{
    return QStringLiteral("it has a line of more than %1 bytes").arg(longestLine);
}

bool TextBlocks::next(STextBlock &block)
{
    const int size = readLines();
    if (size == 0)
        return false;
    handOver(block, size);
    return true;
}

/// Reads until a line is whole or the text ends. Returns the size of the whole lines.
int TextBlocks::readLines()
{
    int known = m_held; // holds no line end
    while (readMore()) {
        const char *front = m_bytes.constData();
        const char *behindLast = front + m_held;
        while (behindLast != front + known && behindLast[-1] != '\n')
            --behindLast;
        if (behindLast != front + known)
            return int(behindLast - front);
        known = m_held;
    }
    return m_error.isEmpty() ? m_held : 0;
}

bool TextBlocks::readMore()
{
    if (m_held == longestLine) {
        m_error = lineTooLong();
        return false;
    }
    makeRoom(m_bytes, m_held);
    const qint64 count = m_device.read(m_bytes.data() + m_held, std::min(m_blockSize, longestLine - m_held));
    if (count < 0)
        m_error = m_device.errorString();
    if (count <= 0)
        return false;
    m_held += int(count);
    return true;
}

/// Makes room for another block behind the first `held` bytes.
void TextBlocks::makeRoom(QByteArray &bytes, int held) const
{
    const int needed = held + m_blockSize + margin;
    if (bytes.size() < needed)
        bytes.resize(needed);
}

void TextBlocks::handOver(STextBlock &block, int size)
{
    char *text = m_bytes.data();
    std::memset(text + m_held, 0, margin);
    if (text[size - 1] != '\n')
        text[size] = '\n'; // the last line; there is nothing behind it

    if (block.isLong)
        block.bytes = QByteArray();
    const int rest = m_held - size;
    makeRoom(block.bytes, rest);
    std::memcpy(block.bytes.data(), text + size, size_t(rest));
    std::swap(m_bytes, block.bytes);
    m_held = rest;
    m_taken += size;

    block.size = size;
    block.lines = int(lineEnds(block.begin(), block.end())) + int(block.end()[-1] != '\n');
    block.isLong = size > 2 * m_blockSize;
}
