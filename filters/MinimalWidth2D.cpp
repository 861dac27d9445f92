// SPDX-License-Identifier: MIT
#include "filters/MinimalWidth2D.h"

#include "common/Change.h"
#include "common/Series.h"
#include "common/Storage.h"

#include <algorithm>

namespace {

/// Takes (width, value) pairs in and appends merged ones to a series.
class BinMerger
{
public:
    BinMerger(double mergeWidth, QVector<double> &merged) : m_mergeWidth(mergeWidth), m_merged(merged) {}

    void take(double width, double value)
    {
        if (width >= m_mergeWidth && m_width == 0.0) {
            append(width, value);
            return;
        }
        m_width += width;
        if (value > m_peak)
            m_peak = value;
        if (m_width < m_mergeWidth)
            return;
        append(m_mergeWidth, m_peak);
        m_width -= m_mergeWidth;
        m_peak = value;
        if (m_width >= m_mergeWidth) {
            append(m_width, m_peak);
            m_width = 0.0;
            m_peak = 0.0;
        }
    }

    void finish()
    {
        if (m_width != 0.0) // also for a NaN
            append(m_width, m_peak);
    }

private:
    void append(double width, double value)
    {
        m_merged.append(width);
        m_merged.append(value);
    }

    const double m_mergeWidth;
    double m_width = 0.0; ///< taken in and not yet appended
    double m_peak = 0.0;  ///< deliberate: when m_width falls to exactly 0.0 by subtraction, this one stays
    QVector<double> &m_merged;
};

} // namespace

MinimalWidth2D::MinimalWidth2D(QObject *parent) : Filter1D(parent) {}

MinimalWidth2D::~MinimalWidth2D()
{
    withdraw();
}

void MinimalWidth2D::setMergeWidth(double mergeWidth)
{
    const double lowest = (1.0 - m_percMargin) * m_mergeWidth;
    const double highest = (1.0 + m_percMargin) * m_mergeWidth;
    if (mergeWidth < 0.0 || (lowest < mergeWidth && mergeWidth < highest))
        return;
    m_mergeWidth = mergeWidth;
    const QPointer<MinimalWidth2D> alive(this);
    if (m_parentFilter) // Deliberate: without one, the change waits for the next series.
        filterAgain();
    if (alive)
        emit mergeWidthChanged();
}

void MinimalWidth2D::setPercMargin(double percMargin)
{
    if (change(m_percMargin, percMargin))
        emit percMarginChanged();
}

bool MinimalWidth2D::_filter_func(const QVector<double> &data)
{
    const int pairs = data.size() / 2;
    restart(m_data, std::min(int(data.size()) + 4, longestSeries)); // at most two pairs more than there were
    BinMerger merger(m_mergeWidth, m_data);
    for (int i = 0; i < pairs; ++i)
        merger.take(data.at(2 * i), data.at(2 * i + 1));
    merger.finish();
    return true;
}
