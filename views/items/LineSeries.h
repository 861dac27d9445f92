// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/PlotSeries.h"

/// A line through the values, broken at gaps; a value alone between two gaps is a dot. GUI thread.
class LineSeries : public PlotSeries
{
    Q_OBJECT
    /// In item pixels. What comes to one device pixel or less is drawn one device pixel wide. 1 by default.
    Q_PROPERTY(double width READ width WRITE setWidth NOTIFY widthChanged)
    /// By default on for lines wider than one device pixel. A thin line without it marks exactly the pixels that
    /// drawing every segment marks.
    Q_PROPERTY(
        bool antialiasing READ antialiasing WRITE setAntialiasing RESET resetAntialiasing NOTIFY antialiasingChanged)

public:
    explicit LineSeries(QObject *parent = nullptr);

    double width() const { return m_width; }
    void setWidth(double width);
    bool antialiasing() const;
    void setAntialiasing(bool antialiasing);
    void resetAntialiasing();

signals:
    void widthChanged();
    void antialiasingChanged();

protected:
    void drawValues(const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                    const RowScale &rows, double ratio, SSeriesShape &shape) const override;

private:
    enum class Smoothing { ByWidth, Off, On };

    void setSmoothing(Smoothing smoothing);

    double m_width = 1.0;
    Smoothing m_smoothing = Smoothing::ByWidth;
};
