// SPDX-License-Identifier: MIT
#include "views/reading/BareLines.h"

#include "common/Avx2.h"
#include "views/reading/TextFields.h"

#include <algorithm>
#include <utility>

#if defined(VORLIX_AVX2)
#  include <immintrin.h>
#endif

bool BareLines::areSupported()
{
    return hasAvx2();
}

#if !defined(VORLIX_AVX2)

void BareLines::prepareFor(char, std::vector<double *>) {}

const char *BareLines::take(const char *text, const char *, char, qint64 &)
{
    return text;
}

#else

namespace {

constexpr int windowSize = SPieceShape::mostBytes;
constexpr int setBits = 8;
constexpr int setSize = 2; // shapes for whose keys there is the same place
constexpr int mostPatience = 4096;

/// The first bytes of a text, and a bit for each.
struct SWindow
{
    __m256i bytes;
    __m256i others; ///< not digits
};

VORLIX_AVX2_INLINE quint32 bitsOf(__m256i truths)
{
    return quint32(_mm256_movemask_epi8(truths));
}

VORLIX_AVX2_INLINE quint32 placesOf(char wanted, __m256i bytes)
{
    return bitsOf(_mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(wanted)));
}

VORLIX_AVX2_INLINE SWindow windowAt(const char *text)
{
    const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(text));
    const __m256i shifted = _mm256_sub_epi8(bytes, _mm256_set1_epi8('0' - 128)); // digits are the ten smallest then
    return {bytes, _mm256_cmpgt_epi8(shifted, _mm256_set1_epi8(9 - 128))};
}

/// Behind the fourth of some places, or behind the last one if there are fewer: bits for the bytes up to there.
VORLIX_AVX2_INLINE quint32 upToFourth(quint32 places)
{
    quint32 fourth = _blsr_u32(_blsr_u32(_blsr_u32(places)));
    return fourth ? _blsmsk_u32(fourth) : ~quint32(0) >> __builtin_clz(places);
}

/// What to look for a shape by. Never 0. Shapes of the same key are seldom: one may have a blank for another's "+".
VORLIX_AVX2_INLINE quint64 keyOf(const SWindow &window, quint32 piece, bool endsLine)
{
    const quint32 signs = placesOf('-', window.bytes) & piece; // never the last byte
    return (bitsOf(window.others) & piece) | quint64(signs) << windowSize | quint64(endsLine) << (2 * windowSize - 1);
}

size_t setOf(quint64 key)
{
    return size_t((key * 0x9E3779B97F4A7C15u) >> (64 - setBits)) * setSize;
}

/// The shape of this key, if it's known, or another one.
VORLIX_AVX2_INLINE const SPieceShape &shapeFor(quint64 key, const SPieceShape *shapes)
{
    const SPieceShape *const set = shapes + setOf(key);
    return set[set->key == key ? 0 : 1];
}

VORLIX_AVX2_INLINE bool fits(const SPieceShape &shape, quint64 key, const SWindow &window, quint32 piece)
{
    const __m256i others = _mm256_load_si256(reinterpret_cast<const __m256i *>(shape.others));
    const quint32 equal = bitsOf(_mm256_cmpeq_epi8(_mm256_and_si256(window.bytes, window.others), others));
    return shape.key == key && (piece & ~equal) == 0;
}

VORLIX_AVX2_INLINE __m128i numberAt(const char *text)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(text));
}

/// The digits in two rows, in fours. One begins with a number's characters, the second with the other's.
VORLIX_AVX2_INLINE __m256i foursOf(const char *text, const SPieceShape &shape, int rows, int number, int other)
{
    const __m256i bytes = _mm256_set_m128i(numberAt(text + shape.starts[other]), numberAt(text + shape.starts[number]));
    const __m256i order = _mm256_load_si256(reinterpret_cast<const __m256i *>(shape.digits[rows]));
    const __m256i digits = _mm256_shuffle_epi8(_mm256_sub_epi8(bytes, _mm256_set1_epi16('0' | '0' << 8)), order);
    const __m256i pairs = _mm256_maddubs_epi16(digits, _mm256_set1_epi16(10 | 1 << 8));
    return _mm256_madd_epi16(pairs, _mm256_set1_epi32(100 | 1 << 16));
}

