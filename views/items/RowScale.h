// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisMapping.h"

#include <algorithm>
#include <cmath>

/// From values to rows of device pixels, row 0 on top. A plain value: any thread.
class RowScale
{
public:
    /// `axis` maps to device pixels from the top of the plot area, `rows` of them.
    RowScale(const AxisMapping &axis, int rows)
        : m_from(axis.scaled(axis.from)),
          m_factor(axis.isValid() ? axis.pixelsPerUnit() : 0.0),
          m_offset(axis.pixelsFrom),
          m_rows(rows),
          m_isLog(axis.log)
    {
    }

    int rows() const { return m_rows; }
    bool isLog() const { return m_isLog; }
    bool isEmpty() const { return m_rows <= 0 || m_factor == 0.0; }
    /// Whether a value can be shown at all, in view or out of it.
    bool hasPlace(double value) const { return std::isfinite(value) && (!m_isLog || value > 0.0); }

    /// In pixels from the top, kept within a million pixels around the view.
    double yOf(double value) const
    {
        const double y = m_offset + ((m_isLog ? std::log10(value) : value) - m_from) * m_factor;
        return std::clamp(y, -1e6, 1e6);
    }

    // Rows, in view or not.

    /// The first row whose middle lies at y or below it, and the first one whose middle lies below y.
    static int rowFrom(double y) { return int(std::ceil(y - 0.5)); }
    static int rowAfter(double y) { return int(std::floor(y - 0.5)) + 1; }
    /// The row that y lies in.
    static int rowAt(double y) { return int(std::floor(y)); }

private:
    double m_from;
    double m_factor;
    double m_offset;
    int m_rows;
    bool m_isLog;
};
