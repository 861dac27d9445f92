// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/PlotSeries.h"

/// Bars from a base line: bar i reaches from its own place to that of the next value. Where several bars share a column
/// of pixels, the highest is drawn, and the lowest as well if it lies below the base line. GUI thread.
class BarSeries : public PlotSeries
{
    Q_OBJECT
    /// Where the bars stand. On a log scale they stand on half the smallest positive value instead.
    Q_PROPERTY(double baseline READ baseline WRITE setBaseline NOTIFY baselineChanged)

public:
    explicit BarSeries(QObject *parent = nullptr);

    double baseline() const { return m_baseline; }
    void setBaseline(double baseline);
    bool isBars() const override { return true; }

signals:
    void baselineChanged();

protected:
    void drawValues(const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                    const RowScale &rows, double ratio, SSeriesShape &shape) const override;

private:
    double m_baseline = 0.0;
};
