// SPDX-License-Identifier: MIT
#include "PlainMarks.h"

#include <algorithm>
#include <cmath>

QByteArray PlainMarks::difference(const PlainMarks &other) const
{
    int differing = 0;
    QByteArray first;
    for (int row = 0; row < m_rows; ++row) {
        for (int column = 0; column < m_columns; ++column) {
            if (at(column, row) == other.at(column, row))
                continue;
            if (differing++ == 0)
                first = "column " + QByteArray::number(column) + ", row " + QByteArray::number(row)
                    + (at(column, row) ? " is marked" : " isn't marked");
        }
    }
    return QByteArray::number(differing) + " of " + QByteArray::number(other.count()) + " pixels differ; " + first;
}

int PlainMarks::count() const
{
    return int(std::count(m_marks.begin(), m_marks.end(), 1));
}

void PlainMarks::mark(double column, double row)
{
    if (column >= 0.0 && column < m_columns && row >= 0.0 && row < m_rows)
        m_marks[size_t(row) * size_t(m_columns) + size_t(column)] = 1;
}

/// Rows whose middle lies between two places.
void PlainMarks::markColumn(double column, double from, double to)
{
    for (int row = 0; row < m_rows; ++row) {
        if (row + 0.5 >= std::min(from, to) && row + 0.5 < std::max(from, to))
            mark(column, row);
    }
}

void PlainMarks::markSegment(double x0, double y0, double x1, double y1)
{
    // Each vertical middle that it crosses ...
    for (double column = std::max(std::floor(x0), 0.0); column <= std::min(x1, double(m_columns)); ++column) {
        const double x = column + 0.5;
        if (x >= x0 && x <= x1 && x1 > x0)
            mark(column, std::floor(y0 + (x - x0) / (x1 - x0) * (y1 - y0)));
    }
    // ... and each horizontal one.
    const double top = std::min(y0, y1);
    const double bottom = std::max(y0, y1);
    for (double row = std::max(std::floor(top), 0.0); row <= std::min(bottom, double(m_rows)); ++row) {
        const double y = row + 0.5;
        if (y >= top && y <= bottom)
            mark(std::floor(y1 == y0 ? x0 : x0 + (y - y0) / (y1 - y0) * (x1 - x0)), row);
    }
}

void PlainMarks::markLine(const QVector<double> &xs, const QVector<double> &ys)
{
    for (int i = 0; i < ys.size(); ++i) {
        if (std::isnan(ys[i]))
            continue;
        if (i > 0 && !std::isnan(ys[i - 1]))
            markSegment(xs[i - 1], ys[i - 1], xs[i], ys[i]);
        else
            mark(std::floor(xs[i]), std::floor(ys[i]));
    }
}

void PlainMarks::markArea(const QVector<double> &xs, const QVector<double> &ys, double base)
{
    // On a grid that is so much higher that a line out of view is marked, too.
    const int above = 8 * m_rows;
    PlainMarks high(m_columns, 2 * above);
    QVector<double> shifted = ys;
    for (double &y : shifted)
        y += above;
    high.markLine(xs, shifted);
    for (int column = 0; column < m_columns; ++column) {
        for (int row = 0; row < high.m_rows; ++row) {
            if (!high.at(column, row))
                continue;
            mark(column, row - above);
            markColumn(column, row - above + 0.5, base);
        }
    }
}

void PlainMarks::markBars(const QVector<double> &xs, const QVector<double> &ys, double base)
{
    for (int i = 0; i < ys.size(); ++i) {
        const double from = std::floor(xs[i]);
        const double to = std::max(from + 1.0, std::floor(xs[i + 1]));
        for (double column = std::max(from, 0.0); column < std::min(to, double(m_columns)); ++column) {
            if (!std::isnan(ys[i]))
                markColumn(column, base, ys[i]);
        }
    }
}
