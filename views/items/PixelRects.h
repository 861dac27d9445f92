// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <vector>

/// Pixels [left, right) x [top, bottom), counted from the plot area's top left corner.
struct SPixelRect
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool operator==(const SPixelRect &other) const
    {
        return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
    }
};

/// What a series marks, as rectangles that don't overlap: no pixel is blended twice.
class PixelRects
{
public:
    /// Removes all; what is added is cut to `rows` rows.
    void begin(int rows)
    {
        m_rows = rows;
        m_rects.clear();
    }
    const std::vector<SPixelRect> &rects() const { return m_rects; }

    /// Adds rows [top, bottom) of a column. Columns come from left to right; equal neighbours become one rectangle.
    void add(int column, int top, int bottom)
    {
        top = std::max(top, 0);
        bottom = std::min(bottom, m_rows);
        if (bottom <= top)
            return;
        if (!m_rects.empty()) {
            SPixelRect &last = m_rects.back();
            if (last.right == column && last.top == top && last.bottom == bottom) {
                last.right = column + 1;
                return;
            }
        }
        m_rects.push_back({column, top, column + 1, bottom});
    }

private:
    int m_rows = 0;
    std::vector<SPixelRect> m_rects;
};
