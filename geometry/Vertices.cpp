// SPDX-License-Identifier: MIT
#include "geometry/Vertices.h"

#include "common/Lanes.h"
#include "common/Storage.h"

#include <algorithm>
#include <cstring>

namespace {

// Two values at a time: the compiler does not interleave by itself.

inline void store(void *target, FourFloats floats)
{
    std::memcpy(target, &floats, sizeof floats);
}

} // namespace

void writeBarHeights(const double *values, int count, float *heights)
{
    int i = 0;
    for (; i + 2 <= count; i += 2, heights += 8) {
        const FloatLanes pair = roundedLanes(loadLanes(values + i));
        store(heights, FourFloats{0.0f, 0.0f, pair[0], pair[0]});
        store(heights + 4, FourFloats{0.0f, 0.0f, pair[1], pair[1]});
    }
    if (i < count) {
        const float height = float(values[i]);
        store(heights, FourFloats{0.0f, 0.0f, height, height});
    }
}

void writeFillVertices(const double *values, int first, int count, SPointVertex *fill)
{
    int i = 0;
    for (; i + 2 <= count; i += 2, fill += 4) {
        const FloatLanes y = roundedLanes(loadLanes(values + i));
        const float left = float(first + i);
        const float right = float(first + i + 1);
        store(fill, FourFloats{left, 0.0f, left, y[0]});
        store(fill + 2, FourFloats{right, 0.0f, right, y[1]});
    }
    if (i < count) {
        const float x = float(first + i);
        store(fill, FourFloats{x, 0.0f, x, float(values[i])});
    }
}

void writeBorderVertices(const double *values, int first, int count, SPointVertex *border)
{
    int i = 0;
    for (; i + 2 <= count; i += 2, border += 2) {
        const FloatLanes y = roundedLanes(loadLanes(values + i));
        store(border, FourFloats{float(first + i), y[0], float(first + i + 1), y[1]});
    }
    if (i < count)
        border[0] = {float(first + i), float(values[i])};
}

void writeHResVertices(const double *pairs, double position, double origin, int count, SHResVertex *corners)
{
    float leftMost = float(position - origin);
    float leftLeast = float(position - origin - double(leftMost));
    for (int bar = 0; bar < count; ++bar, corners += 4) {
        position += pairs[2 * bar];
        const double right = position - origin;
        const float rightMost = float(right);
        const float rightLeast = float(right - double(rightMost));
        const float value = float(pairs[2 * bar + 1]);
        auto *floats = reinterpret_cast<char *>(corners);
        store(floats, FourFloats{leftMost, leftLeast, 0.0f, rightMost});
        store(floats + 16, FourFloats{rightLeast, 0.0f, leftMost, leftLeast});
        store(floats + 32, FourFloats{value, rightMost, rightLeast, value});
        leftMost = rightMost;
        leftLeast = rightLeast;
    }
}

void writeBars(const double *values, const SIndexRange &bars, const SPlacedEdges &edges, float *corners)
{
    float left = edges.corner(bars.first);
    for (int bar = bars.first; bar < bars.end; ++bar, corners += 8) {
        const float right = edges.corner(bar + 1);
        const float height = float(values[bar]);
        store(corners, FourFloats{left, 0.0f, right, 0.0f});
        store(corners + 4, FourFloats{left, height, right, height});
        left = right;
    }
}

void writeSpans(const double *values, const SIndexRange &spans, const SPlacedEdges &edges, float *corners)
{
    for (int span = spans.first; span < spans.end; ++span, corners += 8) {
        const float left = edges.corner(span);
        const float right = edges.corner(span + 1);
        store(corners, FourFloats{left, 0.0f, left, float(values[span])});
        store(corners + 4, FourFloats{right, 0.0f, right, float(values[span + 1])});
    }
}

void writeSegments(const double *values, const SIndexRange &segments, const SPlacedEdges &edges, float *ends)
{
    for (int segment = segments.first; segment < segments.end; ++segment, ends += 4) {
        const FloatLanes y = roundedLanes(loadLanes(values + segment));
        store(ends, FourFloats{edges.corner(segment), y[0], edges.corner(segment + 1), y[1]});
    }
}

void appendBarIndices(QVector<uint> &indices, int first, int end)
{
    while (first < end) {
        const int portionEnd = std::min(first + seriesPortion, end);
        uint *index = portionAt(indices, indices.size(), 6 * (portionEnd - first));
        for (; first < portionEnd; ++first, index += 6) {
            const uint corner = 4u * uint(first);
            index[0] = corner + 1;
            index[1] = corner + 2;
            index[2] = corner;
            index[3] = corner + 1;
            index[4] = corner + 2;
            index[5] = corner + 3;
        }
    }
}

void appendBarNumbers(QVector<float> &numbers, int first, int end)
{
    while (first < end) {
        const int portionEnd = std::min(first + seriesPortion, end);
        float *number = portionAt(numbers, numbers.size(), 4 * (portionEnd - first));
        for (; first < portionEnd; ++first, number += 4) {
            number[0] = number[2] = float(first);
            number[1] = number[3] = float(first + 1);
        }
    }
}
