// SPDX-License-Identifier: MIT
#pragma once

#include "common/Index.h"
#include "common/Series.h"
#include "filters/PyramidBuilder.h"

#include <QRectF>
#include <QVector>

#include <algorithm>
#include <cmath>

/// A series and ever coarser copies of it, down to a single value. A value of a coarser level is the largest of those
/// that it stands for, at least 0. Used for T = double.
template <class T>
class DecimatorFilter
{
public:
    /// Builds the pyramid of `series`. An empty series and the one that is there already change nothing.
    void setInput(const QVector<T> &series)
    {
        if (series.isEmpty() || isInput(series))
            return;
        m_builder.giveUp();
        m_levels[0] = series;
        m_builder.begin(m_factor);
    }

    /// The level whose bins come closest to a pixel from above, for a pyramid that is spread over `area`.
    int levelFor(double unitsPerPixel, const QRectF &area) const
    {
        if (m_levels.at(0).isEmpty() || area.width() == 0.0)
            return 0;
        const double binWidth = area.width() / m_levels.at(0).size();
        if (binWidth > unitsPerPixel)
            return 0;
        const int level = toIndex(std::ceil(std::log(unitsPerPixel / binWidth) / std::log(m_factor)));
        return std::max(std::min(level, int(m_levels.size()) - 1), 0);
    }

protected:
    bool isInput(const QVector<T> &series) const { return sameSeries(series, m_levels.at(0)); }
    /// The selected level, or the coarsest one where a shorter series has fewer.
    const QVector<T> &selectedLevel() const
    {
        const int level = std::min(m_level, int(m_levels.size()) - 1);
        m_builder.waitFor(level);
        return m_levels.at(level);
    }

    /// The series in front. Of a long one, a level is ready when selectedLevel() has returned it.
    QVector<QVector<T>> m_levels = QVector<QVector<T>>(1);
    double m_factor = 2.0;                      ///< between the sizes of two levels
    int m_level = 0;                            ///< the one that is selected
    mutable PyramidBuilder m_builder{m_levels}; ///< waiting for a level changes nothing
};
