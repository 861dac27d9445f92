// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

/// Rows [top, bottom) of one column.
struct SRowSpan
{
    int top = 0;
    int bottom = 0;

    bool isEmpty() const { return bottom <= top; }
    bool operator==(const SRowSpan &other) const { return top == other.top && bottom == other.bottom; }
};

/// Rows of a column that are marked: spans from top to bottom, apart from each other.
class RowSpans
{
public:
    const std::vector<SRowSpan> &all() const { return m_spans; }
    void clear() { m_spans.clear(); }
    /// Adds rows; what lies there or next to it becomes one with it. Nothing happens if the span is empty.
    void insert(SRowSpan span);
    /// Fills what lies between the spans.
    void join();
    /// Whether all of its rows are there.
    bool covers(SRowSpan span) const;

private:
    std::vector<SRowSpan> m_spans;
};
