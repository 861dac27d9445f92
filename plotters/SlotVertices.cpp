// SPDX-License-Identifier: MIT
#include "plotters/SlotVertices.h"

#include "common/Series.h"

#include <algorithm>
#include <cstring>

namespace {

// Two values at a time: the compiler does not interleave by itself.

using ValuePair = double __attribute__((vector_size(16)));
using FloatPair = float __attribute__((vector_size(8)));
using IndexPair = int __attribute__((vector_size(8)));
using FourFloats = float __attribute__((vector_size(16)));

static_assert(sizeof(QVector2D) == sizeof(FloatPair), "two floats");

inline FloatPair roundedPair(const double *values)
{
    ValuePair pair;
    std::memcpy(&pair, values, sizeof pair);
    return __builtin_convertvector(pair, FloatPair);
}

inline void store(void *target, FourFloats floats)
{
    std::memcpy(target, &floats, sizeof floats);
}

} // namespace

void writeBarHeights(const double *values, int count, float *heights)
{
    int i = 0;
    for (; i + 2 <= count; i += 2, heights += 8) {
        const FloatPair pair = roundedPair(values + i);
        store(heights, __builtin_shufflevector(pair, FloatPair{}, 2, 2, 0, 0));
        store(heights + 4, __builtin_shufflevector(pair, FloatPair{}, 2, 2, 1, 1));
    }
    if (i < count) {
        const float height = float(values[i]);
        store(heights, FourFloats{0.0f, 0.0f, height, height});
    }
}

void writeAreaVertices(const double *values, int first, int count, QVector2D *fill, QVector2D *border)
{
    int i = 0;
    for (; i + 2 <= count; i += 2, fill += 4, border += 2) {
        const FloatPair x = __builtin_convertvector(IndexPair{first + i, first + i + 1}, FloatPair);
        const FloatPair y = roundedPair(values + i);
        const FourFloats line = __builtin_shufflevector(x, y, 0, 2, 1, 3);
        store(fill, FourFloats{line[0], 0.0f, line[0], line[1]});
        store(fill + 2, FourFloats{line[2], 0.0f, line[2], line[3]});
        store(border, line);
    }
    if (i < count) {
        const float x = float(first + i);
        const float y = float(values[i]);
        fill[0] = QVector2D(x, 0.0f);
        fill[1] = border[0] = QVector2D(x, y);
    }
}

void appendBarIndices(QVector<uint> &indices, int present, int count)
{
    indices.reserve(6 * count);
    for (int done = present; done < count; done += seriesPortion) {
        const int end = std::min(done + seriesPortion, count);
        uint *index = portionAt(indices, 6 * done, 6 * (end - done));
        for (int i = done; i < end; ++i, index += 6) {
            const uint corner = 4u * uint(i);
            index[0] = corner + 1;
            index[1] = corner + 2;
            index[2] = corner;
            index[3] = corner + 1;
            index[4] = corner + 2;
            index[5] = corner + 3;
        }
    }
}
