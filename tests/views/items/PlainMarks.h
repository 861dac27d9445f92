// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVector>

#include <vector>

/// A grid of pixels, and the plainest way to mark them: one segment, one bar after the other, without columns, cells or
/// cuts. What the drawing is compared with.
class PlainMarks
{
public:
    PlainMarks(int columns, int rows) : m_columns(columns), m_rows(rows), m_marks(size_t(columns) * size_t(rows)) {}

    bool operator==(const PlainMarks &other) const { return m_marks == other.m_marks; }
    /// How many pixels differ, and where the first one is.
    QByteArray difference(const PlainMarks &other) const;
    int count() const;
    int columns() const { return m_columns; }
    int rows() const { return m_rows; }
    bool at(int column, int row) const { return m_marks[size_t(row) * size_t(m_columns) + size_t(column)] != 0; }

    void mark(double column, double row);
    void markColumn(double column, double fromRow, double toRow);
    /// Places and values in pixels, NaN for gaps: every segment, and the first point of each run.
    void markLine(const QVector<double> &xs, const QVector<double> &ys);
    /// The same, and in each column all between what the line marks and `base`.
    void markArea(const QVector<double> &xs, const QVector<double> &ys, double base);
    /// Bar i from xs[i] to xs[i + 1].
    void markBars(const QVector<double> &xs, const QVector<double> &ys, double base);

private:
    void markSegment(double x0, double y0, double x1, double y1);

    int m_columns;
    int m_rows;
    std::vector<char> m_marks;
};
