// SPDX-License-Identifier: MIT
#include "views/reading/TextMarks.h"

#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>

#if defined(__SSE2__) && !defined(VORLIX_PLAIN_LANES)
#  include <emmintrin.h>
#endif

namespace {

/// A bit for each byte of a text.
struct SBits
{
    quint64 others = 0; ///< not digits
    quint64 minus = 0;
};

#if defined(__SSE2__) && !defined(VORLIX_PLAIN_LANES)
constexpr int partSize = 16; // bytes
SBits bitsOfPart(const char *text)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text));
    const __m128i shifted = _mm_add_epi8(bytes, _mm_set1_epi8(127 - '9')); // digits are the ten largest then
    const int others = _mm_movemask_epi8(_mm_cmplt_epi8(shifted, _mm_set1_epi8(127 - 9)));
    const int minus = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('-')));
    return {quint64(others), quint64(minus)};
}
#else
constexpr int partSize = 8;

/// The highest bits of all bytes.
quint64 highestBits(quint64 bytes)
{
    return (bytes >> 7 & 0x0101010101010101u) * 0x0102040810204080u >> 56;
}

SBits bitsOfPart(const char *text)
{
    constexpr quint64 each = 0x0101010101010101u;
    const auto bytes = qFromLittleEndian<quint64>(text);
    const quint64 digits = bytes ^ (each * '0');
    const quint64 zeros = bytes ^ (each * '-');
    // Without carries from byte to byte:
    const quint64 others = ((digits & each * 0x7F) + each * (0x7F - 9)) | digits;
    const quint64 minus = ~(((zeros & each * 0x7F) + each * 0x7F) | zeros);
    return {highestBits(others), highestBits(minus)};
}
#endif

constexpr int blockSize = 64;
static_assert(blockSize % partSize == 0);

SBits bitsOfBlock(const char *text, int size)
{
    SBits bits;
    for (int i = 0; i < size; i += partSize) {
        const SBits part = bitsOfPart(text + i);
        bits.others |= part.others << i;
        bits.minus |= part.minus << i;
    }
    if (size < blockSize)
        bits.others &= ~(~quint64(0) << size);
    return bits;
}

/// Writes where the lowest `count` bits are, and anything when there are fewer. Returns the other bits.
quint64 writePlaces(quint64 bits, int count, quint32 base, quint32 *places)
{
    for (int i = 0; i < count; ++i) {
        places[i] = base + quint32(qCountTrailingZeroBits(bits));
        bits &= bits - 1;
    }
    return bits;
}

} // namespace

void TextMarks::find(const char *text, qint64 from, qint64 to)
{
    // Always as many at once as most texts have in a block, so that the processor guesses the way.
    constexpr int few = 8;
    constexpr int many = 16;
    const auto most = size_t(to - from + blockSize);
    if (m_places.size() < most)
        m_places.resize(most);
    quint32 *places = m_places.data();
    *places++ = quint32(from - 1);
    quint64 isBehindOther = 1;
    for (qint64 at = from; at < to; at += blockSize) {
        const SBits found = bitsOfBlock(text + at, int(std::min(to - at, qint64(blockSize))));
        const quint64 signs = found.minus & ((found.others & ~found.minus) << 1 | isBehindOther);
        isBehindOther = (found.others & ~found.minus) >> (blockSize - 1);
        quint64 bits = found.others & ~signs;
        const int count = int(qPopulationCount(bits));
        bits = writePlaces(bits, few, quint32(at), places);
        if (count > few)
            bits = writePlaces(bits, many, quint32(at), places + few);
        if (count > few + many)
            writePlaces(bits, count - few - many, quint32(at), places + few + many);
        places += count;
    }
    m_count = places - m_places.data();
}
