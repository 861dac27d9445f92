// SPDX-License-Identifier: MIT
#include "views/reading/TextDecoder.h"

#include <algorithm>

namespace {

/// How many of the bytes at even or odd places are zero.
int zeros(const QByteArray &bytes, int parity)
{
    int count = 0;
    for (int i = parity; i < bytes.size(); i += 2)
        count += int(bytes.at(i) == '\0');
    return count;
}

void appendUtf8(quint32 character, QByteArray &text)
{
    const auto tail = [&](int shift) { text += char(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        text += char(character);
    } else if (character < 0x800) {
        text += char(0xC0 | (character >> 6));
        tail(0);
    } else if (character < 0x10000) {
        text += char(0xE0 | (character >> 12));
        tail(6);
        tail(0);
    } else {
        text += char(0xF0 | (character >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

constexpr quint32 replacement = 0xFFFD; // of what isn't a character

} // namespace

TextDecoder::TextDecoder(const QByteArray &front)
{
    constexpr int telling = 64; // bytes
    const QByteArray sample = front.left(telling);
    if (front.startsWith("\xEF\xBB\xBF")) {
        m_markSize = 3;
    } else if (front.startsWith("\xFF\xFE") || front.startsWith("\xFE\xFF")) {
        m_encoding = front.at(0) == '\xFF' ? Encoding::Utf16Little : Encoding::Utf16Big;
        m_markSize = 2;
    } else if (sample.size() >= 4 && zeros(sample, 1) == sample.size() / 2 && zeros(sample, 0) == 0) {
        m_encoding = Encoding::Utf16Little;
    } else if (sample.size() >= 4 && zeros(sample, 0) == (sample.size() + 1) / 2 && zeros(sample, 1) == 0) {
        m_encoding = Encoding::Utf16Big;
    }
}

void TextDecoder::decode(const char *raw, qint64 count, QByteArray &text)
{
    if (isPlain()) {
        text.append(raw, int(count));
        return;
    }
    for (const char *const end = raw + count; raw != end; ++raw) {
        if (!m_hasHalf) {
            m_half = *raw;
            m_hasHalf = true;
            continue;
        }
        m_hasHalf = false;
        const auto first = quint8(m_half);
        const auto second = quint8(*raw);
        appendUnit(m_encoding == Encoding::Utf16Little ? quint16(first | second << 8) : quint16(first << 8 | second),
                   text);
    }
}

void TextDecoder::appendUnit(quint16 unit, QByteArray &text)
{
    const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
    const bool isLow = unit >= 0xDC00 && unit < 0xE000;
    const quint16 high = m_highSurrogate;
    m_highSurrogate = isHigh ? unit : quint16(0);
    if (isLow && high) {
        appendUtf8(0x10000 + ((high - 0xD800u) << 10) + (unit - 0xDC00u), text);
        return;
    }
    if (high || isLow)
        appendUtf8(replacement, text);
    if (!isHigh && !isLow)
        appendUtf8(unit, text);
}