/// Two fours each in one: in each half those of `first`, then those of `second`.
VORLIX_AVX2_INLINE __m256i eightsOf(__m256i first, __m256i second)
{
    return _mm256_madd_epi16(_mm256_packus_epi32(first, second), _mm256_set1_epi32(10'000 | 1 << 16));
}

/// What the digits of four numbers say, without their points; 0 for those that aren't there.
VORLIX_AVX2_INLINE __m256d digitsOf(const char *text, const SPieceShape &shape)
{
    if (shape.isNarrow) {
        const __m256i fours = foursOf(text, shape, 0, 0, 2);
        const __m256i numbers = _mm256_permute4x64_epi64(eightsOf(fours, fours), 2 << 2);
        return _mm256_cvtepi32_pd(_mm256_castsi256_si128(numbers));
    }
    const __m256i eights = eightsOf(foursOf(text, shape, 0, 0, 1), foursOf(text, shape, 2, 2, 3));
    const __m256d upper = _mm256_set_pd(1.0, 1e8, 1.0, 1e8);
    const __m256d even = _mm256_mul_pd(_mm256_cvtepi32_pd(_mm256_castsi256_si128(eights)), upper);
    const __m256d odd = _mm256_mul_pd(_mm256_cvtepi32_pd(_mm256_extracti128_si256(eights, 1)), upper);
    return _mm256_hadd_pd(even, odd);
}

/// The four numbers of a piece. A division rounds once, as both are exact.
VORLIX_AVX2_INLINE __m256d valuesOf(const char *text, const SPieceShape &shape)
{
    return _mm256_div_pd(digitsOf(text, shape), _mm256_load_pd(shape.scales));
}

/// Writes the values of one line, of four if there is a single column.
template <int columns>
VORLIX_AVX2_INLINE void put(__m256d values, double *const *places, qint64 row)
{
    const __m128d front = _mm256_castpd256_pd128(values);
    if constexpr (columns == 1) {
        _mm256_storeu_pd(places[0] + row, values);
        return;
    }
    _mm_storel_pd(places[0] + row, front);
    _mm_storeh_pd(places[1] + row, front);
    if constexpr (columns > 2)
        _mm_storel_pd(places[2] + row, _mm256_extractf128_pd(values, 1));
    if constexpr (columns > 3)
        _mm_storeh_pd(places[3] + row, _mm256_extractf128_pd(values, 1));
}

/// Writes four values, the first one last: those that aren't there go where others will be written, or were to be.
VORLIX_AVX2_INLINE void putReversed(__m256d values, double *const *places, qint64 row)
{
    const __m128d front = _mm256_castpd256_pd128(values);
    const __m128d back = _mm256_extractf128_pd(values, 1);
    _mm_storeh_pd(places[3] + row, back);
    _mm_storel_pd(places[2] + row, back);
    _mm_storeh_pd(places[1] + row, front);
    _mm_storel_pd(places[0] + row, front);
}

} // namespace

/// Where it doesn't go on.
struct BareLines::SStop
{
    const char *text;            ///< behind the lines that were taken
    const char *piece = nullptr; ///< of a shape that isn't known; null if it's something else that stops
    quint32 bytes = 0;           ///< of the piece, a bit each
    quint64 key = 0;
};

/// Lines of at most four columns, each in a window. A single column's are taken four at a time.
template <int columns>
VORLIX_AVX2 BareLines::SStop BareLines::takeShortLines(const char *text, const char *end, qint64 &row) const
{
    double *const *const places = m_places.data();
    qint64 next = row;
    SStop stop{text};
    while (end - text >= windowSize) {
        const SWindow window = windowAt(text);
        const quint32 newlines = placesOf('\n', window.bytes);
        if (newlines == 0)
            break;
        const quint32 piece = columns == 1 ? upToFourth(newlines) : _blsmsk_u32(newlines);
        const quint64 key = keyOf(window, piece, true);
        const SPieceShape &shape = shapeFor(key, m_shapes.data());
        if (!fits(shape, key, window, piece)) {
            stop = {text, text, piece, key};
            break;
        }
        if (columns != 1 && shape.numbers != columns)
            break;
        put<columns>(valuesOf(text, shape), places, next);
        next += columns == 1 ? shape.numbers : 1;
        text += columns == 1 ? windowSize - __builtin_clz(piece) : _tzcnt_u32(newlines) + 1;
    }
    row = next;
    stop.text = text;
    return stop;
}

/// A line of any number of columns, a piece at a time.
template <bool isBlank>
VORLIX_AVX2 BareLines::SStop BareLines::takeLongLine(const char *text, const char *end, qint64 row) const
{
    quint32 endsLine = 0;
    const char *at = text;
    for (int column = 0; endsLine == 0;) {
        if (end - at < windowSize)
            return {text};
        const SWindow window = windowAt(at);
        const quint32 newlines = placesOf('\n', window.bytes);
        const quint32 separators = placesOf(m_separator, window.bytes);
        const quint32 dividers = newlines | (isBlank ? separators & ~(separators << 1 | 1) : separators);
        if (dividers == 0)
            return {text};
        const quint32 piece = upToFourth(dividers) & (newlines ? _blsmsk_u32(newlines) : ~quint32(0));
        endsLine = newlines & piece;
        const quint64 key = keyOf(window, piece, endsLine != 0);
        const SPieceShape &shape = shapeFor(key, m_shapes.data());
        if (!fits(shape, key, window, piece))
            return {text, at, piece, key};
        if (column + shape.numbers > m_columns || (endsLine && column + shape.numbers < m_columns))
            return {text};
        putReversed(valuesOf(at, shape), m_places.data() + column, row);
        column += shape.numbers;
        at += windowSize - __builtin_clz(piece);
    }
    return {at};
}

void BareLines::prepareFor(char separator, std::vector<double *> places)
{
    const int columns = int(places.size());
    m_places = std::move(places);
    m_places.insert(m_places.end(), SPieceShape::mostNumbers - 1, m_places.back());
    if (columns == m_columns && separator == m_separator)
        return;
    m_columns = columns;
    m_separator = separator;
    forget();
}

void BareLines::forget()
{
    m_shapes.assign(setSize << setBits, {});
    m_patience = mostPatience / 8;
}

const char *BareLines::take(const char *text, const char *end, char point, qint64 &row)
{
    if (point == m_separator)
        return text;
    if (point != std::exchange(m_point, point))
        forget();
    if (m_patience < 0) {
        ++m_patience;
        return text;
    }
    SStop stop{text};
    do {
        const qint64 before = row;
        stop = takeKnown(stop.text, end, row);
        m_patience = int(std::min<qint64>(m_patience + row - before, mostPatience));
    } while (stop.piece && learn(stop));
    return stop.text;
}

BareLines::SStop BareLines::takeKnown(const char *text, const char *end, qint64 &row) const
{
    for (;;) {
        SStop stop{text};
        switch (m_columns) {
        case 1:
            return takeShortLines<1>(text, end, row);
        case 2:
            stop = takeShortLines<2>(text, end, row);
            break;
        case 3:
            stop = takeShortLines<3>(text, end, row);
            break;
        case 4:
            stop = takeShortLines<4>(text, end, row);
            break;
        }
        if (stop.piece)
            return stop;
        text = stop.text;
        stop = m_separator == blankSeparator ? takeLongLine<true>(text, end, row) : takeLongLine<false>(text, end, row);
        if (stop.text == text)
            return stop;
        text = stop.text;
        ++row;
    }
}

/// Learns the shape of a piece. False if it isn't bare, or if too much was learned of late.
bool BareLines::learn(const SStop &stop)
{
    constexpr int cost = 8;   // lines that must be taken in return
    constexpr int pause = 64; // calls of take()
    if (m_patience < cost) {
        m_patience = -pause;
        return false;
    }
    m_patience -= cost;
    SPieceShape shape;
    const char separator = m_columns == 1 ? '\n' : m_separator; // one number in a line
    const char *const pieceEnd = stop.piece + windowSize - __builtin_clz(stop.bytes);
    if (!findShape(stop.piece, pieceEnd, separator, m_point, shape))
        return false;
    shape.key = stop.key;
    SPieceShape *const set = &m_shapes[setOf(stop.key)];
    set[1] = std::exchange(set[0], shape);
    return true;
}
#endif
